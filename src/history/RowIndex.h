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
/// A line fills one row for each `columns()` columns it has, and at least one; rows wrap at the character. Since
/// columns do not depend on the width, a row is found without laying out the text before it, however long the line.
///
/// Counting the rows of a block whose lines wrap takes time, and its text may have to be decompressed, so the rows of
/// blocks that were never looked at may be estimated. `locate` makes the blocks that it meets exact; `refine` does the
/// rest gradually. Each correction changes `generation()`; row numbers obtained earlier may then be wrong. Not
/// synchronised: one thread at a time.
class RowIndex {
 public:
  struct Row {
    TextPosition begin;          ///< the first character whose column lies in the row
    TextPosition end;            ///< after the last one, without the line end
    LineColumn firstColumn = 0;  ///< the row shows columns() columns of its line, from this one
    LineColumn beginColumn = 0;  ///< of `begin`; greater than firstColumn when a tab extends into the row
  };

  /// `storage` must outlive the index.
  RowIndex(const TextStorage& storage, std::int64_t columns);

  std::int64_t columns() const { return static_cast<std::int64_t>(m_columns); }
  /// Wraps at `columns`, at least 1, from now on. Takes a pass over the blocks, not over the text.
  void setColumns(std::int64_t columns);

  /// Takes in what was appended to the storage. Everything below is as of the last call, except that what was the last
  /// row may have become longer.
  void sync();

  /// At least 1.
  RowNumber rowCount() const { return m_sealedRows + m_tailRows; }
  /// Row number `row`, clamped to 0 ... rowCount() - 1.
  Row locate(RowNumber row);
  /// The number of the row that shows `position`; the last row for the end and beyond.
  RowNumber rowAt(TextPosition position);
  /// An approximation of `rowAt`, less than rowCount(), that does not look at text.
  RowNumber roughRowAt(TextPosition position) const;

  /// Incremented by each correction of an estimate.
  std::uint64_t generation() const { return m_generation; }
  /// Makes up to `blocks` estimated blocks exact; false when none is left.
  bool refine(std::size_t blocks);

 private:
  /// The number of rows before each fragment of a block, and after the last.
  struct BlockLayout {
    std::size_t block = SIZE_MAX;
    std::size_t size = 0;  // of the block when it was laid out, since the last block grows
    std::vector<std::uint32_t> rowsBefore;
  };

  RowNumber rowsUpTo(LineColumn column) const;
  RowNumber fragmentRows(const TextBlock& block, const TextBlock::Fragment& fragment) const;
  RowNumber exactRows(const TextBlock& block) const;
  bool isExact(const TextBlock::Summary& block) const;
  RowNumber estimatedRows(const TextBlock::Summary& block) const;
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
  TextPosition m_end;  // of the storage at the last sync
  std::uint64_t m_generation = 0;
  std::size_t m_lostSeen = 0;            // of the storage's lost blocks
  std::size_t m_refineFrom = 0;          // blocks before this are exact
  std::array<BlockLayout, 8> m_layouts;  // a cache, replaced in turn
  std::size_t m_nextLayout = 0;
};

}  // namespace zolt
