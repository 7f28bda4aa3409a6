#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "emulation/TerminalScreenBuffer.h"

namespace zolt {

using Cursor = TerminalScreenBuffer::Cursor;

/// A buffer of the size given, empty.
inline TerminalScreenBuffer screenOf(std::int64_t rows, std::int64_t cols) {
  TerminalScreenBuffer buffer;
  buffer.resize(rows, cols);
  return buffer;
}

/// A cell with `character` and nothing else that differs from the blank one.
inline TerminalCell plainCell(std::string_view character) {
  TerminalCell cell;
  cell.character = character;
  return cell;
}

/// The characters of a row, blanks at the right end left out.
inline std::string textOf(const TerminalScreenBuffer::Row& row) {
  std::string text;
  for (const TerminalCell& cell : row) {
    text += cell.character;
  }
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

/// The rows of the grid, one below the other with "|" between.
inline std::string pictureOf(const TerminalScreenBuffer& buffer) {
  std::string picture;
  for (std::size_t row = 0; row < buffer.cells().size(); ++row) {
    if (row != 0) picture += '|';
    picture += textOf(buffer.cells()[row]);
  }
  return picture;
}

inline void PrintTo(const Cursor& cursor, std::ostream* out) {
  *out << '(' << cursor.row << ", " << cursor.col << ')';
}

}  // namespace zolt
