#pragma once

#include <string>

namespace zolt {

/// Appends the UTF-8 of `scalar`, at most U+10FFFF.
inline void appendUtf8(std::string& out, char32_t scalar) {
  const auto put = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (scalar < 0x80) return put(scalar);
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
}

}  // namespace zolt
