#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "history/BlockSequence.h"
#include "history/BlockStyles.h"
#include "history/LineBlock.h"
#include "text/TextAttributes.h"

namespace zolt {

/// Tabs stop every 8 columns; every other byte takes one.
inline constexpr LineColumn kTabStop = 8;

/// The column after a tab at `column`.
constexpr LineColumn afterTab(LineColumn column) {
  return (column / kTabStop + 1) * kTabStop;
}

/// The state of laying out a text, at its end.
struct TextLayout {
  LineColumn column = 0;       ///< of the next byte
  std::uint64_t lineEnds = 0;  ///< so far
  bool endsInReturn = false;   ///< the last byte is a CR: a LF now belongs to the same line end
};

/// A block of a text storage: ASCII, with styles.
///
/// A line ends with LF, CR or CR LF. TextStorage alone appends to a block. Once it is sealed, any thread may read it.
class TextBlock : public LineBlock {
 public:
  /// The maximum number of bytes in a block. Offsets fit 16 bits with room to spare.
  static constexpr std::size_t capacity = 65280;

  struct StyleRun {
    std::uint16_t begin = 0;  ///< offset of its first byte; it ends where the next run begins
    std::uint16_t style = 0;  ///< number in `styles()`
  };

  /// An empty block at `start`, which is column `startColumn` of line number `firstLine`.
  TextBlock(TextPosition start, std::uint64_t firstLine, LineColumn startColumn);

  std::string_view text() const override { return {m_bytes.get(), size()}; }
  /// Offsets where lines start, in order. The last may equal `size()`: a line that is still empty.
  const std::vector<std::uint16_t>& lineStarts() const { return m_lineStarts; }
  std::size_t lineStart(std::size_t index) const override { return m_lineStarts[index]; }
  /// The start column is 0 if and only if the line starts here.
  Fragment fragment(std::size_t index) const override;
  std::size_t fragmentAt(std::size_t offset) const override;

  using LineBlock::rows;
  RowNumber rows(const Fragment& fragment, LineColumn columns) const override;
  Place rowBegin(const Fragment& fragment, LineColumn columns, RowNumber row) const override;
  RowNumber rowAt(const Fragment& fragment, LineColumn columns, std::size_t offset) const override;

  /// Whether columns must be found by walking the text, because it has tabs.
  bool hasTabs() const { return m_summary.rule == ColumnRule::Tabs; }
  /// The column after the fragment's content.
  LineColumn endColumn(const Fragment& fragment) const { return columnAt(fragment, fragment.contentEnd); }
  /// The column of `offset`, which lies in the fragment; for a line end, the column after the content.
  LineColumn columnAt(const Fragment& fragment, std::size_t offset) const;
  /// The first place in the fragment's content whose column is not less than `column`; its end when there is none.
  Place placeAt(const Fragment& fragment, LineColumn column) const;

  /// The column after the content of a first fragment that continues a line.
  LineColumn continuedEndColumn() const { return m_summary.continuedEndColumn; }
  /// In columns, the longest of the lines that start in this block, as far as they lie in it.
  LineColumn longestLine() const { return m_summary.longestLine; }

  std::size_t runCount() const override { return m_runs.size(); }
  std::size_t runBegin(std::size_t run) const override { return m_runs[run].begin; }
  const std::vector<StyleRun>& styleRuns() const { return m_runs; }
  const BlockStyles& styles() const { return m_styles; }
  /// The index of the style run that holds `offset` < size().
  std::size_t styleRunAt(std::size_t offset) const;

  /// A copy of the block as it is now, for other threads.
  std::shared_ptr<const TextBlock> copy() const;

  std::string encoded() const override;
  /// Restores the sealed block with this summary from what `encoded()` returned; null when the two do not match.
  static std::shared_ptr<const LineBlock> decoded(const BlockSummary& summary, std::string_view bytes);
  /// A replacement for a sealed block whose text was lost.
  static std::shared_ptr<const LineBlock> lost(const BlockSummary& summary);
  static constexpr BlockKind kind{.decoded = decoded, .lost = lost};
  std::size_t memoryBytes() const override;

 private:
  friend class TextStorage;

  std::size_t room() const { return size() < capacity ? capacity - size() : 0; }
  void append(std::string_view piece, TextLayout& layout);
  void layOut(std::string_view piece, TextLayout& layout);
  void addLineStart(std::size_t offset);
  void seal(const TextLayout& layout);
  void appendRun(std::size_t begin, std::uint16_t style);
  void noteLineLength(LineColumn columns);

  std::unique_ptr<char[]> m_bytes;
  std::vector<std::uint16_t> m_lineStarts;
  std::vector<StyleRun> m_runs;
  BlockStyles m_styles;

  static_assert(capacity + 1 <= std::numeric_limits<std::uint16_t>::max());
};

}  // namespace zolt
