#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "history/RowIndex.h"
#include "vt/history/Scrollback.h"
#include "vt/history/ScrollbackText.h"

namespace zolt::vt::test {

/// A scrollback, and the same text in one string.
class ScrollbackModel {
 public:
  explicit ScrollbackModel(HistorySettings settings = {}) : m_scrollback(std::move(settings)) {}

  Scrollback& scrollback() { return m_scrollback; }
  /// All text since the start, what was trimmed included.
  const std::string& text() const { return m_text; }

  /// Appends a row of printable characters in the default style.
  void append(std::string_view utf8, bool wraps);
  void setLimit(std::optional<std::uint64_t> lines) { m_scrollback.setLimit(lines); }
  /// Something happens: mostly rows are appended, sometimes lines taken back, the mode or the limit changed, all
  /// cleared.
  void step(std::mt19937& random);

 private:
  Scrollback m_scrollback;
  CellTables m_tables;
  std::string m_text;
};

/// All rows of the text that `text` shows, laid out from the start.
class NaiveScrollbackRows {
 public:
  struct Row {
    TextPosition begin;
    TextPosition end;  ///< without the line end
  };

  NaiveScrollbackRows(const ScrollbackModel& model, const ScrollbackText& text, int columns);

  const std::vector<Row>& rows() const { return m_rows; }
  /// The row that holds `position` < text.end().
  Row rowOf(TextPosition position) const;

 private:
  std::vector<Row> m_rows;
};

}  // namespace zolt::vt::test
