#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zolt {

/// How a stored text reads as another type. Pure.

/// The decimal number at the start of `text`, after blanks; 0 if there is none, infinity if it is out of range.
double doubleOfText(std::string_view text);
/// The same without its fraction, clamped to the type's range.
std::int64_t integerOfText(std::string_view text);
/// A number: whether it is not 0. A text that begins with y, Y, t or T: true; with n, N, f or F: false. Nothing for any
/// other text.
std::optional<bool> flagOfText(std::string_view text);
/// The same; false for any other text.
bool boolOfText(std::string_view text);

/// The shortest text that reads back as `value`.
std::string textOfDouble(double value);

}  // namespace zolt
