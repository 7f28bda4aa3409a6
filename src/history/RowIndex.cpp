#include "history/RowIndex.h"

#include <algorithm>
#include <bit>

namespace zolt {

RowIndex::RowIndex(const HistoryText& text, std::int64_t columns)
    : m_text(text), m_columns(static_cast<LineColumn>(std::max<std::int64_t>(columns, 1))) {
  restart();
  sync();
}

void RowIndex::setColumns(std::int64_t columns) {
  const auto wanted = static_cast<LineColumn>(std::max<std::int64_t>(columns, 1));
  if (wanted == m_columns) return;
  m_columns = wanted;
  restart();
  ++m_generation;
  sync();
}

// Counts everything anew.
void RowIndex::restart() {
  m_firstBlock = m_trimmedUpTo = m_refineFrom = m_text.firstBlock();
  m_sums.clear();
  m_estimated.clear();
  m_tail.clear();
  m_sealedRows = 0;
  m_lostSeen = 0;
  for (BlockLayout& layout : m_layouts) {
    layout.block = SIZE_MAX;
  }
}

void RowIndex::sync() {
  dropTrimmed();
  while (sealedEnd() < m_text.stableEnd()) {
    const BlockSummary& summary = m_text.summary(sealedEnd());
    forgetLayout(sealedEnd());
    pushSealed(estimatedRows(summary), !isExact(summary));
  }
  countLostBlocks();
  countTail();
  m_headRows = m_text.summary(m_text.firstBlock()).startColumn % m_columns == 0 ? 0 : 1;
  m_end = m_text.end();
}

// Takes the rows of blocks that are gone out of the count. Their places in the tree go when they are as many as the
// others, so that trimming costs amortized constant time.
void RowIndex::dropTrimmed() {
  const std::size_t first = m_text.firstBlock();
  if (first == m_trimmedUpTo) return;
  ++m_generation;
  if (first >= sealedEnd()) return restart();
  for (; m_trimmedUpTo < first; ++m_trimmedUpTo) {
    addToSealed(m_trimmedUpTo, -rowsOf(m_trimmedUpTo));
    m_estimated[m_trimmedUpTo - m_firstBlock] = false;
  }
  if (first - m_firstBlock < m_sums.size() / 2) return;
  std::vector<RowNumber> rows;
  for (std::size_t block = first; block < sealedEnd(); ++block) {
    rows.push_back(rowsOf(block));
  }
  const std::vector<bool> estimated(m_estimated.begin() + static_cast<std::ptrdiff_t>(first - m_firstBlock),
                                    m_estimated.end());
  m_firstBlock = first;
  m_sums.clear();
  m_estimated.clear();
  m_sealedRows = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    pushSealed(rows[i], estimated[i]);
  }
}

// Whether the summary alone gives the exact number of rows.
bool RowIndex::isExact(const BlockSummary& block) const {
  if (block.hasBounds()) {
    return block.longestLine <= m_columns && rowsUpTo(block.continuedEndColumn, m_columns) <= 1 &&
           block.startColumn == 0;
  }
  return block.longestLine <= m_columns || block.lineStarts <= 1;
}

// Exact if `isExact`, otherwise an estimate.
RowNumber RowIndex::estimatedRows(const BlockSummary& block) const {
  RowNumber rows = 0;
  if (block.continuesALine)
    rows += rowsUpTo(block.continuedEndColumn, m_columns) - rowsUpTo(block.startColumn, m_columns);
  const auto lines = static_cast<RowNumber>(block.lineStarts);
  if (block.longestLine <= m_columns) return rows + lines;
  if (lines == 1) return rows + rowsUpTo(block.longestLine, m_columns);
  return rows + std::max<RowNumber>(lines, lines / 2 + static_cast<RowNumber>(block.size / m_columns));
}

void RowIndex::pushSealed(RowNumber rows, bool estimated) {
  m_sealedRows += rows;
  // A node of a Fenwick tree is the sum of its own block and of its children.
  const std::size_t node = m_sums.size() + 1;
  RowNumber sum = rows;
  for (std::size_t child = 1; child < (node & -node); child *= 2) {
    sum += m_sums[node - child - 1];
  }
  m_sums.push_back(sum);
  m_estimated.push_back(estimated);
}

void RowIndex::countTail() {
  const std::size_t first = sealedEnd();
  m_tail.resize(m_text.endBlock() - first);
  m_tailRows = 0;
  for (std::size_t i = 0; i < m_tail.size(); ++i) {
    TailBlock& known = m_tail[i];
    const std::shared_ptr<const LineBlock> block = m_text.block(first + i);
    if (known.block != block) forgetLayout(first + i);
    if (known.block != block || known.size != block->size()) {
      known = {.block = block, .size = block->size(), .rows = block->rows(m_columns)};
    }
    m_tailRows += known.rows;
  }
}

