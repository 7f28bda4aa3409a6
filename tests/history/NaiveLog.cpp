#include "history/NaiveLog.h"

#include <algorithm>

namespace zolt {

namespace {

LineColumn columnAfter(char c, LineColumn column) {
  return c == '\t' ? column - column % 8 + 8 : column + 1;
}

}  // namespace

std::vector<NaiveLog::Line> NaiveLog::lines() const {
  std::vector<Line> lines(1);
  for (std::size_t i = 0; i < m_text.size(); ++i) {
    Line& line = lines.back();
    if (m_text[i] != '\n' && m_text[i] != '\r') {
      line.columns = columnAfter(m_text[i], line.columns);
      continue;
    }
    line.contentEnd = TextPosition(i);
    if (m_text[i] == '\r' && i + 1 < m_text.size() && m_text[i + 1] == '\n') ++i;
    line.end = TextPosition(i + 1);
    lines.push_back({.begin = line.end, .contentEnd = {}, .end = {}, .columns = 0});
  }
  lines.back().contentEnd = lines.back().end = TextPosition(m_text.size());
  return lines;
}

NaiveRows::NaiveRows(const NaiveLog& log, std::int64_t columns) : m_rowOfPosition(log.text().size() + 1) {
  const auto width = static_cast<LineColumn>(columns);
  for (const NaiveLog::Line& line : log.lines()) {
    const auto firstRow = static_cast<std::int64_t>(m_rows.size());
    const auto rowsOfLine = static_cast<std::int64_t>(std::max<LineColumn>((line.columns + width - 1) / width, 1));
    TextPosition position = line.begin;
    LineColumn column = 0;
    for (std::int64_t k = 0; k < rowsOfLine; ++k) {
      RowIndex::Row row;
      row.firstColumn = static_cast<LineColumn>(k) * width;
      row.begin = position;
      row.beginColumn = column;
      while (position < line.contentEnd && column < row.firstColumn + width) {
        m_rowOfPosition[position.value] = firstRow + k;
        column = columnAfter(log.text()[position.value], column);
        position = position + 1;
      }
      row.end = position;
      m_rows.push_back(row);
    }
    for (; position < std::max(line.end, line.contentEnd + 1); position = position + 1) {
      m_rowOfPosition[position.value] = firstRow + rowsOfLine - 1;
    }
  }
}

}  // namespace zolt
