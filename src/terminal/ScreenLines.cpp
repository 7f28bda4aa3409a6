#include "terminal/ScreenLines.h"

#include <algorithm>

namespace zolt {

ScreenLines::ScreenLines(const Rows& rows, TextPosition start, std::uint64_t firstLine, TextPosition firstLineStart)
    : m_start(start), m_firstLineStart(firstLineStart) {
  TextPosition at = start;
  std::uint64_t line = firstLine;
  m_rows.reserve(rows.size());
  for (const auto& row : rows) {
    m_rows.push_back({.begin = at, .end = at + row->text.size(), .line = line, .wraps = row->wraps});
    at = m_rows.back().end + (row->wraps ? 0 : 1);
    line += row->wraps ? 0 : 1;
  }
}

std::size_t ScreenLines::rowAt(TextPosition position) const {
  const auto after = std::ranges::upper_bound(m_rows, position, {}, &Row::begin);
  return after == m_rows.begin() ? 0 : static_cast<std::size_t>(after - m_rows.begin()) - 1;
}

ScreenLines::LineRows ScreenLines::rowsOfLine(std::size_t row) const {
  LineRows rows{.first = row, .last = row};
  while (rows.first > 0 && m_rows[rows.first - 1].wraps) {
    --rows.first;
  }
  while (rows.last + 1 < m_rows.size() && m_rows[rows.last].wraps) {
    ++rows.last;
  }
  return rows;
}

TextPosition ScreenLines::moved(const ScreenLines& before, TextPosition position) const {
  if (before.m_rows.empty() || m_rows.empty() || position < before.m_start) return position;
  const std::size_t row = before.rowAt(position);
  const std::uint64_t line = before.m_rows[row].line;
  if (line < m_rows.front().line) return std::min(position, m_start);
  const auto same = std::ranges::lower_bound(m_rows, line, {}, &Row::line);
  if (same == m_rows.end()) return end();
  const auto first = static_cast<std::size_t>(same - m_rows.begin());
  return std::min(lineBegin(first) + (position - before.lineBegin(row)), m_rows[rowsOfLine(first).last].end);
}

}  // namespace zolt
