#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "history/BlockSequence.h"
#include "history/HistoryBlock.h"
#include "history/LineBlock.h"
#include "vt/history/HistoryLine.h"

namespace zolt::vt {

/// Where a block of the scrollback begins.
struct BlockStart {
  TextPosition position{};
  std::uint64_t line = 0;       ///< the number of the line that the first byte belongs to
  LineColumn column = 0;        ///< of the first byte in its line
  bool continuesALine = false;  ///< whether that line started earlier

  friend bool operator==(const BlockStart&, const BlockStart&) = default;
};

/// Text at which a block of the scrollback is full. One row more always fits.
inline constexpr std::size_t kScrollbackBlockBytes = std::size_t{64} << 10;

/// The bytes of a block's parts in memory.
std::size_t memoryBytes(const HistoryBlock& block);

/// A block of the scrollback: UTF-8, with packed styles, links and marks. A line ends with LF; there is no line after
/// the last line end.
///
/// Rows are those of a screen: wide characters take two columns and wrap to the next row as a whole, and characters
/// without width join the one before. The columns of a line count a column that a wide character left blank, so that
/// every row begins at a multiple of the width. In text that is all ASCII, rows are found by arithmetic; otherwise by
/// walking through the fragment.
///
/// A line that continues from earlier blocks goes on at its column if all of it there was narrow. Otherwise its rows
/// begin anew at the block's start: the row before that is short, once per block of an endless line. Immutable: any
/// thread may read it.
class ScrollbackBlock : public LineBlock {
 public:
  /// `content` must not be changed any more.
  ScrollbackBlock(std::shared_ptr<const HistoryBlock> content, const BlockStart& start);

  const std::shared_ptr<const HistoryBlock>& content() const { return m_content; }
  static BlockStart startOf(const BlockSummary& summary);
  /// Where the next block begins.
  BlockStart following() const;

  std::string_view text() const override { return m_content->text; }
  std::size_t lineStart(std::size_t index) const override { return m_lineStarts[index]; }
  Fragment fragment(std::size_t index) const override;
  std::size_t fragmentAt(std::size_t offset) const override;

  using LineBlock::rows;
  RowNumber rows(const Fragment& fragment, LineColumn columns) const override;
  Place rowBegin(const Fragment& fragment, LineColumn columns, RowNumber row) const override;
  RowNumber rowAt(const Fragment& fragment, LineColumn columns, std::size_t offset) const override;

  std::size_t runCount() const override { return m_content->runs.size(); }
  std::size_t runBegin(std::size_t run) const override { return m_content->runs[run].begin; }
  Style styleOfRun(std::size_t run) const;

  std::string encoded() const override { return encodeHistoryBlock(*m_content); }
  std::size_t memoryBytes() const override;
  static std::shared_ptr<const LineBlock> decoded(const BlockSummary& summary, std::string_view bytes);
  static std::shared_ptr<const LineBlock> lost(const BlockSummary& summary);
  static constexpr BlockKind kind{.decoded = decoded, .lost = lost};

 private:
  bool isWalked() const { return m_summary.rule != ColumnRule::Bytes; }
  template <class OnRow>
  void walkRows(const Fragment& fragment, LineColumn columns, OnRow onRow) const;
  LineColumn columnAfter(const Fragment& fragment) const;

  std::shared_ptr<const HistoryBlock> m_content;
  std::vector<std::uint32_t> m_lineStarts;
  LineColumn m_nextColumn = 0;
};

}  // namespace zolt::vt
