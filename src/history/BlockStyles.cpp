#include "history/BlockStyles.h"

#include <bit>
#include <utility>

namespace zolt {

namespace {

constexpr std::size_t kFirstBuckets = 32;

}  // namespace

BlockStyles::BlockStyles(std::vector<StyleCode> codes, std::vector<TextAttributes> listed)
    : m_codes(std::move(codes)), m_listed(std::move(listed)) {}

BlockStyles::Number BlockStyles::number(StyleCode packed) {
  // Often the latest once more.
  if (!m_codes.empty() && m_codes.back() == packed) return static_cast<Number>(m_codes.size() - 1);
  if ((m_codes.size() + 1) * 2 > m_buckets.size()) enlargeIndex();
  std::uint32_t& bucket = m_buckets[bucketOf(packed)];
  if (bucket == 0) bucket = add(packed) + 1U;
  return static_cast<Number>(bucket - 1);
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
  std::vector<std::uint32_t>().swap(m_buckets);
  m_codes.shrink_to_fit();
  m_listed.shrink_to_fit();
}

std::size_t BlockStyles::memoryBytes() const {
  return m_codes.capacity() * sizeof(StyleCode) + m_listed.capacity() * sizeof(TextAttributes) +
         m_buckets.capacity() * sizeof(m_buckets[0]);
}

BlockStyles::Number BlockStyles::add(StyleCode code) {
  m_codes.push_back(code);
  return static_cast<Number>(m_codes.size() - 1);
}

// The bucket that has `code`, or is free for it.
std::size_t BlockStyles::bucketOf(StyleCode code) const {
  constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;  // 2^64 / golden ratio: Fibonacci hashing
  const std::size_t mask = m_buckets.size() - 1;
  const int shift = 64 - std::countr_zero(m_buckets.size());
  std::size_t bucket = (code.bits() ^ code.bits() >> 32) * kMultiplier >> shift;
  while (m_buckets[bucket] != 0 && m_codes[m_buckets[bucket] - 1] != code) {
    bucket = (bucket + 1) & mask;
  }
  return bucket;
}

void BlockStyles::enlargeIndex() {
  m_buckets.assign(m_buckets.empty() ? kFirstBuckets : m_buckets.size() * 2, 0);
  for (std::size_t i = 0; i < m_codes.size(); ++i) {
    if (!m_codes[i].isListed()) m_buckets[bucketOf(m_codes[i])] = static_cast<std::uint32_t>(i + 1);
  }
}

}  // namespace zolt
