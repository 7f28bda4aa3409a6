#include "history/TextBlock.h"

#include <algorithm>
#include <cstring>

namespace zolt {

TextBlock::TextBlock(TextPosition start, std::uint64_t firstLine, LineColumn startColumn)
    : m_start(start),
      m_firstLine(firstLine),
      m_startColumn(startColumn),
      m_continuedEndColumn(startColumn),
      m_bytes(new char[capacity + 1]) {  // one more than fits: the LF of a CR LF that would be torn apart
  if (startColumn == 0) m_lineStarts.push_back(0);
}

TextBlock::Fragment TextBlock::fragment(std::size_t index) const {
  const bool continued = continuesALine();
  const auto startOf = [&](std::size_t i) -> std::size_t {
    if (continued) return i == 0 ? 0 : m_lineStarts[i - 1];
    return m_lineStarts[i];
  };
  Fragment fragment;
  fragment.begin = startOf(index);
  fragment.startColumn = continued && index == 0 ? m_startColumn : 0;
  const bool last = index + 1 == fragmentCount();
  fragment.end = last ? m_size : startOf(index + 1);
  fragment.contentEnd = fragment.end;
  if (!last) {
    --fragment.contentEnd;
    if (m_bytes[fragment.contentEnd] == '\n' && fragment.contentEnd > fragment.begin &&
        m_bytes[fragment.contentEnd - 1] == '\r') {
      --fragment.contentEnd;
    }
  } else {
    // Only a sealed block can end in a line end without a start after it.
    while (fragment.contentEnd > fragment.begin &&
           (m_bytes[fragment.contentEnd - 1] == '\n' || m_bytes[fragment.contentEnd - 1] == '\r')) {
      --fragment.contentEnd;
    }
  }
  return fragment;
}

std::size_t TextBlock::fragmentAt(std::size_t offset) const {
  const auto after = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
  const auto startsUpTo = static_cast<std::size_t>(after - m_lineStarts.begin());
  return continuesALine() ? startsUpTo : startsUpTo - 1;
}

LineColumn TextBlock::columnAt(const Fragment& fragment, std::size_t offset) const {
  offset = std::min(offset, fragment.contentEnd);
  if (!m_hasTabs) return fragment.startColumn + (offset - fragment.begin);
  LineColumn column = fragment.startColumn;
  for (std::size_t i = fragment.begin; i < offset; ++i) {
    column = m_bytes[i] == '\t' ? afterTab(column) : column + 1;
  }
  return column;
}

TextBlock::Place TextBlock::placeAt(const Fragment& fragment, LineColumn column) const {
  Place place{.offset = fragment.begin, .column = fragment.startColumn};
  if (column <= place.column) return place;
  if (!m_hasTabs) {
    const auto skipped = std::min<std::uint64_t>(fragment.contentEnd - fragment.begin, column - fragment.startColumn);
    return {.offset = fragment.begin + skipped, .column = fragment.startColumn + skipped};
  }
  while (place.offset < fragment.contentEnd && place.column < column) {
    place.column = m_bytes[place.offset] == '\t' ? afterTab(place.column) : place.column + 1;
    ++place.offset;
  }
  return place;
}

std::size_t TextBlock::styleRunAt(std::size_t offset) const {
  const auto after = std::upper_bound(m_runs.begin(), m_runs.end(), offset,
                                      [](std::size_t wanted, const StyleRun& run) { return wanted < run.begin; });
  return static_cast<std::size_t>(after - m_runs.begin()) - 1;
}

void TextBlock::appendBytes(std::string_view bytes) {
  std::memcpy(m_bytes.get() + m_size, bytes.data(), bytes.size());
  m_size += bytes.size();
}

std::uint16_t TextBlock::styleIndex(const TextAttributes& attributes) {
  // Newest first: text goes back and forth between a few styles. A block has no more styles than runs.
  constexpr std::size_t kSearched = 32;
  const std::size_t oldest = m_styles.size() > kSearched ? m_styles.size() - kSearched : 0;
  for (std::size_t i = m_styles.size(); i-- > oldest;) {
    if (m_styles[i] == attributes) return static_cast<std::uint16_t>(i);
  }
  m_styles.push_back(attributes);
  return static_cast<std::uint16_t>(m_styles.size() - 1);
}

void TextBlock::appendRun(std::size_t begin, std::uint16_t style) {
  if (!m_runs.empty() && m_runs.back().style == style) return;
  m_runs.push_back({.begin = static_cast<std::uint16_t>(begin), .style = style});
}

void TextBlock::noteLineLength(LineColumn columns) {
  if (m_lineStarts.empty()) {
    m_continuedEndColumn = columns;
  } else {
    m_longestLine = std::max(m_longestLine, columns);
  }
}

}  // namespace zolt
