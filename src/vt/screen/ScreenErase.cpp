#include <algorithm>
#include <utility>

#include "vt/screen/Screen.h"

namespace zolt::vt {

namespace {

bool isKept(Cell cell, Protection kept) {
  return kept != Protection::None && cell.isProtected();
}

}  // namespace

// A row that is erased or inserted no longer continues the line of the row above.
void Screen::endLineBefore(int row) {
  if (row > 0) {
    m_grid->state(row - 1).wraps = false;
  } else if (!showsAlternate()) {
    m_scrollback.endOpenLine(m_tables);
  }
}

void Screen::eraseCells(int row, ColumnRange columns, Protection kept) {
  isolate(row, columns);
  if (kept == Protection::None) {
    m_grid->fill(row, columns, blank());
  } else {
    const Cell blank = this->blank();
    for (Cell& cell :
         m_grid->row(row).subspan(static_cast<std::size_t>(columns.begin), static_cast<std::size_t>(columns.size()))) {
      if (!isKept(cell, kept)) cell = blank;
    }
    if (!blank.isBlank()) m_grid->touch({.row = row, .column = columns.end});
  }
  if (columns.end == this->columns()) m_grid->state(row).wraps = false;
}

void Screen::eraseInLine(Part part, Protection kept) {
  const int begin = part == Part::ToEnd ? m_cursor.column : 0;
  const int end = part == Part::ToBegin ? m_cursor.column + 1 : columns();
  m_cursor.wrapsNext = false;
  // But not when erasing to the end: shells do that in the middle of a wrapped command line before they redraw it.
  if (part != Part::ToEnd) endLineBefore(m_cursor.row);
  eraseCells(m_cursor.row, {.begin = begin, .end = end}, kept);
}

void Screen::eraseInDisplay(Part part, Protection kept) {
  const int begin = part == Part::ToEnd ? m_cursor.row + 1 : 0;
  const int end = part == Part::ToBegin ? m_cursor.row : rows();
  if (part != Part::All) eraseInLine(part, kept);
  m_cursor.wrapsNext = false;
  if (part == Part::ToEnd && m_cursor.column == 0) endLineBefore(m_cursor.row);
  if (begin == 0) endLineBefore(0);
  for (int row = begin; row < end; ++row) {
    if (kept == Protection::None) {
      m_grid->clearRow(row, blank());
    } else {
      eraseCells(row, area().columns, kept);
    }
  }
}

void Screen::eraseCharacters(int count) {
  const int end = m_cursor.column + std::min(std::max(count, 1), columns() - m_cursor.column);
  m_cursor.wrapsNext = false;
  eraseCells(m_cursor.row, {.begin = m_cursor.column, .end = end},
             protection == Protection::Iso ? Protection::Iso : Protection::None);
}

// Shifts the cells of a row right by `by`, or left if it is negative, and blanks the gap.
void Screen::shiftCells(int row, ColumnRange columns, int by) {
  const auto [begin, end] = columns;
  const int size = columns.size();
  by = std::clamp(by, -size, size);
  const int written = std::clamp<int>(m_grid->state(row).extent, begin, end);
  isolate(row, columns);
  // Also erase the remaining half of a wide character whose other half is shifted out.
  isolate(row, {.begin = by > 0 ? end - by : begin - by, .end = end});
  Cell* const cells = m_grid->row(row).data();
  const Cell blank = this->blank();
  cells[end - 1] = cells[end - 1].withoutFiller();
  if (by > 0) {
    std::copy_backward(cells + begin, cells + end - by, cells + end);
    std::fill(cells + begin, cells + begin + by, blank);
    m_grid->touch({.row = row, .column = std::min(end, std::max(written + by, begin + by))});
  } else {
    std::copy(cells + begin - by, cells + end, cells + begin);
    std::fill(cells + end + by, cells + end, blank);
    if (!blank.isBlank()) m_grid->touch({.row = row, .column = end});
  }
  if (end == this->columns()) m_grid->state(row).wraps = false;
}

void Screen::insertCharacters(int count) {
  if (!m_margins.columns.contains(m_cursor.position())) return;
  m_cursor.wrapsNext = false;
  shiftCells(m_cursor.row, {.begin = m_cursor.column, .end = m_margins.columns.end}, std::min(count, columns()));
}

void Screen::deleteCharacters(int count) {
  if (!m_margins.columns.contains(m_cursor.position())) return;
  m_cursor.wrapsNext = false;
  shiftCells(m_cursor.row, {.begin = m_cursor.column, .end = m_margins.columns.end}, -std::min(count, columns()));
}

void Screen::scrollRegionUp(RowRange rows, int count) {
  count = std::min(count, rows.size());
  if (count <= 0) return;
  if (!hasFullWidth()) return moveWithinMargins(rows, count);
  // Rows that leave the top of the screen go to the scrollback.
  if (rows.begin == 0 && !showsAlternate()) {
    for (int row = 0; row < count; ++row) {
      saveToHistory(row);
    }
  } else if (rows.begin > 0) {
    m_grid->state(rows.begin - 1).wraps = false;
  }
  m_grid->scrollUp(rows, count, blank());
}

void Screen::scrollRegionDown(RowRange rows, int count) {
  count = std::min(count, rows.size());
  if (count <= 0) return;
  if (!hasFullWidth()) return moveWithinMargins(rows, -count);
  endLineBefore(rows.begin);
  m_grid->state(std::max(rows.begin, rows.last() - count)).wraps = false;
  m_grid->scrollDown(rows, count, blank());
}

// Scrolls the columns between the left and right margins up by `by` rows, or down if it is negative. Cells are copied,
// because the rest of each row stays.
void Screen::moveWithinMargins(RowRange rows, int by) {
  const ColumnRange columns = m_margins.columns;
  for (int row = rows.begin; row < rows.end; ++row) {
    isolate(row, columns);
    m_grid->state(row).wraps = false;
  }
  const auto width = static_cast<std::size_t>(columns.size());
  for (int i = 0; i < rows.size(); ++i) {
    const int row = by > 0 ? rows.begin + i : rows.last() - i;
    const int from = row + by;
    if (from >= rows.begin && from < rows.end) {
      std::ranges::copy(m_grid->row(from).subspan(static_cast<std::size_t>(columns.begin), width),
                        m_grid->row(row).begin() + columns.begin);
      m_grid->touch({.row = row, .column = columns.end});
    } else {
      m_grid->fill(row, columns, blank());
    }
  }
}

void Screen::clearButCursorLine() {
  Grid& grid = m_grids[0];
  Cursor& cursor = showsAlternate() ? m_saved[0].cursor : m_cursor;
  cursor.row = std::clamp(cursor.row, 0, rows() - 1);
  int first = cursor.row;
  while (first > 0 && grid.state(first - 1).wraps) {
    --first;
  }
  m_scrollback.clear();
  m_rowsBelow.clear();
  grid.scrollUp({.begin = 0, .end = rows()}, first, Cell());
  cursor.row -= first;
  for (int row = cursor.row + 1; row < rows(); ++row) {
    grid.clearRow(row, Cell());
  }
  grid.state(cursor.row).wraps = false;
}

void Screen::saveToHistory(int row) {
  const RowInfo& state = m_grid->state(row);
  m_scrollback.setClusters(modes.graphemeClusters);
  m_scrollback.append(m_grid->row(row).first(state.extent), state.wraps,
                      state.hasMarks ? m_grid->marks(row) : std::span<const RowMark>(), m_tables);
}

void Screen::insertLines(int count) {
  if (!m_margins.contains(m_cursor.position())) return;
  scrollRegionDown({.begin = m_cursor.row, .end = m_margins.rows.end}, count);
  setCursor({.row = m_cursor.row, .column = m_margins.columns.begin});
}

void Screen::deleteLines(int count) {
  if (!m_margins.contains(m_cursor.position())) return;
  // Unlike scrolled lines, deleted ones do not go to the scrollback.
  m_grid->state(m_margins.rows.last()).wraps = false;
  if (m_cursor.row == 0 && hasFullWidth()) {
    endLineBefore(0);
    m_grid->scrollUp({.begin = 0, .end = m_margins.rows.end}, std::min(count, m_margins.rows.end), blank());
  } else {
    scrollRegionUp({.begin = m_cursor.row, .end = m_margins.rows.end}, count);
  }
  setCursor({.row = m_cursor.row, .column = m_margins.columns.begin});
}

void Screen::scrollUp(int count) {
  m_grid->state(m_margins.rows.last()).wraps = false;
  scrollRegionUp(m_margins.rows, count);
}

void Screen::scrollDown(int count) {
  scrollRegionDown(m_margins.rows, count);
}

void Screen::scrollLeft(int count) {
  for (int row = m_margins.rows.begin; row < m_margins.rows.end; ++row) {
    shiftCells(row, m_margins.columns, -std::min(count, columns()));
  }
}

void Screen::scrollRight(int count) {
  for (int row = m_margins.rows.begin; row < m_margins.rows.end; ++row) {
    shiftCells(row, m_margins.columns, std::min(count, columns()));
  }
}

void Screen::insertColumns(int count) {
  if (!m_margins.contains(m_cursor.position())) return;
  for (int row = m_margins.rows.begin; row < m_margins.rows.end; ++row) {
    shiftCells(row, {.begin = m_cursor.column, .end = m_margins.columns.end}, std::min(count, columns()));
  }
}

void Screen::deleteColumns(int count) {
  if (!m_margins.contains(m_cursor.position())) return;
  for (int row = m_margins.rows.begin; row < m_margins.rows.end; ++row) {
    shiftCells(row, {.begin = m_cursor.column, .end = m_margins.columns.end}, -std::min(count, columns()));
  }
}

void Screen::fillRectangle(const Rectangle& area, char32_t character) {
  const std::uint64_t attributes = this->attributes();
  for (int row = area.rows.begin; row < area.rows.end && !area.isEmpty(); ++row) {
    isolate(row, area.columns);
    const std::span<Cell> cells = m_grid->row(row);
    std::fill(cells.begin() + area.columns.begin, cells.begin() + area.columns.end,
              Cell(character, Cell::Width::Narrow, attributes));
    m_grid->touch({.row = row, .column = area.columns.end});
    if (area.columns.end == columns()) m_grid->state(row).wraps = false;
  }
}

void Screen::eraseRectangle(const Rectangle& area, Protection kept) {
  for (int row = area.rows.begin; row < area.rows.end && !area.isEmpty(); ++row) {
    if (area.columns.begin == 0) endLineBefore(row);
    eraseCells(row, area.columns, kept);
  }
}

void Screen::copyRectangle(const Rectangle& area, Position to) {
  const auto [row, column] = to;
  if (row < 0 || column < 0 || row >= rows() || column >= columns()) return;
  const int height = std::min(area.rows.size(), rows() - row);
  const int width = std::min(area.columns.size(), columns() - column);
  if (height <= 0 || width <= 0) return;
  // Source and destination may overlap, so copy the cells out first.
  std::vector<Cell> copied;
  copied.reserve(static_cast<std::size_t>(height) * static_cast<std::size_t>(width));
  for (int i = 0; i < height; ++i) {
    const std::span<const Cell> cells = std::as_const(*m_grid).row(area.rows.begin + i);
    copied.insert(copied.end(), cells.begin() + area.columns.begin, cells.begin() + area.columns.begin + width);
    // Erase halves of wide characters at the edges.
    Cell& first = copied[copied.size() - static_cast<std::size_t>(width)];
    if (first.width() == Cell::Width::Tail) first = Cell(Cell::makeAttributes(first.style(), 0, false));
    Cell& last = copied.back();
    if (last.width() == Cell::Width::Wide) last = Cell(Cell::makeAttributes(last.style(), 0, false));
    last = last.withoutFiller();
  }
  for (int i = 0; i < height; ++i) {
    isolate(row + i, {.begin = column, .end = column + width});
    const auto from = copied.begin() + static_cast<std::ptrdiff_t>(i) * width;
    std::copy(from, from + width, m_grid->row(row + i).begin() + column);
    m_grid->touch({.row = row + i, .column = column + width});
    if (column + width == columns()) m_grid->state(row + i).wraps = false;
  }
}

// As on a VT420: the negated sum of all characters and of a number for each of their attributes.
std::uint16_t Screen::checksum(const Rectangle& area) const {
  std::uint32_t sum = 0;
  for (int row = area.rows.begin; row < area.rows.end; ++row) {
    for (int column = area.columns.begin; column < area.columns.end; ++column) {
      const Cell cell = std::as_const(*m_grid).row(row)[static_cast<std::size_t>(column)];
      if (cell.width() == Cell::Width::Tail) continue;
      if (cell.isCluster()) {
        for (const char32_t scalar : m_tables.clusters[cell.clusterId()]) {
          sum += scalar;
        }
      } else {
        sum += cell.isErased() ? U' ' : cell.character();
      }
      const Style& style = m_tables.styles[cell.style()];
      if (cell.isProtected()) sum += 0x04;
      if ((style.flags & kHidden) != 0) sum += 0x08;
      if (style.underline != Underline::None) sum += 0x10;
      if ((style.flags & kInverse) != 0) sum += 0x20;
      if ((style.flags & kBlink) != 0) sum += 0x40;
      if ((style.flags & kBold) != 0) sum += 0x80;
    }
  }
  return static_cast<std::uint16_t>(0U - sum);
}

void Screen::alignmentPattern() {
  resetMargins();
  endLineBefore(0);
  modes.origin = false;
  setCursor({});
  for (int row = 0; row < rows(); ++row) {
    m_grid->clearRow(row, Cell());
    const std::span<Cell> cells = m_grid->row(row);
    std::ranges::fill(cells, Cell(U'E', Cell::Width::Narrow, 0));
    m_grid->touch({.row = row, .column = columns()});
  }
}

}  // namespace zolt::vt
