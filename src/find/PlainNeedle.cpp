#include "find/PlainNeedle.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace zolt {

namespace {

// The bytes of logs, most frequent first. All others are rarer.
constexpr std::string_view kFrequentBytes =
    " 0e1t2a3noi5s4rd:l-c6u789mp./hg=fTb\"yv,wSEIk_ROACNDL[]P()F'MUxB\n\tGjqWVzHY;@K+|{}<>XQJ*&%#?$!~Z\\^`";

constexpr std::array<unsigned char, 256> frequencies() {
  std::array<unsigned char, 256> result{};
  for (std::size_t i = 0; i < kFrequentBytes.size(); ++i) {
    result[static_cast<unsigned char>(kFrequentBytes[i])] = static_cast<unsigned char>(255 - i);
  }
  // Non-ASCII bytes: wherever there are any, there tend to be many.
  for (std::size_t byte = 0x80; byte < 0xF5; ++byte) {
    result[byte] = 100;
  }
  return result;
}

constexpr std::array<unsigned char, 256> kFrequency = frequencies();

constexpr bool isLowerCase(char c) {
  return c >= 'a' && c <= 'z';
}

constexpr char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

// A letter in either case is as frequent as the more frequent of the two.
int frequency(const NeedleByte& byte) {
  return std::max(kFrequency[byte.value], kFrequency[byte.value & ~byte.fold]);
}

}  // namespace

PlainNeedle::PlainNeedle(std::string_view needle, LetterCase letterCase) : m_case(letterCase), m_needle(needle) {
  if (m_case == LetterCase::AsciiFolded) std::ranges::transform(m_needle, m_needle.begin(), folded);
  m_pair = rarestPair();
}

NeedleByte PlainNeedle::byteAt(std::size_t offset) const {
  const char c = m_needle[offset];
  const bool either = m_case == LetterCase::AsciiFolded && isLowerCase(c);
  return {offset, static_cast<std::uint8_t>(c), static_cast<std::uint8_t>(either ? 0x20 : 0)};
}

NeedlePair PlainNeedle::rarestPair() const {
  NeedleByte rarest = byteAt(0);
  for (std::size_t i = 1; i < m_needle.size(); ++i) {
    if (frequency(byteAt(i)) < frequency(rarest)) rarest = byteAt(i);
  }
  // A second occurrence of the rarest byte is better than no second byte.
  NeedleByte second = rarest;
  for (std::size_t i = 0; i < m_needle.size(); ++i) {
    const NeedleByte other = byteAt(i);
    if (i == rarest.offset) continue;
    const bool better =
        second.value == rarest.value || (other.value != rarest.value && frequency(other) < frequency(second));
    if (better) second = other;
  }
  return {rarest, second};
}

bool PlainNeedle::matchesAt(const char* text) const {
  if (m_case == LetterCase::Exact) return std::memcmp(text, m_needle.data(), m_needle.size()) == 0;
  return std::ranges::equal(m_needle, std::string_view(text, m_needle.size()), {}, {}, folded);
}

std::size_t PlainNeedle::find(std::string_view text, std::size_t from) const {
  if (text.size() < m_needle.size()) return std::string_view::npos;
  const std::size_t end = text.size() - m_needle.size() + 1;
  for (std::size_t at = from; at < end; ++at) {
    at += firstPair(text.data() + at, end - at, m_pair);
    if (at < end && matchesAt(text.data() + at)) return at;
  }
  return std::string_view::npos;
}

}  // namespace zolt
