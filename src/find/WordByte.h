#pragma once

namespace zolt {

/// Whether a byte belongs to a word: ASCII letters and digits, the underscore, and all non-ASCII bytes. Even a
/// non-ASCII dash or quotation mark thus counts as part of a word.
constexpr bool isWordByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

}  // namespace zolt
