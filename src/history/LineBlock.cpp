#include "history/LineBlock.h"

#include <algorithm>

namespace zolt {

RowNumber LineBlock::rows(LineColumn columns) const {
  RowNumber rows = continuesALine() ? this->rows(fragment(0), columns) : 0;
  if (m_summary.longestLine <= columns) return rows + static_cast<RowNumber>(m_summary.lineStarts);
  for (std::size_t i = continuesALine() ? 1 : 0; i < fragmentCount(); ++i) {
    rows += this->rows(fragment(i), columns);
  }
  return rows;
}

std::string lostText(const BlockSummary& summary) {
  const std::size_t ends = std::min<std::size_t>(summary.lineEnds(), summary.size);
  // A line that continues in the next block keeps its columns, as far as there are bytes for them.
  const std::size_t tail = std::min<std::size_t>(summary.endColumn, summary.size - ends);
  std::size_t blanks = summary.size - ends - (ends == 0 ? 0 : tail);
  std::string text(kHistoryLostNotice.substr(0, blanks));
  blanks -= text.size();
  // The other lines share the blanks evenly, so that the block has about as many rows as before.
  for (std::size_t left = ends; left > 0; --left) {
    text.append(blanks / left, ' ').push_back('\n');
    blanks -= blanks / left;
  }
  text.resize(summary.size, ' ');
  return text;
}

}  // namespace zolt
