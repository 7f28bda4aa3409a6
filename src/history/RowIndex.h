#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "history/HistoryText.h"
#include "history/LineBlock.h"

namespace zolt {

/// Wraps the lines of a text at a number of columns and finds rows by number and by position.
///
/// A line fills one row for each `columns()` columns it has, and at least one; rows wrap at the character. A row is
/// found without laying out the blocks before it, however long the line.
///
/// Rows are counted from the first that the text still has: they shift when text is trimmed at the front. If that cuts
/// a row in two, its rest is the first row, and keeps its columns.
///
/// Counting the rows of a block whose lines wrap takes time, and its text may have to be decompressed, so the rows of
/// blocks that were never looked at may be estimated. `locate` makes the blocks that it meets exact; `refine` does the
/// rest gradually. Each correction, and each trimming, changes `generation()`; row numbers obtained earlier may then be
/// wrong. Not synchronised: one thread at a time.
class RowIndex {
 public:
  struct Row {
    TextPosition begin;          ///< the first character whose column lies in the row
    TextPosition end;            ///< after the last one, without the line end
    LineColumn firstColumn = 0;  ///< the row shows columns() columns of its line, from this one
    LineColumn beginColumn = 0;  ///< of `begin`; greater than firstColumn when a tab extends into the row
  };

  /// `text` must outlive the index.
  RowIndex(const HistoryText& text, std::int64_t columns);

  std::int64_t columns() const { return static_cast<std::int64_t>(m_columns); }
  /// Wraps at `columns`, at least 1, from now on. Takes a pass over the blocks, not over the text.
  void setColumns(std::int64_t columns);

  /// Takes in how the text has changed. Everything below is as of the last call, except that what was the last row may
  /// have become longer; any other change requires a call.
  void sync();

  /// At least 1, unless the text has no line.
  RowNumber rowCount() const { return m_headRows + m_sealedRows + m_tailRows; }
  /// Row number `row`, clamped to 0 ... rowCount() - 1.
  Row locate(RowNumber row);
  /// The number of the row that shows `position`; the first or last row for what lies before or behind.
  RowNumber rowAt(TextPosition position);
  /// An approximation of `rowAt`, less than rowCount(), that does not look at text.
  RowNumber roughRowAt(TextPosition position) const;

  /// Incremented by each correction of an estimate and by each trimming.
  std::uint64_t generation() const { return m_generation; }
  /// Makes up to `blocks` estimated blocks exact; false when none is left.
  bool refine(std::size_t blocks);

 private:
  /// The number of rows before each fragment of a block, and after the last.
  struct BlockLayout {
    std::size_t block = SIZE_MAX;
    std::size_t size = 0;  // of the block when it was laid out, since the log's last block grows
    std::vector<std::uint32_t> rowsBefore;
  };
  /// A block that may still change, and its rows.
  struct TailBlock {
    std::shared_ptr<const LineBlock> block;
    std::size_t size = 0;
    RowNumber rows = 0;
  };

  bool isExact(const BlockSummary& block) const;
  RowNumber estimatedRows(const BlockSummary& block) const;
  void restart();
  void dropTrimmed();
  void pushSealed(RowNumber rows, bool estimated);
  void countLostBlocks();
  void countTail();
  void makeExact(std::size_t block);
  const BlockLayout& layoutOf(std::size_t block, const LineBlock& source);
  void forgetLayout(std::size_t block);
  TextPosition endOfRow(std::size_t block, const LineBlock& source, std::size_t fragment, RowNumber row) const;

  std::size_t sealedEnd() const { return m_firstBlock + m_sums.size(); }
  RowNumber numberOfRow(std::size_t block, RowNumber rowInBlock);
  RowNumber rowsBefore(std::size_t block) const;
  RowNumber rowsOf(std::size_t block) const { return rowsBefore(block + 1) - rowsBefore(block); }
  std::size_t sealedBlockAt(RowNumber row, RowNumber& rowsBefore) const;
  std::size_t tailBlockAt(RowNumber row, RowNumber& rowsBefore) const;
  void addToSealed(std::size_t block, RowNumber difference);

  const HistoryText& m_text;
  LineColumn m_columns;
  std::size_t m_firstBlock = 0;   // whose rows come first in m_sums
  std::size_t m_trimmedUpTo = 0;  // blocks before this have no rows any more
  std::vector<RowNumber> m_sums;  // a Fenwick tree over the rows of every stable block
  std::vector<bool> m_estimated;  // by block, from m_firstBlock on
  RowNumber m_headRows = 0;       // 1 for the rest of a row that was cut in two
  RowNumber m_sealedRows = 0;
  std::vector<TailBlock> m_tail;
  RowNumber m_tailRows = 0;
  TextPosition m_end;  // of the text at the last sync
  std::uint64_t m_generation = 0;
  std::size_t m_lostSeen = 0;            // of the text's lost blocks
  std::size_t m_refineFrom = 0;          // blocks before this are exact
  std::array<BlockLayout, 8> m_layouts;  // a cache, replaced in turn
  std::size_t m_nextLayout = 0;
};

}  // namespace zolt
