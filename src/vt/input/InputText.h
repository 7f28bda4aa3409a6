#pragma once

#include <string>
#include <string_view>

#include "text/Utf8Decoder.h"

namespace zolt::vt {

/// A control character: C0, DEL or C1.
constexpr bool isControl(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

/// A Unicode scalar value (Unicode 3.9, D76) that is not a control character: what may be sent as text.
constexpr bool isPlain(char32_t character) {
  return !isControl(character) && character <= 0x10FFFF && !(character >= 0xD800 && character <= 0xDFFF);
}

/// Decodes `bytes`, leaving out control characters.
std::u32string plainScalars(std::string_view bytes);

std::string toUtf8(std::u32string_view scalars);

}  // namespace zolt::vt
