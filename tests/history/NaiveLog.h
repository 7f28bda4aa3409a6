#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "history/RowIndex.h"

namespace zolt {

/// A log in one string, laid out from scratch on each call. The reference for TextStorage and RowIndex.
class NaiveLog {
 public:
  /// Half-open; `contentEnd` is where the line end begins, and `columns` the column after the content.
  struct Line {
    TextPosition begin;
    TextPosition contentEnd;
    TextPosition end;
    LineColumn columns = 0;
  };

  void append(std::string_view text) { m_text += text; }

  const std::string& text() const { return m_text; }

  /// Lines end with LF, CR or CR LF. The last line is whatever follows the last line end.
  std::vector<Line> lines() const;

 private:
  std::string m_text;
};

/// All rows of a log at one width.
class NaiveRows {
 public:
  NaiveRows(const NaiveLog& log, std::int64_t columns);

  std::int64_t count() const { return static_cast<std::int64_t>(m_rows.size()); }
  const RowIndex::Row& operator[](std::int64_t row) const { return m_rows[static_cast<std::size_t>(row)]; }
  /// The row that shows `position`, at most the size of the log.
  std::int64_t rowAt(TextPosition position) const { return m_rowOfPosition[position.value]; }

 private:
  std::vector<RowIndex::Row> m_rows;
  std::vector<std::int64_t> m_rowOfPosition;
};

}  // namespace zolt
