#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zolt {

/// How a stored text reads as another type. Pure.

/// The decimal number at the start of `text`, after blanks; 0 if there is none, infinity if it is out of range.
double doubleOfText(std::string_view text);
/// The same without its fraction, clamped to the type's range.
std::int64_t integerOfText(std::string_view text);
/// A number other than 0, or a text that begins with y, Y, t or T.
bool boolOfText(std::string_view text);

/// The shortest text that reads back as `value`.
std::string textOfDouble(double value);

}  // namespace zolt
