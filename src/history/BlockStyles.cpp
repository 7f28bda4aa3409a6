#include "history/BlockStyles.h"

#include <utility>

namespace zolt {

namespace {

// How many pairs of numbers the index of a block's latest styles has: a power of two.
constexpr int kPairsLog2 = 9;

std::size_t pairOf(StyleCode code) {
  constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;  // 2^64 / golden ratio: Fibonacci hashing
  return (code.bits() ^ code.bits() >> 32) * kMultiplier >> (64 - kPairsLog2);
}

}  // namespace

BlockStyles::BlockStyles(std::vector<StyleCode> codes, std::vector<TextAttributes> listed)
    : m_codes(std::move(codes)), m_listed(std::move(listed)) {}

BlockStyles::Number BlockStyles::number(StyleCode packed) {
  if (m_codes.empty()) return add(packed);
  // Often the latest once more.
  if (m_codes.back() == packed) return static_cast<Number>(m_codes.size() - 1);
  if (m_latest.empty()) m_latest.resize(std::size_t{1} << kPairsLog2);  // both of a pair are 0: the first style
  auto& [latest, older] = m_latest[pairOf(packed)];
  if (m_codes[latest] == packed) return latest;
  if (m_codes[older] != packed) {
    older = std::exchange(latest, add(packed));
    return latest;
  }
  std::swap(latest, older);
  return latest;
}

BlockStyles::Number BlockStyles::number(const TextAttributes& attributes) {
  if (const auto packed = StyleCode::of(attributes)) return number(*packed);
  // Newest first. One older than that is stored again.
  constexpr std::size_t kSearched = 32;
  const std::size_t oldest = m_codes.size() > kSearched ? m_codes.size() - kSearched : 0;
  for (std::size_t i = m_codes.size(); i-- > oldest;) {
    if (m_codes[i].isListed() && m_listed[m_codes[i].listIndex()] == attributes) return static_cast<Number>(i);
  }
  m_listed.push_back(attributes);
  return add(StyleCode::listed(m_listed.size() - 1));
}

TextAttributes BlockStyles::operator[](std::size_t number) const {
  const StyleCode code = m_codes[number];
  return code.isListed() ? m_listed[code.listIndex()] : code.attributes();
}

void BlockStyles::seal() {
  decltype(m_latest)().swap(m_latest);
  m_codes.shrink_to_fit();
  m_listed.shrink_to_fit();
}

std::size_t BlockStyles::memoryBytes() const {
  return m_codes.capacity() * sizeof(StyleCode) + m_listed.capacity() * sizeof(TextAttributes) +
         m_latest.capacity() * sizeof(m_latest[0]);
}

BlockStyles::Number BlockStyles::add(StyleCode code) {
  m_codes.push_back(code);
  return static_cast<Number>(m_codes.size() - 1);
}

}  // namespace zolt
