#include "platform/SettingsValue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace zolt {

namespace {

std::string_view withoutBlanks(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  return begin == std::string_view::npos ? std::string_view() : text.substr(begin);
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

struct Number {
  double value = 0;
  bool isInteger = true;      // written without fraction and exponent
  std::string_view digits{};  // as written, with its sign
};

// Decimal only: "inf", "nan" and hexadecimal numbers are not accepted.
Number numberAtStart(std::string_view text) {
  text = withoutBlanks(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  const std::size_t first = text.starts_with('-') ? 1 : 0;
  const bool number =
      text.size() > first &&
      (isDigit(text[first]) || (text[first] == '.' && text.size() > first + 1 && isDigit(text[first + 1])));
  if (!number) return {};
  Number result;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result.value);
  result.digits = text.substr(0, static_cast<std::size_t>(end - text.data()));
  result.isInteger =
      std::all_of(result.digits.begin() + static_cast<std::ptrdiff_t>(first), result.digits.end(), isDigit);
  if (error == std::errc::result_out_of_range) {
    const bool tiny =
        result.digits.find("e-") != std::string_view::npos || result.digits.find("E-") != std::string_view::npos;
    result.value = tiny ? 0 : std::copysign(std::numeric_limits<double>::infinity(), first == 1 ? -1.0 : 1.0);
  }
  return result;
}

}  // namespace

double doubleOfText(std::string_view text) {
  return numberAtStart(text).value;
}

std::int64_t integerOfText(std::string_view text) {
  constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();
  constexpr auto kMax = std::numeric_limits<std::int64_t>::max();
  const Number number = numberAtStart(text);
  std::int64_t integer = 0;
  if (number.isInteger) {
    const char* end = number.digits.data() + number.digits.size();
    const auto parsed = std::from_chars(number.digits.data(), end, integer);
    if (parsed.ec == std::errc{}) return integer;
  }
  // Every double from 2^63 on is out of range.
  if (number.value >= 0x1p63) return kMax;
  if (number.value < -0x1p63) return kLeast;
  return static_cast<std::int64_t>(number.value);
}

std::optional<bool> flagOfText(std::string_view text) {
  if (const Number number = numberAtStart(text); !number.digits.empty()) return number.value != 0;
  text = withoutBlanks(text);
  const auto beginsWith = [&](std::string_view letters) {
    return !text.empty() && letters.find(text.front()) != std::string_view::npos;
  };
  if (beginsWith("yYtT")) return true;
  if (beginsWith("nNfF")) return false;
  return std::nullopt;
}

bool boolOfText(std::string_view text) {
  return flagOfText(text).value_or(false);
}

std::string textOfDouble(double value) {
  std::array<char, 32> text;
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc{} ? std::string(text.data(), end) : std::string("0");
}

}  // namespace zolt
