#pragma once

#include <cstdint>
#include <ostream>

#include "text/TextPosition.h"

namespace zolt {

inline namespace literals {

constexpr TextPosition operator""_pos(unsigned long long characters) {
  return TextPosition(characters);
}

}  // namespace literals

constexpr TextRange rangeOf(std::uint64_t begin, std::uint64_t end) {
  return {.begin = TextPosition(begin), .end = TextPosition(end)};
}

inline std::ostream& operator<<(std::ostream& out, TextPosition position) {
  return out << "position " << position.value;
}
inline std::ostream& operator<<(std::ostream& out, TextRange range) {
  return out << range.begin.value << ".." << range.end.value;
}

}  // namespace zolt
