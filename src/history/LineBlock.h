#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "history/BlockStore.h"
#include "text/TextPosition.h"

namespace zolt {

/// A column of a line that is not wrapped, from 0.
using LineColumn = std::uint64_t;

/// A row of wrapped text, counted from some first row.
using RowNumber = std::int64_t;

/// Shown at the beginning of text that had to be dropped.
inline constexpr std::string_view kHistoryLostNotice = "[Zolt: this part of the history could not be kept]";

/// What the columns of a block's text depend on.
enum class ColumnRule : std::uint8_t {
  Bytes,       ///< one for each byte
  Tabs,        ///< one for each byte but tabs
  Characters,  ///< the width of each character; one without width joins the one before
  Clusters,    ///< the width of each grapheme cluster
};

/// What is known about a block without its text.
struct BlockSummary {
  TextPosition start;
  std::uint64_t firstLine = 0;        ///< the number of the line that the first byte belongs to
  LineColumn startColumn = 0;         ///< of the first byte in its line
  LineColumn continuedEndColumn = 0;  ///< the column after the content of a first fragment that continues a line
  LineColumn longestLine = 0;         ///< in columns, of the lines that start here, as far as they lie in the block
  std::uint32_t size = 0;             ///< bytes
  std::uint32_t lineStarts = 0;       ///< number of lines that start here
  std::uint32_t endColumn = 0;        ///< where the next block begins, at most UINT32_MAX; 0 until the block is sealed
  ColumnRule rule = ColumnRule::Bytes;
  bool continuesALine = false;  ///< the first byte belongs to a line that started in an earlier block
  bool endsALine = false;       ///< the next block starts a line; false until the block is sealed

  TextPosition end() const { return start + size; }
  std::size_t fragments() const { return lineStarts + (continuesALine ? 1U : 0U); }
  /// In a sealed block, the line ends that have to be there.
  std::size_t lineEnds() const { return fragments() - (endsALine || fragments() == 0 ? 0U : 1U); }
  /// Whether `continuedEndColumn` and `longestLine` are upper bounds, of one column for each byte.
  bool hasBounds() const { return rule >= ColumnRule::Characters; }

  friend bool operator==(const BlockSummary&, const BlockSummary&) = default;
};

/// A block of a history, of bounded size, with all that is needed to wrap its lines on its own.
///
/// Lines may start before a block and continue after it. The part of a line within one block is a fragment. Rows are
/// counted by the fragments in which they begin: a row that begins in a fragment may continue in the following block.
/// Once a block is sealed, any thread may read it.
class LineBlock : public SealedBlock {
 public:
  struct Fragment {
    std::size_t begin = 0;       ///< offset of its first byte
    std::size_t end = 0;         ///< offset after its last byte, a line end included
    std::size_t contentEnd = 0;  ///< as `end`, without the line end
    LineColumn startColumn = 0;  ///< of its first byte
    bool startsLine = true;      ///< false if the line started in an earlier block
  };

  struct Place {
    std::size_t offset = 0;
    LineColumn column = 0;
  };

  const BlockSummary& summary() const { return m_summary; }
  TextPosition start() const { return m_summary.start; }
  TextPosition end() const { return m_summary.end(); }
  std::size_t size() const { return m_summary.size; }
  /// The number of the line that the first byte belongs to.
  std::uint64_t firstLine() const { return m_summary.firstLine; }
  /// Whether the first fragment continues a line that started in an earlier block.
  bool continuesALine() const { return m_summary.continuesALine; }
  std::size_t fragmentCount() const { return m_summary.fragments(); }

  virtual std::string_view text() const = 0;
  /// The offset where line number `index` < summary().lineStarts of those that start here does so. The last may equal
  /// `size()` while the block grows: a line that is still empty.
  virtual std::size_t lineStart(std::size_t index) const = 0;
  virtual Fragment fragment(std::size_t index) const = 0;
  /// The index of the fragment that contains `offset`; the end belongs to the last one, of which there must be one.
  virtual std::size_t fragmentAt(std::size_t offset) const = 0;

  /// The rows of `columns` columns that begin in the fragment: at least 1 if its line does. A line has one for each
  /// multiple of `columns` among its columns.
  virtual RowNumber rows(const Fragment& fragment, LineColumn columns) const = 0;
  /// Where row `row` >= 0 of those begins; the end of the content if there are not so many. Greater than the row's
  /// first column when a tab extends into the row.
  virtual Place rowBegin(const Fragment& fragment, LineColumn columns, RowNumber row) const = 0;
  /// Which of those rows holds `offset`, which lies in the fragment; a line end belongs to the last one. -1 for the row
  /// that began before the fragment.
  virtual RowNumber rowAt(const Fragment& fragment, LineColumn columns, std::size_t offset) const = 0;

  /// The runs of text in one style; `runBegin` is the offset where run `run` < runCount() begins. Where there is text,
  /// there is a run.
  virtual std::size_t runCount() const = 0;
  virtual std::size_t runBegin(std::size_t run) const = 0;

  /// The rows that begin in the block.
  RowNumber rows(LineColumn columns) const;

 protected:
  explicit LineBlock(const BlockSummary& summary) : m_summary(summary) {}

  BlockSummary m_summary;
};

/// Rows that start before `column`: one at each multiple of the width.
constexpr RowNumber rowsUpTo(LineColumn column, LineColumn columns) {
  return static_cast<RowNumber>((column + columns - 1) / columns);
}

/// What a sealed block reads as when its text was lost: kHistoryLostNotice and blanks, with as many bytes and line ends
/// as it had.
std::string lostText(const BlockSummary& summary);

}  // namespace zolt
