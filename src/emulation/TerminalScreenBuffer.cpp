#include "emulation/TerminalScreenBuffer.h"

#include "base/CheckedMath.h"
#include "base/Fatal.h"
#include "text/GraphemeClusters.h"

namespace zolt {

void TerminalScreenBuffer::resize(std::int64_t rows, std::int64_t cols) {
  precondition(cols >= 0, "a screen buffer cannot have a negative number of columns");
  precondition(rows >= 0, "a screen buffer cannot have a negative number of rows");
  m_rows = rows;
  m_cols = cols;
  const auto width = static_cast<std::size_t>(cols);
  while (std::ssize(m_cells) < rows) {
    m_cells.emplace_back(width);
  }
  while (std::ssize(m_cells) > rows) {
    m_scrollback.push_back(std::move(m_cells.front()));
    m_cells.pop_front();
    trimScrollback();
  }
  for (Row& row : m_cells) {
    row.resize(width);
  }
}

void TerminalScreenBuffer::parseAndRender(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t end = clusterEnd(text, position);
    const std::string_view character = text.substr(position, end - position);
    position = end;
    if (character == "\n") {
      lineFeed();
    } else if (character == "\r") {
      cursorPosition.col = 0;
    } else if (character == "\t") {
      tab();
    } else if (character != "\x1B") {
      put(character);
    }
  }
}

void TerminalScreenBuffer::clear() {
  for (Row& row : m_cells) {
    row.assign(row.size(), TerminalCell{});
  }
  cursorPosition = {};
}

void TerminalScreenBuffer::lineFeed() {
  cursorPosition.row = checkedAdd(cursorPosition.row, 1);
  cursorPosition.col = 0;
  if (cursorPosition.row >= m_rows) scroll();
}

void TerminalScreenBuffer::tab() {
  cursorPosition.col = checkedAdd(cursorPosition.col / 8 * 8, 8);
  if (cursorPosition.col >= m_cols) {
    cursorPosition.col = 0;
    cursorPosition.row = checkedAdd(cursorPosition.row, 1);
  }
}

void TerminalScreenBuffer::put(std::string_view character) {
  if (cursorPosition.row >= m_rows || cursorPosition.col >= m_cols) return;
  precondition(cursorPosition.row >= 0 && cursorPosition.col >= 0, "the cursor lies before the grid");
  precondition(cursorPosition.row < std::ssize(m_cells), "a screen buffer has no cells before its first resize");
  Row& row = m_cells[static_cast<std::size_t>(cursorPosition.row)];
  row[static_cast<std::size_t>(cursorPosition.col)].character = character;
  cursorPosition.col = checkedAdd(cursorPosition.col, 1);
  if (cursorPosition.col == m_cols) {
    cursorPosition.col = 0;
    cursorPosition.row = checkedAdd(cursorPosition.row, 1);
    if (cursorPosition.row == m_rows) scroll();
  }
}

void TerminalScreenBuffer::scroll() {
  precondition(!m_cells.empty(), "a grid without rows cannot scroll");
  m_scrollback.push_back(std::move(m_cells.front()));
  m_cells.pop_front();
  m_cells.emplace_back(static_cast<std::size_t>(m_cols));
  trimScrollback();
  cursorPosition.row = m_rows - 1;
}

void TerminalScreenBuffer::trimScrollback() {
  while (std::ssize(m_scrollback) > maxScrollbackLines) {
    m_scrollback.pop_front();
  }
}

}  // namespace zolt
