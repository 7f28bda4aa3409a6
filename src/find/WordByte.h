#pragma once

namespace zolt {

/// Whether a byte belongs to a word: ASCII letters, digits, the underscore, and every byte of a character that is not
/// ASCII. Which of those are letters is not asked: a dash or a quotation mark outside ASCII counts as one.
constexpr bool isWordByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

}  // namespace zolt
