#include "history/RowIndex.h"

#include <algorithm>
#include <bit>

namespace zolt {

RowIndex::RowIndex(const TextStorage& storage, std::int64_t columns)
    : m_storage(storage), m_columns(static_cast<LineColumn>(std::max<std::int64_t>(columns, 1))) {
  sync();
}

void RowIndex::setColumns(std::int64_t columns) {
  const auto wanted = static_cast<LineColumn>(std::max<std::int64_t>(columns, 1));
  if (wanted == m_columns) return;
  m_columns = wanted;
  m_sums.clear();
  m_estimated.clear();
  m_sealedRows = 0;
  m_refineFrom = 0;
  m_lostSeen = 0;
  for (BlockLayout& layout : m_layouts) {
    layout.block = SIZE_MAX;
  }
  ++m_generation;
  sync();
}

void RowIndex::sync() {
  const std::size_t sealed = m_storage.blockCount() - 1;
  while (m_sums.size() < sealed) {
    pushSealed(m_sums.size());
  }
  countLostBlocks();
  m_tailRows = exactRows(*m_storage.block(sealed));
  m_end = m_storage.end();
}

// Rows that start before `column`: one at each multiple of the width.
RowNumber RowIndex::rowsUpTo(LineColumn column) const {
  return static_cast<RowNumber>((column + m_columns - 1) / m_columns);
}

RowNumber RowIndex::fragmentRows(const TextBlock& block, const TextBlock::Fragment& fragment) const {
  const RowNumber rows = rowsUpTo(block.endColumn(fragment)) - rowsUpTo(fragment.startColumn);
  return fragment.startColumn == 0 ? std::max<RowNumber>(rows, 1) : rows;
}

RowNumber RowIndex::exactRows(const TextBlock& block) const {
  RowNumber rows = 0;
  if (block.continuesALine()) rows += rowsUpTo(block.continuedEndColumn()) - rowsUpTo(block.fragment(0).startColumn);
  if (block.longestLine() <= m_columns) return rows + std::ssize(block.lineStarts());
  for (std::size_t i = block.continuesALine() ? 1 : 0; i < block.fragmentCount(); ++i) {
    rows += fragmentRows(block, block.fragment(i));
  }
  return rows;
}

// Whether the summary alone gives the exact number of rows.
bool RowIndex::isExact(const TextBlock::Summary& block) const {
  return block.longestLine <= m_columns || block.lineStarts <= 1;
}

// Exact if `isExact`, otherwise an estimate.
RowNumber RowIndex::estimatedRows(const TextBlock::Summary& block) const {
  RowNumber rows = 0;
  if (block.continuesALine()) rows += rowsUpTo(block.continuedEndColumn) - rowsUpTo(block.startColumn);
  const auto lines = static_cast<RowNumber>(block.lineStarts);
  if (block.longestLine <= m_columns) return rows + lines;
  if (lines == 1) return rows + rowsUpTo(block.longestLine);
  return rows + std::max<RowNumber>(lines, lines / 2 + static_cast<RowNumber>(block.size / m_columns));
}

void RowIndex::pushSealed(std::size_t block) {
  const TextBlock::Summary& summary = m_storage.summary(block);
  const bool exact = isExact(summary);
  const RowNumber rows = estimatedRows(summary);
  const std::size_t index = m_sums.size();
  m_sealedRows += rows;
  // A node of a Fenwick tree is the sum of its own block and of its children.
  const std::size_t node = index + 1;
  RowNumber sum = rows;
  for (std::size_t child = 1; child < (node & -node); child *= 2) {
    sum += m_sums[node - child - 1];
  }
  m_sums.push_back(sum);
  m_estimated.push_back(!exact);
}

RowNumber RowIndex::sealedRowsBefore(std::size_t block) const {
  RowNumber rows = 0;
  for (std::size_t node = block; node != 0; node &= node - 1) {
    rows += m_sums[node - 1];
  }
  return rows;
}

// The sealed block that holds row `row` < m_sealedRows.
std::size_t RowIndex::sealedBlockAt(RowNumber row, RowNumber& rowsBefore) const {
  std::size_t block = 0;
  rowsBefore = 0;
  for (std::size_t step = std::bit_floor(m_sums.size()); step != 0; step /= 2) {
    if (block + step <= m_sums.size() && rowsBefore + m_sums[block + step - 1] <= row) {
      block += step;
      rowsBefore += m_sums[block - 1];
    }
  }
  return block;
}

void RowIndex::addToSealed(std::size_t block, RowNumber difference) {
  m_sealedRows += difference;
  for (std::size_t node = block + 1; node <= m_sums.size(); node += node & -node) {
    m_sums[node - 1] += difference;
  }
}

void RowIndex::makeExact(std::size_t block) {
  m_estimated[block] = false;
  const RowNumber difference = exactRows(*m_storage.block(block)) - sealedRows(block);
  if (difference == 0) return;
  addToSealed(block, difference);
  ++m_generation;
}

// Blocks whose text was lost have another layout than when they were counted.
void RowIndex::countLostBlocks() {
  for (; m_lostSeen < m_storage.lostBlocks().size(); ++m_lostSeen) {
    const std::size_t block = m_storage.lostBlocks()[m_lostSeen];
    if (block >= m_sums.size()) continue;
    makeExact(block);
    for (BlockLayout& layout : m_layouts) {
      if (layout.block == block) layout.block = SIZE_MAX;
    }
  }
}

bool RowIndex::refine(std::size_t blocks) {
  while (m_refineFrom < m_estimated.size()) {
    if (m_estimated[m_refineFrom]) {
      if (blocks-- == 0) return true;
      makeExact(m_refineFrom);
    }
    ++m_refineFrom;
  }
  return false;
}

const RowIndex::BlockLayout& RowIndex::layoutOf(std::size_t block) {
  const std::shared_ptr<const TextBlock> held = m_storage.block(block);
  const TextBlock& source = *held;
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
    rows += fragmentRows(source, source.fragment(i));
  }
  layout.rowsBefore.push_back(static_cast<std::uint32_t>(rows));
  return layout;
}

