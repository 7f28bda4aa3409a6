#pragma once

#include <array>
#include <string>

namespace zolt {

/// Writes the UTF-8 of `scalar`, at most U+10FFFF, to `out`, which has room for 4 bytes; where it ends.
inline char* writeUtf8(char* out, char32_t scalar) {
  const auto put = [&](char32_t byte) { *out++ = static_cast<char>(byte); };
  if (scalar < 0x80) {
    put(scalar);
    return out;
  }
  if (scalar < 0x800) {
    put(0xC0 | scalar >> 6);
  } else {
    if (scalar < 0x10000) {
      put(0xE0 | scalar >> 12);
    } else {
      put(0xF0 | scalar >> 18);
      put(0x80 | (scalar >> 12 & 0x3F));
    }
    put(0x80 | (scalar >> 6 & 0x3F));
  }
  put(0x80 | (scalar & 0x3F));
  return out;
}

/// Appends the UTF-8 of `scalar`, at most U+10FFFF.
inline void appendUtf8(std::string& out, char32_t scalar) {
  std::array<char, 4> bytes;
  out.append(bytes.data(), static_cast<std::size_t>(writeUtf8(bytes.data(), scalar) - bytes.data()));
}

}  // namespace zolt
