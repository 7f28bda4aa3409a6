#include "vt/screen/Grid.h"

#include <algorithm>
#include <numeric>

namespace zolt::vt {

Grid::Grid(const TerminalSize& size)
    : m_rows(size.rows),
      m_columns(size.columns),
      m_cells(static_cast<std::size_t>(m_rows) * static_cast<std::size_t>(m_columns)),
      m_states(static_cast<std::size_t>(m_rows)),
      m_order(static_cast<std::size_t>(m_rows)),
      m_ringSize(m_rows) {
  std::iota(m_order.begin(), m_order.end(), std::uint16_t{0});
}

void Grid::fill(int row, ColumnRange columns, Cell blank) {
  const auto [begin, end] = columns;
  const std::size_t at = slot(row);
  RowInfo& state = m_states[at];
  state.isChanged = true;
  Cell* const first = cells(at);
  if (!blank.isBlank()) {
    std::fill(first + begin, first + end, blank);
    state.extent = std::max(state.extent, static_cast<std::uint16_t>(end));
    return;
  }
  const int written = std::min<int>(end, state.extent);
  if (begin >= written) return;
  std::fill(first + begin, first + written, blank);
  if (written == state.extent) state.extent = static_cast<std::uint16_t>(begin);
}

void Grid::clearSlot(std::size_t slot, Cell blank) {
  RowInfo& state = m_states[slot];
  if (state.hasMarks) m_marks.erase(slot);
  Cell* const first = cells(slot);
  if (blank.isBlank()) {
    std::fill(first, first + state.extent, blank);
    state = {};
  } else {
    std::fill(first, first + m_columns, blank);
    state = {.extent = static_cast<std::uint16_t>(m_columns)};
  }
}

void Grid::clearRow(int row, Cell blank) {
  clearSlot(slot(row), blank);
}

void Grid::makeRing(RowRange rows) {
  if (m_ringTop == rows.begin && m_ringSize == rows.size()) return;
  const auto begin = m_order.begin() + m_ringTop;
  std::rotate(begin, begin + m_ringOffset, begin + m_ringSize);
  m_ringTop = rows.begin;
  m_ringSize = rows.size();
  m_ringOffset = 0;
}

void Grid::scrollUp(RowRange rows, int count, Cell blank) {
  makeRing(rows);
  for (int i = 0; i < count; ++i) {
    clearRow(rows.begin + i, blank);
  }
  m_ringOffset = (m_ringOffset + count) % m_ringSize;
}

void Grid::scrollDown(RowRange rows, int count, Cell blank) {
  makeRing(rows);
  for (int i = 0; i < count; ++i) {
    clearRow(rows.last() - i, blank);
  }
  m_ringOffset = (m_ringOffset + m_ringSize - count) % m_ringSize;
}

void Grid::addMark(int row, const RowMark& mark) {
  const std::size_t at = slot(row);
  std::vector<RowMark>& marks = m_marks[at];
  // A prompt that is redrawn keeps its mark.
  const auto same = std::ranges::find_if(
      marks, [&](const RowMark& each) { return each.column == mark.column && each.kind == mark.kind; });
  if (same != marks.end()) {
    *same = mark;
  } else if (marks.size() < maxMarks) {
    marks.push_back(mark);
  }
  m_states[at].hasMarks = true;
  m_states[at].isChanged = true;
}

std::span<const RowMark> Grid::marks(int row) const {
  const auto found = m_marks.find(slot(row));
  return found == m_marks.end() ? std::span<const RowMark>() : std::span<const RowMark>(found->second);
}

}  // namespace zolt::vt