// The rows before a block, from the first that the tree and the tail count.
RowNumber RowIndex::rowsBefore(std::size_t block) const {
  RowNumber rows = 0;
  for (std::size_t node = std::min(block, sealedEnd()) - m_firstBlock; node != 0; node &= node - 1) {
    rows += m_sums[node - 1];
  }
  for (std::size_t i = sealedEnd(); i < block; ++i) {
    rows += m_tail[i - sealedEnd()].rows;
  }
  return rows;
}

// The stable block that holds row `row` < m_sealedRows.
std::size_t RowIndex::sealedBlockAt(RowNumber row, RowNumber& rowsBefore) const {
  std::size_t block = 0;
  rowsBefore = 0;
  for (std::size_t step = std::bit_floor(m_sums.size()); step != 0; step /= 2) {
    if (block + step <= m_sums.size() && rowsBefore + m_sums[block + step - 1] <= row) {
      block += step;
      rowsBefore += m_sums[block - 1];
    }
  }
  return m_firstBlock + block;
}

// The block that holds row `row` >= m_sealedRows; the last one for what lies behind.
std::size_t RowIndex::tailBlockAt(RowNumber row, RowNumber& rowsBefore) const {
  rowsBefore = m_sealedRows;
  std::size_t i = 0;
  for (; i + 1 < m_tail.size() && rowsBefore + m_tail[i].rows <= row; ++i) {
    rowsBefore += m_tail[i].rows;
  }
  return sealedEnd() + i;
}

void RowIndex::addToSealed(std::size_t block, RowNumber difference) {
  m_sealedRows += difference;
  for (std::size_t node = block - m_firstBlock + 1; node <= m_sums.size(); node += node & -node) {
    m_sums[node - 1] += difference;
  }
}

void RowIndex::makeExact(std::size_t block) {
  m_estimated[block - m_firstBlock] = false;
  const RowNumber difference = m_text.block(block)->rows(m_columns) - rowsOf(block);
  if (difference == 0) return;
  addToSealed(block, difference);
  ++m_generation;
}

// Blocks whose text was lost have another layout than when they were counted.
void RowIndex::countLostBlocks() {
  for (; m_lostSeen < m_text.lostBlocks().size(); ++m_lostSeen) {
    const std::size_t block = m_text.lostBlocks()[m_lostSeen];
    if (block < m_trimmedUpTo || block >= sealedEnd()) continue;
    makeExact(block);
    forgetLayout(block);
  }
}

bool RowIndex::refine(std::size_t blocks) {
  for (m_refineFrom = std::max(m_refineFrom, m_trimmedUpTo); m_refineFrom < sealedEnd(); ++m_refineFrom) {
    if (!m_estimated[m_refineFrom - m_firstBlock]) continue;
    if (blocks-- == 0) return true;
    makeExact(m_refineFrom);
  }
  return false;
}

void RowIndex::forgetLayout(std::size_t block) {
  for (BlockLayout& layout : m_layouts) {
    if (layout.block == block) layout.block = SIZE_MAX;
  }
}

const RowIndex::BlockLayout& RowIndex::layoutOf(std::size_t block, const LineBlock& source) {
  for (const BlockLayout& layout : m_layouts) {
    if (layout.block == block && layout.size == source.size()) return layout;
  }
  BlockLayout& layout = m_layouts[m_nextLayout];
  m_nextLayout = (m_nextLayout + 1) % m_layouts.size();
  layout.block = block;
  layout.size = source.size();
  layout.rowsBefore.clear();
  layout.rowsBefore.reserve(source.fragmentCount() + 1);
  RowNumber rows = 0;
  for (std::size_t i = 0; i < source.fragmentCount(); ++i) {
    layout.rowsBefore.push_back(static_cast<std::uint32_t>(rows));
    rows += source.rows(source.fragment(i), m_columns);
  }
  layout.rowsBefore.push_back(static_cast<std::uint32_t>(rows));
  return layout;
}

// The end of row `row` of a fragment; -1 is the one that began before it.
TextPosition RowIndex::endOfRow(std::size_t block, const LineBlock& source, std::size_t fragment, RowNumber row) const {
  LineBlock::Fragment part = source.fragment(fragment);
  if (row + 1 < source.rows(part, m_columns)) return source.start() + source.rowBegin(part, m_columns, row + 1).offset;
  TextPosition end = source.start() + part.contentEnd;
  // The last row of a block may continue in those that follow.
  bool continues = fragment + 1 == source.fragmentCount() && part.contentEnd == part.end;
  for (std::size_t next = block + 1; continues && next < m_text.endBlock(); ++next) {
    if (!m_text.summary(next).continuesALine) break;
    const std::shared_ptr<const LineBlock> follower = m_text.block(next);
    part = follower->fragment(0);
    end = follower->start() + follower->rowBegin(part, m_columns, 0).offset;
    continues = follower->fragmentCount() == 1 && part.contentEnd == part.end && follower->rows(part, m_columns) == 0;
  }
  return end;
}

