#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "history/TextStorage.h"

namespace zolt {

/// A row of wrapped text, counted from the top of the storage.
using RowNumber = std::int64_t;

/// Wraps the lines of a text storage at a number of columns and finds rows by number and by position.
///
/// A line fills one row for each `columns()` columns it has, and at least one; rows break at the character. As columns
/// do not depend on the width, a row is found without laying out what stands before it, in a line of any length.
///
/// Counting the rows of a block whose lines wrap costs time, and its text may have to be fetched, so blocks that nobody
/// has looked at may be counted by an estimate. `locate` counts exactly what it passes through; `refine` does the rest
/// bit by bit. Each correction changes `generation()`, and row numbers from before it may be off. Not synchronised: one
/// thread at a time.
class RowIndex {
 public:
  struct Row {
    TextPosition begin = 0;      ///< the first character whose column is in the row
    TextPosition end = 0;        ///< after the last, the line end not included
    LineColumn firstColumn = 0;  ///< the row shows this column of its line and the columns() - 1 after it
    LineColumn beginColumn = 0;  ///< of `begin`; greater than firstColumn where a tab reaches over the row's start
  };

  /// `storage` must outlive the index.
  RowIndex(const TextStorage& storage, std::int64_t columns);

  std::int64_t columns() const { return static_cast<std::int64_t>(m_columns); }
  /// Wraps at `columns`, 1 or more, from now on: a pass over the blocks, not over the text.
  void setColumns(std::int64_t columns);

  /// Takes over what was appended to the storage; everything below is as of the last call, but that the last row then
  /// may end later now.
  void sync();

  /// At least 1.
  RowNumber rowCount() const { return m_sealedRows + m_tailRows; }
  /// The row with number `row`, from 0 to rowCount() (not included); a number outside is moved to the nearest row.
  Row locate(RowNumber row);
  /// The number of the row that shows `position`; the last row for the end and whatever lies beyond.
  RowNumber rowAt(TextPosition position);
  /// About that number, from 0 to rowCount() (not included), without looking at text.
  RowNumber roughRowAt(TextPosition position) const;

  /// Grows with each correction of an estimate.
  std::uint64_t generation() const { return m_generation; }
  /// Counts up to `blocks` estimated blocks exactly; false when none is left.
  bool refine(std::size_t blocks);

 private:
  /// Rows before each fragment of one block, and after the last.
  struct BlockLayout {
    std::size_t block = SIZE_MAX;
    std::size_t size = 0;  // of the block when it was laid out: the last block grows
    std::vector<std::uint32_t> rowsBefore;
  };

  RowNumber rowsUpTo(LineColumn column) const;
  RowNumber fragmentRows(const TextBlock& block, const TextBlock::Fragment& fragment) const;
  RowNumber exactRows(const TextBlock& block) const;
  bool isExactFrom(const TextBlock::Summary& block) const;
  RowNumber rowsFrom(const TextBlock::Summary& block) const;
  void pushSealed(std::size_t block);
  void makeExact(std::size_t block);
  void countLostBlocks();
  const BlockLayout& layoutOf(std::size_t block);

  RowNumber numberOfRow(std::size_t block, RowNumber rowInBlock);
  RowNumber sealedRowsBefore(std::size_t block) const;
  RowNumber sealedRows(std::size_t block) const { return sealedRowsBefore(block + 1) - sealedRowsBefore(block); }
  std::size_t sealedBlockAt(RowNumber row, RowNumber& rowsBefore) const;
  void addToSealed(std::size_t block, RowNumber difference);

  const TextStorage& m_storage;
  LineColumn m_columns;
  std::vector<RowNumber> m_sums;  // a Fenwick tree over the rows of every block but the last
  std::vector<bool> m_estimated;  // by block
  RowNumber m_sealedRows = 0;
  RowNumber m_tailRows = 1;
  TextPosition m_end = 0;  // of the storage at the last sync
  std::uint64_t m_generation = 0;
  std::size_t m_lostSeen = 0;            // of the storage's lost blocks
  std::size_t m_refineFrom = 0;          // blocks before this are exact
  std::array<BlockLayout, 8> m_layouts;  // the latest looked at, replaced in turn
  std::size_t m_nextLayout = 0;
};

}  // namespace zolt
