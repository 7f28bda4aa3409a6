#pragma once

#include <cstdint>

namespace zolt::vt {

/// Decodes UTF-8 byte by byte. What is not well-formed becomes U+FFFD, one for each maximal subpart of an ill-formed
/// sequence (Unicode 3.9, "U+FFFD Substitution of Maximal Subparts"), wherever the bytes are cut apart. A value.
class Utf8Decoder {
 public:
  static constexpr char32_t replacement = U'\uFFFD';

  enum class Outcome {
    NeedsMore,  ///< the byte is part of a character that is not complete
    Scalar,     ///< `scalar()` is complete with this byte
    Refused,    ///< what came before is ill-formed: `scalar()` is U+FFFD, and the byte has to be given again
  };

  Outcome take(std::uint8_t byte);
  char32_t scalar() const { return m_scalar; }
  /// Whether a character has begun.
  bool isInside() const { return m_missing != 0; }

 private:
  char32_t m_scalar = 0;
  std::uint8_t m_missing = 0;     // continuation bytes
  std::uint8_t m_lowest = 0x80;   // that the next one may be
  std::uint8_t m_highest = 0xBF;  // that the next one may be
};

}  // namespace zolt::vt
