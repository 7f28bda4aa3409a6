#include "text/AttributedString.h"

#include <algorithm>

namespace zolt {

namespace {

// Below this many styles a look through all of them is cheaper than a hash.
constexpr std::size_t kLinearSearchStyles = 8;

}  // namespace

AttributedString::AttributedString(std::string_view text, const TextAttributes& attributes) {
  appendText(text);
  endRun(styleIndex(attributes));
}

void AttributedString::endRun(std::uint32_t style) {
  while (m_covered < m_text.size()) {
    const auto length = static_cast<std::uint32_t>(std::min<std::size_t>(pendingLength(), UINT32_MAX));
    m_runs.push_back({.length = length, .style = style});
    m_covered += length;
  }
}

std::uint32_t AttributedString::styleIndex(const TextAttributes& attributes) {
  if (m_buckets.empty()) {
    for (std::size_t i = m_styles.size(); i-- > 0;) {
      if (m_styles[i] == attributes) return static_cast<std::uint32_t>(i);
    }
    m_styles.push_back(attributes);
    if (m_styles.size() > kLinearSearchStyles) rehash();
    return static_cast<std::uint32_t>(m_styles.size() - 1);
  }
  const std::size_t mask = m_buckets.size() - 1;
  std::size_t bucket = hashOf(attributes) & mask;
  while (m_buckets[bucket] != 0) {
    const std::uint32_t style = m_buckets[bucket] - 1;
    if (m_styles[style] == attributes) return style;
    bucket = (bucket + 1) & mask;
  }
  m_styles.push_back(attributes);
  m_buckets[bucket] = static_cast<std::uint32_t>(m_styles.size());
  if (m_styles.size() * 2 > m_buckets.size()) rehash();
  return static_cast<std::uint32_t>(m_styles.size() - 1);
}

void AttributedString::rehash() {
  m_buckets.assign(m_buckets.empty() ? 64 : m_buckets.size() * 2, 0);
  const std::size_t mask = m_buckets.size() - 1;
  for (std::size_t style = 0; style < m_styles.size(); ++style) {
    std::size_t bucket = hashOf(m_styles[style]) & mask;
    while (m_buckets[bucket] != 0) {
      bucket = (bucket + 1) & mask;
    }
    m_buckets[bucket] = static_cast<std::uint32_t>(style + 1);
  }
}

}  // namespace zolt