RowIndex::Row RowIndex::locate(RowNumber row) {
  row = std::clamp<RowNumber>(row, 0, rowCount() - 1);
  std::size_t index = m_sums.size();
  RowNumber before = m_sealedRows;
  while (row < m_sealedRows) {
    index = sealedBlockAt(row, before);
    if (!m_estimated[index]) break;
    makeExact(index);
    index = m_sums.size();
    before = m_sealedRows;
    row = std::min(row, rowCount() - 1);
  }
  const std::shared_ptr<const TextBlock> held = m_storage.block(index);
  const TextBlock& block = *held;
  const BlockLayout& layout = layoutOf(index);
  const auto rowInBlock = static_cast<std::uint32_t>(row - before);
  if (rowInBlock >= layout.rowsBefore.back()) {
    // The empty last line has moved to a new block since the last sync.
    return {.begin = block.end(), .end = block.end(), .firstColumn = 0, .beginColumn = 0};
  }
  const auto after = std::upper_bound(layout.rowsBefore.begin(), layout.rowsBefore.end(), rowInBlock);
  const auto fragmentIndex = static_cast<std::size_t>(after - layout.rowsBefore.begin()) - 1;
  const TextBlock::Fragment fragment = block.fragment(fragmentIndex);

  Row result;
  const auto rowInFragment = static_cast<LineColumn>(rowInBlock - layout.rowsBefore[fragmentIndex]);
  result.firstColumn = (static_cast<LineColumn>(rowsUpTo(fragment.startColumn)) + rowInFragment) * m_columns;
  const TextBlock::Place begin = block.placeAt(fragment, result.firstColumn);
  result.begin = block.start() + begin.offset;
  result.beginColumn = begin.column;
  const LineColumn limit = result.firstColumn + m_columns;
  result.end = block.start() + block.placeAt(fragment, limit).offset;
  // The row may continue in the blocks that follow.
  bool continues = fragmentIndex + 1 == block.fragmentCount() && fragment.contentEnd == fragment.end;
  for (std::size_t next = index + 1; continues && next < m_storage.blockCount(); ++next) {
    if (!m_storage.summary(next).continuesALine()) break;
    const std::shared_ptr<const TextBlock> heldNext = m_storage.block(next);
    const TextBlock& follower = *heldNext;
    const TextBlock::Fragment continued = follower.fragment(0);
    if (continued.startColumn >= limit) break;
    result.end = follower.start() + follower.placeAt(continued, limit).offset;
    continues = follower.fragmentCount() == 1 && continued.contentEnd == continued.end;
  }
  return result;
}

RowNumber RowIndex::rowAt(TextPosition position) {
  if (position >= m_end) return numberOfRow(m_sums.size(), m_tailRows - 1);
  const std::size_t index = m_storage.blockAt(position);
  const std::shared_ptr<const TextBlock> held = m_storage.block(index);
  const TextBlock& block = *held;
  if (index < m_sums.size() && m_estimated[index]) makeExact(index);
  const auto offset = static_cast<std::size_t>(position - block.start());
  const std::size_t fragmentIndex = block.fragmentAt(offset);
  const TextBlock::Fragment fragment = block.fragment(fragmentIndex);
  const BlockLayout& layout = layoutOf(index);
  const RowNumber rowsInFragment = layout.rowsBefore[fragmentIndex + 1] - layout.rowsBefore[fragmentIndex];
  // Rows that start at or before the column of the position. The end of a line that exactly fills its last row starts
  // no further row.
  const RowNumber started =
      std::min(rowsUpTo(block.columnAt(fragment, offset) + 1) - rowsUpTo(fragment.startColumn), rowsInFragment);
  return numberOfRow(index, layout.rowsBefore[fragmentIndex] + started - 1);
}

RowNumber RowIndex::roughRowAt(TextPosition position) const {
  if (position >= m_end) return rowCount() - 1;
  const std::size_t block = m_storage.blockAt(position);
  const TextBlock::Summary& about = m_storage.summary(block);
  const RowNumber before = block < m_sums.size() ? sealedRowsBefore(block) : m_sealedRows;
  const RowNumber rows = block < m_sums.size() ? sealedRows(block) : m_tailRows;
  const double part = static_cast<double>(position - about.start) / static_cast<double>(std::max(about.size, 1U));
  return std::min(before + static_cast<RowNumber>(part * static_cast<double>(rows)), rowCount() - 1);
}

// The number of row `rowInBlock` of a block; -1 is the row before, which starts in an earlier block. That block is made
// exact too, or `locate` would do so and then find a different row under this number.
RowNumber RowIndex::numberOfRow(std::size_t block, RowNumber rowInBlock) {
  RowNumber row = sealedRowsBefore(block) + rowInBlock;
  while (rowInBlock < 0) {
    RowNumber before = 0;
    const std::size_t holder = sealedBlockAt(row, before);
    if (!m_estimated[holder]) break;
    makeExact(holder);
    row = sealedRowsBefore(block) + rowInBlock;
  }
  return row;
}

}  // namespace zolt
