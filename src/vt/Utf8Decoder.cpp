#include "vt/Utf8Decoder.h"

namespace zolt::vt {

namespace {

// Lead bytes and what may follow them: Unicode, table 3-7.
struct Lead {
  std::uint8_t first;
  std::uint8_t last;
  std::uint8_t continuations;
  std::uint8_t lowestNext;
  std::uint8_t highestNext;
};

constexpr Lead kLeads[] = {
    {0xC2, 0xDF, 1, 0x80, 0xBF}, {0xE0, 0xE0, 2, 0xA0, 0xBF}, {0xE1, 0xEC, 2, 0x80, 0xBF}, {0xED, 0xED, 2, 0x80, 0x9F},
    {0xEE, 0xEF, 2, 0x80, 0xBF}, {0xF0, 0xF0, 3, 0x90, 0xBF}, {0xF1, 0xF3, 3, 0x80, 0xBF}, {0xF4, 0xF4, 3, 0x80, 0x8F},
};

}  // namespace

Utf8Decoder::Outcome Utf8Decoder::take(std::uint8_t byte) {
  if (m_missing != 0) {
    if (byte < m_lowest || byte > m_highest) {
      m_missing = 0;
      m_scalar = replacement;
      return Outcome::Refused;
    }
    m_scalar = m_scalar << 6 | (byte & 0x3FU);
    m_lowest = 0x80;
    m_highest = 0xBF;
    return --m_missing == 0 ? Outcome::Scalar : Outcome::NeedsMore;
  }
  if (byte < 0x80) {
    m_scalar = byte;
    return Outcome::Scalar;
  }
  for (const Lead& lead : kLeads) {
    if (byte < lead.first || byte > lead.last) continue;
    m_missing = lead.continuations;
    m_lowest = lead.lowestNext;
    m_highest = lead.highestNext;
    m_scalar = byte & (0x3FU >> lead.continuations);
    return Outcome::NeedsMore;
  }
  m_scalar = replacement;
  return Outcome::Scalar;
}

}  // namespace zolt::vt
