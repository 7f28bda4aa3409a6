#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "text/TextPosition.h"
#include "vt/snapshot/SnapshotRow.h"

namespace zolt {

/// Where the rows of a screen stand in the text: they follow the history, a line end after each row that does not wrap.
/// A value; pure.
class ScreenLines {
 public:
  using Rows = std::vector<std::shared_ptr<const vt::SnapshotRow>>;

  ScreenLines() = default;
  /// The first row begins at `start`, in line number `firstLine`, which itself begins at `firstLineStart`: earlier if
  /// the row continues a line of the history.
  ScreenLines(const Rows& rows, TextPosition start, std::uint64_t firstLine, TextPosition firstLineStart);

  std::size_t rowCount() const { return m_rows.size(); }
  TextPosition start() const { return m_start; }
  /// After the last row; nothing follows it.
  TextPosition end() const { return m_rows.empty() ? m_start : m_rows.back().end; }
  /// The characters of a row, a line end not included.
  TextRange range(std::size_t row) const { return {.begin = m_rows[row].begin, .end = m_rows[row].end}; }
  /// Whether a line end follows the row.
  bool endsLine(std::size_t row) const { return !m_rows[row].wraps && row + 1 < m_rows.size(); }
  std::uint64_t line(std::size_t row) const { return m_rows[row].line; }

  /// The row of `position`; a line end belongs to the row before it, and a place where one row wraps to the next to the
  /// latter. The first or last row for what lies outside.
  std::size_t rowAt(TextPosition position) const;
  /// The first and the last row of the line that `row` belongs to, as far as it is on the screen.
  struct LineRows {
    std::size_t first = 0;
    std::size_t last = 0;
  };
  LineRows rowsOfLine(std::size_t row) const;

  /// Where a place in `before`, an earlier state of this screen, is now: in the same line as far from its start, or at
  /// its end if it has become shorter. A line that has scrolled off has kept its place.
  TextPosition moved(const ScreenLines& before, TextPosition position) const;

 private:
  struct Row {
    TextPosition begin;
    TextPosition end;
    std::uint64_t line = 0;
    bool wraps = false;
  };

  TextPosition lineBegin(std::size_t row) const {
    const std::size_t first = rowsOfLine(row).first;
    return first == 0 ? m_firstLineStart : m_rows[first].begin;
  }

  TextPosition m_start;
  TextPosition m_firstLineStart;
  std::vector<Row> m_rows;
};

}  // namespace zolt
