#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zolt {

/// How a stored text reads as another type. Pure.

/// The decimal number at the start of `text`, after blanks; 0 when there is none. Beyond the type's range: infinity.
double doubleOfText(std::string_view text);
/// The same without its fraction, held within the type's range.
std::int64_t integerOfText(std::string_view text);
/// A number other than 0, or a text that begins with y, Y, t or T.
bool boolOfText(std::string_view text);

/// The shortest text that reads as `value` again.
std::string textOfDouble(double value);

}  // namespace zolt
