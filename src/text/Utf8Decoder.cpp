#include "text/Utf8Decoder.h"

namespace zolt {

Utf8Decoder::Outcome Utf8Decoder::take(std::uint8_t byte) {
  if (m_missing != 0) {
    if (byte < m_min || byte > m_max) {
      m_missing = 0;
      m_scalar = kReplacementCharacter;
      return Outcome::Refused;
    }
    m_scalar = withContinuation(m_scalar, static_cast<char>(byte));
    m_min = 0x80;
    m_max = 0xBF;
    return --m_missing == 0 ? Outcome::Scalar : Outcome::NeedsMore;
  }
  const Utf8Lead& lead = kUtf8Leads[byte];
  if (lead.length == 0) {
    m_scalar = kReplacementCharacter;
    return Outcome::Scalar;
  }
  m_scalar = byte & lead.payload;
  m_missing = static_cast<std::uint8_t>(lead.length - 1);
  m_min = lead.minSecond;
  m_max = lead.maxSecond;
  return m_missing == 0 ? Outcome::Scalar : Outcome::NeedsMore;
}

}  // namespace zolt
