#pragma once

#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

#include "emulation/TerminalCell.h"

namespace zolt {

/// The character grid of one terminal and its scrollback.
///
/// It interprets only line structure: line feed, carriage return, tab, wrapping at the last column and scrolling. It
/// knows no escape sequences and never changes colours or attributes. After any operation there are `rows()` rows of
/// `cols()` cells each; a new buffer reports 24 by 80 but has no cells until the first `resize`.
///
/// Broken preconditions (a negative size, writing before the first `resize`, scrolling a grid without rows, overflow of
/// the cursor) stop the program. Not synchronised: one thread at a time.
class TerminalScreenBuffer {
 public:
  using Row = std::vector<TerminalCell>;

  /// The maximum number of rows in the scrollback.
  static constexpr std::int64_t maxScrollbackLines = 10000;

  struct Cursor {
    std::int64_t row = 0;
    std::int64_t col = 0;

    friend bool operator==(const Cursor&, const Cursor&) = default;
  };

  /// Row 0 is the top.
  const std::deque<Row>& cells() const { return m_cells; }
  std::int64_t rows() const { return m_rows; }
  std::int64_t cols() const { return m_cols; }
  /// Rows scrolled off the top, oldest first, each as wide as it was then.
  const std::deque<Row>& scrollbackBuffer() const { return m_scrollback; }

  /// Where the next character goes. Not clamped to the grid: it may lie past the last row or column, and every write
  /// checks it.
  Cursor cursorPosition;

  /// Makes the grid `rows` by `cols`. Shrinking moves rows from the top into the scrollback; growing adds blank rows at
  /// the bottom. The cursor stays where it is, inside the grid or not.
  void resize(std::int64_t rows, std::int64_t cols);

  /// Lays out decoded text (valid UTF-8), one extended grapheme cluster to a cell.
  ///
  /// A line feed also returns the carriage. A CR LF pair is one cluster, treated as neither, and is stored in a cell
  /// like a printable character. A tab past the last column moves to the next row without scrolling, unlike a character
  /// that wraps. Both are deliberate.
  void parseAndRender(std::string_view text);

  /// Blanks the grid and homes the cursor; the scrollback stays.
  void clear();

 private:
  void lineFeed();
  void tab();
  void put(std::string_view character);
  void scroll();
  void trimScrollback();

  std::deque<Row> m_cells;
  std::int64_t m_rows = 24;
  std::int64_t m_cols = 80;
  std::deque<Row> m_scrollback;
};

}  // namespace zolt
