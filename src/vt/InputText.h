#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "text/Utf8.h"
#include "vt/Utf8Decoder.h"

namespace zolt::vt {

/// A control character: C0, DEL or C1.
constexpr bool isControl(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

/// A Unicode scalar value (Unicode 3.9, D76) that is no control character: what may be sent as text.
constexpr bool isPlain(char32_t character) {
  return !isControl(character) && character <= 0x10FFFF && !(character >= 0xD800 && character <= 0xDFFF);
}

/// Calls `each` with every scalar of `bytes`; what is not UTF-8 is U+FFFD, as Utf8Decoder has it.
template <class Each>
void forEachScalar(std::string_view bytes, Each each) {
  Utf8Decoder decoder;
  for (const char byte : bytes) {
    auto outcome = Utf8Decoder::Outcome::Refused;
    while (outcome == Utf8Decoder::Outcome::Refused) {
      outcome = decoder.take(static_cast<std::uint8_t>(byte));
      if (outcome != Utf8Decoder::Outcome::NeedsMore) each(decoder.scalar());
    }
  }
  if (decoder.isInside()) each(Utf8Decoder::replacement);
}

/// The scalars of `bytes` without the control characters.
std::u32string plainScalars(std::string_view bytes);

std::string toUtf8(std::u32string_view scalars);

}  // namespace zolt::vt
