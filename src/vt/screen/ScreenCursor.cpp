#include <algorithm>

#include "vt/screen/Screen.h"

namespace zolt::vt {

void Screen::moveToRow(int row) {
  const int last = modes.origin ? m_bottom - 1 : rows() - 1;
  setCursor(std::clamp(row, 0, last - top()) + top(), m_cursor.column);
}

void Screen::moveToColumn(int column) {
  const int first = modes.origin ? m_left : 0;
  const int last = modes.origin ? m_right - 1 : columns() - 1;
  setCursor(m_cursor.row, std::clamp(column, 0, last - first) + first);
}

void Screen::moveTo(Position position) {
  moveToRow(position.row);
  moveToColumn(position.column);
}

void Screen::moveUp(int count) {
  const int first = m_cursor.row >= m_top ? m_top : 0;
  setCursor(std::max(first, m_cursor.row - std::min(count, rows())), m_cursor.column);
}

void Screen::moveDown(int count) {
  const int last = m_cursor.row < m_bottom ? m_bottom - 1 : rows() - 1;
  setCursor(std::min(last, m_cursor.row + std::min(count, rows())), m_cursor.column);
}

void Screen::moveForward(int count) {
  const int last = m_cursor.column < m_right ? m_right - 1 : columns() - 1;
  setCursor(m_cursor.row, std::min(last, m_cursor.column + std::min(count, columns())));
}

void Screen::moveBack(int count) {
  const bool wrapsBack = (modes.reverseWrap || modes.extendedReverseWrap) && modes.autoWrap;
  if (!wrapsBack) {
    const int first = m_cursor.column >= m_left ? m_left : 0;
    setCursor(m_cursor.row, std::max(first, m_cursor.column - std::min(count, columns())));
    return;
  }
  count = std::min(count, rows() * columns());
  // With a wrap pending, the first step only cancels it.
  if (m_cursor.wrapsNext) --count;
  m_cursor.wrapsNext = false;
  while (count > 0) {
    const int left = m_cursor.column >= m_left ? m_left : 0;
    const int steps = std::min(count, m_cursor.column - left);
    m_cursor.column -= steps;
    count -= steps;
    if (count == 0) return;
    const bool atTop = m_cursor.row == m_top || m_cursor.row == 0;
    if (atTop && !modes.extendedReverseWrap) return;
    const int above = atTop ? m_bottom - 1 : m_cursor.row - 1;
    if (!modes.extendedReverseWrap && !m_grid->state(above).wraps) return;
    setCursor(above, m_right - 1);
    --count;
  }
}

void Screen::moveRows(int count) {
  const int last = modes.origin ? m_bottom - 1 : rows() - 1;
  setCursor(std::clamp(m_cursor.row + std::min(count, rows()), 0, last), m_cursor.column);
}

void Screen::moveColumns(int count) {
  const int last = modes.origin ? m_right - 1 : columns() - 1;
  setCursor(m_cursor.row, std::clamp(m_cursor.column + std::min(count, columns()), 0, last));
}

void Screen::carriageReturn() {
  const bool isInside = modes.origin || m_cursor.column >= m_left;
  setCursor(m_cursor.row, isInside ? m_left : 0);
}

void Screen::lineFeed() {
  // Scrolling a region separates its last row from the row below that continues it.
  if (m_cursor.row == m_bottom - 1 && m_bottom < rows()) m_grid->state(m_cursor.row).wraps = false;
  advanceRow();
}

void Screen::advanceRow() {
  if (m_cursor.row == m_bottom - 1) {
    if (isWithinMargins(m_cursor.column)) scrollRegionUp(m_top, m_bottom, 1);
  } else if (m_cursor.row < rows() - 1) {
    ++m_cursor.row;
  }
  m_cursor.wrapsNext = false;
}

void Screen::reverseLineFeed() {
  if (m_cursor.row == m_top) {
    if (isWithinMargins(m_cursor.column)) scrollRegionDown(m_top, m_bottom, 1);
  } else if (m_cursor.row > 0) {
    --m_cursor.row;
  }
  m_cursor.wrapsNext = false;
}

void Screen::backIndex() {
  if (m_cursor.column != m_left) {
    if (m_cursor.column > 0) setCursor(m_cursor.row, m_cursor.column - 1);
  } else if (m_cursor.row >= m_top && m_cursor.row < m_bottom) {
    insertColumns(1);
  }
}

void Screen::forwardIndex() {
  if (m_cursor.column != m_right - 1) {
    if (m_cursor.column < columns() - 1) setCursor(m_cursor.row, m_cursor.column + 1);
  } else if (m_cursor.row >= m_top && m_cursor.row < m_bottom) {
    const Cursor before = m_cursor;
    m_cursor.column = m_left;
    deleteColumns(1);
    m_cursor = before;
  }
}

Cursor Screen::reportedCursor() const {
  Cursor reported = m_cursor;
  if (modes.origin) {
    reported.row -= m_top;
    reported.column -= m_left;
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
    m_cursor.row = std::clamp(m_cursor.row, m_top, m_bottom - 1);
    m_cursor.column = std::clamp(m_cursor.column, m_left, m_right - 1);
  }
  characterSets = saved.characterSets;
  style() = saved.pen.style;
  setProtected(saved.pen.isProtected);
}

}  // namespace zolt::vt