RowIndex::Row RowIndex::locate(RowNumber row) {
  row = std::clamp<RowNumber>(row, 0, std::max<RowNumber>(rowCount() - 1, 0));
  if (row < m_headRows) {
    const std::size_t first = m_text.firstBlock();
    const std::shared_ptr<const LineBlock> block = m_text.block(first);
    const LineColumn column = block->summary().startColumn;
    return {.begin = block->start(),
            .end = endOfRow(first, *block, 0, -1),
            .firstColumn = column - column % m_columns,
            .beginColumn = column};
  }
  RowNumber before = 0;
  std::size_t index = 0;
  for (;;) {
    const RowNumber counted = row - m_headRows;
    const bool isSealed = counted < m_sealedRows;
    index = isSealed ? sealedBlockAt(counted, before) : tailBlockAt(counted, before);
    if (!isSealed || !m_estimated[index - m_firstBlock]) break;
    makeExact(index);
    row = std::clamp<RowNumber>(row, 0, std::max<RowNumber>(rowCount() - 1, 0));
  }
  const std::shared_ptr<const LineBlock> held = m_text.block(index);
  const LineBlock& block = *held;
  const BlockLayout& layout = layoutOf(index, block);
  const auto rowInBlock = static_cast<std::uint32_t>(row - m_headRows - before);
  if (rowInBlock >= layout.rowsBefore.back()) {
    // The empty last line has moved to a new block since the last sync, or there is no line.
    return {.begin = block.end(), .end = block.end(), .firstColumn = 0, .beginColumn = 0};
  }
  const auto after = std::upper_bound(layout.rowsBefore.begin(), layout.rowsBefore.end(), rowInBlock);
  const auto fragmentIndex = static_cast<std::size_t>(after - layout.rowsBefore.begin()) - 1;
  const LineBlock::Fragment fragment = block.fragment(fragmentIndex);
  const RowNumber rowInFragment = rowInBlock - layout.rowsBefore[fragmentIndex];
  const LineBlock::Place begin = block.rowBegin(fragment, m_columns, rowInFragment);
  return {.begin = block.start() + begin.offset,
          .end = endOfRow(index, block, fragmentIndex, rowInFragment),
          .firstColumn = static_cast<LineColumn>(rowsUpTo(fragment.startColumn, m_columns) + rowInFragment) * m_columns,
          .beginColumn = begin.column};
}

RowNumber RowIndex::rowAt(TextPosition position) {
  if (position >= m_end) return numberOfRow(sealedEnd(), m_tailRows - 1);
  position = std::max(position, m_text.begin());
  const std::size_t index = m_text.blockAt(position);
  const std::shared_ptr<const LineBlock> block = m_text.block(index);
  if (index < sealedEnd() && m_estimated[index - m_firstBlock]) makeExact(index);
  const auto offset = static_cast<std::size_t>(position - block->start());
  const std::size_t fragment = block->fragmentAt(offset);
  const RowNumber rowsBefore = layoutOf(index, *block).rowsBefore[fragment];
  return numberOfRow(index, rowsBefore + block->rowAt(block->fragment(fragment), m_columns, offset));
}

RowNumber RowIndex::roughRowAt(TextPosition position) const {
  const RowNumber last = std::max<RowNumber>(rowCount() - 1, 0);
  if (position >= m_end) return last;
  position = std::max(position, m_text.begin());
  const std::size_t block = std::min(m_text.blockAt(position), sealedEnd() + m_tail.size() - 1);
  const BlockSummary& about = m_text.summary(block);
  const double part = static_cast<double>(position - about.start) / static_cast<double>(std::max(about.size, 1U));
  const RowNumber before = m_headRows + rowsBefore(block);
  return std::min(before + static_cast<RowNumber>(part * static_cast<double>(rowsOf(block))), last);
}

// The number of row `rowInBlock` of a block; -1 is the row before, which starts in an earlier block. That block is made
// exact too, or `locate` would do so and then find a different row under this number.
RowNumber RowIndex::numberOfRow(std::size_t block, RowNumber rowInBlock) {
  RowNumber row = rowsBefore(block) + rowInBlock;
  while (rowInBlock < 0 && row >= 0 && row < m_sealedRows) {
    RowNumber before = 0;
    const std::size_t holder = sealedBlockAt(row, before);
    if (!m_estimated[holder - m_firstBlock]) break;
    makeExact(holder);
    row = rowsBefore(block) + rowInBlock;
  }
  return std::max<RowNumber>(m_headRows + row, 0);
}

}  // namespace zolt
