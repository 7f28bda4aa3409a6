#include <algorithm>
#include <utility>

#include "vt/Screen.h"

namespace zolt::vt {

namespace {

bool isKept(Cell cell, Protection kept) {
  return kept != Protection::None && cell.isProtected();
}

}  // namespace

// What is erased or inserted at the beginning of a row is none of the line before, which ends there.
void Screen::endLineBefore(int row) {
  if (row > 0) {
    m_grid->state(row - 1).wraps = false;
  } else if (!showsAlternate()) {
    m_scrollback.endOpenLine(m_tables);
  }
}

void Screen::eraseCells(int row, int begin, int end, Protection kept) {
  isolate(row, begin, end);
  if (kept == Protection::None) {
    m_grid->fill(row, begin, end, blank());
  } else {
    const Cell blank = this->blank();
    for (Cell& cell :
         m_grid->row(row).subspan(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin))) {
      if (!isKept(cell, kept)) cell = blank;
    }
    if (!blank.isBlank()) m_grid->touch(row, end);
  }
  if (end == columns()) m_grid->state(row).wraps = false;
}

void Screen::eraseInLine(Part part, Protection kept) {
  const int begin = part == Part::ToEnd ? m_cursor.column : 0;
  const int end = part == Part::ToBegin ? m_cursor.column + 1 : columns();
  m_cursor.wrapsNext = false;
  // Not where a row is erased to its end alone: shells do that in the middle of a command line, and print on.
  if (part != Part::ToEnd) endLineBefore(m_cursor.row);
  eraseCells(m_cursor.row, begin, end, kept);
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
      eraseCells(row, 0, columns(), kept);
    }
  }
}

void Screen::eraseCharacters(int count) {
  const int end = m_cursor.column + std::min(std::max(count, 1), columns() - m_cursor.column);
  m_cursor.wrapsNext = false;
  eraseCells(m_cursor.row, m_cursor.column, end, protection == Protection::Iso ? Protection::Iso : Protection::None);
}

// Moves the cells of a part of a row to the right by `by`, or to the left where it is negative. What comes in is blank.
void Screen::shiftCells(int row, int begin, int end, int by) {
  const int size = end - begin;
  by = std::clamp(by, -size, size);
  const int written = std::clamp<int>(m_grid->state(row).extent, begin, end);
  isolate(row, begin, end);
  // A wide character is cut where its other half falls off, too.
  isolate(row, by > 0 ? end - by : begin - by, end);
  Cell* const cells = m_grid->row(row).data();
  const Cell blank = this->blank();
  cells[end - 1] = cells[end - 1].settled();
  if (by > 0) {
    std::copy_backward(cells + begin, cells + end - by, cells + end);
    std::fill(cells + begin, cells + begin + by, blank);
    m_grid->touch(row, std::min(end, std::max(written + by, begin + by)));
  } else {
    std::copy(cells + begin - by, cells + end, cells + begin);
    std::fill(cells + end + by, cells + end, blank);
    if (!blank.isBlank()) m_grid->touch(row, end);
  }
  if (end == columns()) m_grid->state(row).wraps = false;
}

void Screen::insertCharacters(int count) {
  if (!isWithinMargins(m_cursor.column)) return;
  m_cursor.wrapsNext = false;
  shiftCells(m_cursor.row, m_cursor.column, m_right, std::min(count, columns()));
}

void Screen::deleteCharacters(int count) {
  if (!isWithinMargins(m_cursor.column)) return;
  m_cursor.wrapsNext = false;
  shiftCells(m_cursor.row, m_cursor.column, m_right, -std::min(count, columns()));
}

void Screen::scrollRegionUp(int top, int bottom, int count) {
  count = std::min(count, bottom - top);
  if (count <= 0) return;
  if (!hasFullWidth()) return moveWithinMargins(top, bottom, count);
  // What leaves the top of the screen is history.
  if (top == 0 && !showsAlternate()) {
    for (int row = 0; row < count; ++row) {
      keepRow(row);
    }
  } else if (top > 0) {
    m_grid->state(top - 1).wraps = false;
  }
  m_grid->scrollUp(top, bottom, count, blank());
}

void Screen::scrollRegionDown(int top, int bottom, int count) {
  count = std::min(count, bottom - top);
  if (count <= 0) return;
  if (!hasFullWidth()) return moveWithinMargins(top, bottom, -count);
  endLineBefore(top);
  m_grid->state(std::max(top, bottom - 1 - count)).wraps = false;
  m_grid->scrollDown(top, bottom, count, blank());
}

// Moves what is between the left and the right margin up by `by` rows, or down where it is negative: cell by cell, for
// the rest of the rows stays.
void Screen::moveWithinMargins(int top, int bottom, int by) {
  for (int row = top; row < bottom; ++row) {
    isolate(row, m_left, m_right);
    m_grid->state(row).wraps = false;
  }
  const auto width = static_cast<std::size_t>(m_right - m_left);
  for (int i = 0; i < bottom - top; ++i) {
    const int row = by > 0 ? top + i : bottom - 1 - i;
    const int from = row + by;
    if (from >= top && from < bottom) {
      std::ranges::copy(m_grid->row(from).subspan(static_cast<std::size_t>(m_left), width),
                        m_grid->row(row).begin() + m_left);
      m_grid->touch(row, m_right);
    } else {
      m_grid->fill(row, m_left, m_right, blank());
    }
  }
}

