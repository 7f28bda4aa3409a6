#pragma once

#include <cstdint>
#include <string_view>

#include "text/Utf8.h"

namespace zolt {

/// Decodes UTF-8 byte by byte, however the bytes are split. Each maximal subpart of an ill-formed sequence becomes one
/// U+FFFD (Unicode 3.9, "U+FFFD Substitution of Maximal Subparts"). A value.
class Utf8Decoder {
 public:
  enum class Outcome {
    NeedsMore,  ///< the scalar is not complete yet
    Scalar,     ///< the byte completed `scalar()`
    Refused,    ///< the bytes before this one are ill-formed: `scalar()` is U+FFFD, and the byte must be fed again
  };

  Outcome take(std::uint8_t byte);
  char32_t scalar() const { return m_scalar; }
  /// Whether a scalar is incomplete.
  bool isInside() const { return m_missing != 0; }

 private:
  char32_t m_scalar = 0;
  std::uint8_t m_missing = 0;  // continuation bytes
  std::uint8_t m_min = 0x80;   // bounds of the next byte
  std::uint8_t m_max = 0xBF;
};

/// Calls `each` with every scalar of `bytes`; what is not UTF-8 becomes U+FFFD, as in Utf8Decoder.
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
  if (decoder.isInside()) each(kReplacementCharacter);
}

}  // namespace zolt
