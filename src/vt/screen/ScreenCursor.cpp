#include <algorithm>

#include "vt/screen/Screen.h"

namespace zolt::vt {

void Screen::moveToRow(int row) {
  const RowRange within = modes.origin ? m_margins.rows : area().rows;
  setCursor({.row = within.begin + std::clamp(row, 0, within.size() - 1), .column = m_cursor.column});
}

void Screen::moveToColumn(int column) {
  const ColumnRange within = modes.origin ? m_margins.columns : area().columns;
  setCursor({.row = m_cursor.row, .column = within.begin + std::clamp(column, 0, within.size() - 1)});
}

void Screen::moveTo(Position position) {
  moveToRow(position.row);
  moveToColumn(position.column);
}

void Screen::moveUp(int count) {
  const int first = m_cursor.row >= m_margins.rows.begin ? m_margins.rows.begin : 0;
  setCursor({.row = std::max(first, m_cursor.row - std::min(count, rows())), .column = m_cursor.column});
}

void Screen::moveDown(int count) {
  const int last = m_cursor.row < m_margins.rows.end ? m_margins.rows.last() : rows() - 1;
  setCursor({.row = std::min(last, m_cursor.row + std::min(count, rows())), .column = m_cursor.column});
}

void Screen::moveForward(int count) {
  const int last = m_cursor.column < m_margins.columns.end ? m_margins.columns.last() : columns() - 1;
  setCursor({.row = m_cursor.row, .column = std::min(last, m_cursor.column + std::min(count, columns()))});
}

void Screen::moveBack(int count) {
  const bool wrapsBack = (modes.reverseWrap || modes.extendedReverseWrap) && modes.autoWrap;
  if (!wrapsBack) {
    const int first = m_cursor.column >= m_margins.columns.begin ? m_margins.columns.begin : 0;
    setCursor({.row = m_cursor.row, .column = std::max(first, m_cursor.column - std::min(count, columns()))});
    return;
  }
  count = std::min(count, rows() * columns());
  // With a wrap pending, the first step only cancels it.
  if (m_cursor.wrapsNext) --count;
  m_cursor.wrapsNext = false;
  while (count > 0) {
    const int left = m_cursor.column >= m_margins.columns.begin ? m_margins.columns.begin : 0;
    const int steps = std::min(count, m_cursor.column - left);
    m_cursor.column -= steps;
    count -= steps;
    if (count == 0) return;
    const bool atTop = m_cursor.row == m_margins.rows.begin || m_cursor.row == 0;
    if (atTop && !modes.extendedReverseWrap) return;
    const int above = atTop ? m_margins.rows.last() : m_cursor.row - 1;
    if (!modes.extendedReverseWrap && !m_grid->state(above).wraps) return;
    setCursor({.row = above, .column = m_margins.columns.last()});
    --count;
  }
}

void Screen::moveRows(int count) {
  const int last = modes.origin ? m_margins.rows.last() : rows() - 1;
  setCursor({.row = std::clamp(m_cursor.row + std::min(count, rows()), 0, last), .column = m_cursor.column});
}

void Screen::moveColumns(int count) {
  const int last = modes.origin ? m_margins.columns.last() : columns() - 1;
  setCursor({.row = m_cursor.row, .column = std::clamp(m_cursor.column + std::min(count, columns()), 0, last)});
}

void Screen::carriageReturn() {
  const bool isInside = modes.origin || m_cursor.column >= m_margins.columns.begin;
  setCursor({.row = m_cursor.row, .column = isInside ? m_margins.columns.begin : 0});
}

void Screen::lineFeed() {
  // Scrolling a region separates its last row from the row below that continues it.
  if (m_cursor.row == m_margins.rows.last() && m_margins.rows.end < rows()) m_grid->state(m_cursor.row).wraps = false;
  advanceRow();
}

void Screen::advanceRow() {
  if (m_cursor.row == m_margins.rows.last()) {
    if (m_margins.columns.contains(m_cursor.position())) scrollRegionUp(m_margins.rows, 1);
  } else if (m_cursor.row < rows() - 1) {
    ++m_cursor.row;
  }
  m_cursor.wrapsNext = false;
}

void Screen::reverseLineFeed() {
  if (m_cursor.row == m_margins.rows.begin) {
    if (m_margins.columns.contains(m_cursor.position())) scrollRegionDown(m_margins.rows, 1);
  } else if (m_cursor.row > 0) {
    --m_cursor.row;
  }
  m_cursor.wrapsNext = false;
}

void Screen::backIndex() {
  if (m_cursor.column != m_margins.columns.begin) {
    if (m_cursor.column > 0) setCursor({.row = m_cursor.row, .column = m_cursor.column - 1});
  } else if (m_margins.rows.contains(m_cursor.position())) {
    insertColumns(1);
  }
}

void Screen::forwardIndex() {
  if (m_cursor.column != m_margins.columns.last()) {
    if (m_cursor.column < columns() - 1) setCursor({.row = m_cursor.row, .column = m_cursor.column + 1});
  } else if (m_margins.rows.contains(m_cursor.position())) {
    const Cursor before = m_cursor;
    m_cursor.column = m_margins.columns.begin;
    deleteColumns(1);
    m_cursor = before;
  }
}

Cursor Screen::reportedCursor() const {
  Cursor reported = m_cursor;
  if (modes.origin) {
    reported.row -= m_margins.rows.begin;
    reported.column -= m_margins.columns.begin;
  }
  return reported;
}

void Screen::saveCursor() {
  m_saved[showsAlternate() ? 1 : 0] = {
      .cursor = m_cursor, .pen = m_pen, .characterSets = characterSets, .origin = modes.origin};
}

void Screen::restoreCursor() {
  const Saved& saved = m_saved[showsAlternate() ? 1 : 0];
  m_cursor = saved.cursor;
  clampCursor();
  modes.origin = saved.origin;
  if (modes.origin) {
    m_cursor.row = std::clamp(m_cursor.row, m_margins.rows.begin, m_margins.rows.last());
    m_cursor.column = std::clamp(m_cursor.column, m_margins.columns.begin, m_margins.columns.last());
  }
  characterSets = saved.characterSets;
  style() = saved.pen.style;
  setProtected(saved.pen.isProtected);
}

}  // namespace zolt::vt