// Adds a row of the screen to the history.
void Screen::keepRow(int row) {
  const RowState& state = m_grid->state(row);
  m_scrollback.append(m_grid->row(row).first(state.extent), state.wraps,
                      state.hasMarks ? m_grid->marks(row) : std::span<const RowMark>(), m_tables);
}

void Screen::insertLines(int count) {
  if (m_cursor.row < m_top || m_cursor.row >= m_bottom || !isWithinMargins(m_cursor.column)) return;
  scrollRegionDown(m_cursor.row, m_bottom, count);
  place(m_cursor.row, m_left);
}

void Screen::deleteLines(int count) {
  if (m_cursor.row < m_top || m_cursor.row >= m_bottom || !isWithinMargins(m_cursor.column)) return;
  // Lines deleted at the top are deleted: they are no history.
  m_grid->state(m_bottom - 1).wraps = false;
  if (m_cursor.row == 0 && hasFullWidth()) {
    endLineBefore(0);
    m_grid->scrollUp(0, m_bottom, std::min(count, m_bottom), blank());
  } else {
    scrollRegionUp(m_cursor.row, m_bottom, count);
  }
  place(m_cursor.row, m_left);
}

void Screen::scrollUp(int count) {
  m_grid->state(m_bottom - 1).wraps = false;
  scrollRegionUp(m_top, m_bottom, count);
}

void Screen::scrollDown(int count) {
  scrollRegionDown(m_top, m_bottom, count);
}

void Screen::scrollLeft(int count) {
  for (int row = m_top; row < m_bottom; ++row) {
    shiftCells(row, m_left, m_right, -std::min(count, columns()));
  }
}

void Screen::scrollRight(int count) {
  for (int row = m_top; row < m_bottom; ++row) {
    shiftCells(row, m_left, m_right, std::min(count, columns()));
  }
}

void Screen::insertColumns(int count) {
  if (m_cursor.row < m_top || m_cursor.row >= m_bottom || !isWithinMargins(m_cursor.column)) return;
  for (int row = m_top; row < m_bottom; ++row) {
    shiftCells(row, m_cursor.column, m_right, std::min(count, columns()));
  }
}

void Screen::deleteColumns(int count) {
  if (m_cursor.row < m_top || m_cursor.row >= m_bottom || !isWithinMargins(m_cursor.column)) return;
  for (int row = m_top; row < m_bottom; ++row) {
    shiftCells(row, m_cursor.column, m_right, -std::min(count, columns()));
  }
}

void Screen::fillRectangle(const Rectangle& area, char32_t character) {
  const std::uint64_t look = this->look();
  for (int row = area.top; row < area.bottom && !area.isEmpty(); ++row) {
    isolate(row, area.left, area.right);
    const std::span<Cell> cells = m_grid->row(row);
    std::fill(cells.begin() + area.left, cells.begin() + area.right, Cell(character, Cell::Width::Narrow, look));
    m_grid->touch(row, area.right);
    if (area.right == columns()) m_grid->state(row).wraps = false;
  }
}

void Screen::eraseRectangle(const Rectangle& area, Protection kept) {
  for (int row = area.top; row < area.bottom && !area.isEmpty(); ++row) {
    if (area.left == 0) endLineBefore(row);
    eraseCells(row, area.left, area.right, kept);
  }
}

void Screen::copyRectangle(const Rectangle& area, int row, int column) {
  if (row < 0 || column < 0 || row >= rows() || column >= columns()) return;
  const int height = std::min(area.bottom - area.top, rows() - row);
  const int width = std::min(area.right - area.left, columns() - column);
  if (height <= 0 || width <= 0) return;
  // Taken out first: the two may overlap.
  std::vector<Cell> copied;
  copied.reserve(static_cast<std::size_t>(height) * static_cast<std::size_t>(width));
  for (int i = 0; i < height; ++i) {
    const std::span<const Cell> cells = std::as_const(*m_grid).row(area.top + i);
    copied.insert(copied.end(), cells.begin() + area.left, cells.begin() + area.left + width);
    // Half of a wide character is none.
    Cell& first = copied[copied.size() - static_cast<std::size_t>(width)];
    if (first.width() == Cell::Width::Tail) first = Cell(Cell::makeLook(first.style(), 0, false));
    Cell& last = copied.back();
    if (last.width() == Cell::Width::Wide) last = Cell(Cell::makeLook(last.style(), 0, false));
    last = last.settled();
  }
  for (int i = 0; i < height; ++i) {
    isolate(row + i, column, column + width);
    const auto from = copied.begin() + static_cast<std::ptrdiff_t>(i) * width;
    std::copy(from, from + width, m_grid->row(row + i).begin() + column);
    m_grid->touch(row + i, column + width);
    if (column + width == columns()) m_grid->state(row + i).wraps = false;
  }
}

// As a VT420 has it: the negative sum of the characters and of a number for each of their attributes.
std::uint16_t Screen::checksum(const Rectangle& area) const {
  std::uint32_t sum = 0;
  for (int row = area.top; row < area.bottom; ++row) {
    for (int column = area.left; column < area.right; ++column) {
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
  place(0, 0);
  for (int row = 0; row < rows(); ++row) {
    m_grid->clearRow(row, Cell());
    const std::span<Cell> cells = m_grid->row(row);
    std::ranges::fill(cells, Cell(U'E', Cell::Width::Narrow, 0));
    m_grid->touch(row, columns());
  }
}

}  // namespace zolt::vt
