#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "history/BlockStore.h"
#include "history/BlockStyles.h"
#include "text/TextAttributes.h"
#include "text/TextPosition.h"

namespace zolt {

/// A column of a line that is not wrapped, from 0. Tabs stop every 8 columns; every other byte takes one.
using LineColumn = std::uint64_t;

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

/// A block of a text storage, of bounded size, with all that is needed to lay it out and paint it on its own.
///
/// Lines may start before a block and continue after it. The part of a line within one block is a fragment. TextStorage
/// alone appends to a block. Once it is sealed, any thread may read it.
class TextBlock : public SealedBlock {
 public:
  /// The maximum number of bytes in a block. Offsets fit 16 bits with room to spare.
  static constexpr std::size_t capacity = 65280;

  /// What is known about a block without its text.
  struct Summary {
    TextPosition start;
    std::uint64_t firstLine = 0;        ///< the number of the line that the first byte belongs to
    LineColumn startColumn = 0;         ///< of the first byte in its line
    LineColumn continuedEndColumn = 0;  ///< the column after the content of a first fragment that continues a line
    LineColumn longestLine = 0;         ///< in columns, of the lines that start here, as far as they lie in the block
    std::uint32_t size = 0;             ///< bytes
    std::uint32_t lineStarts = 0;       ///< number of lines that start here
    bool hasTabs = false;

    TextPosition end() const { return start + size; }
    bool continuesALine() const { return startColumn != 0; }
    friend bool operator==(const Summary&, const Summary&) = default;
  };

  struct Fragment {
    std::size_t begin = 0;       ///< offset of its first byte
    std::size_t end = 0;         ///< offset after its last byte, a line end included
    std::size_t contentEnd = 0;  ///< as `end`, without the line end (LF, CR or CR LF)
    LineColumn startColumn = 0;  ///< of its first byte; 0 if and only if the line starts here
  };

  struct StyleRun {
    std::uint16_t begin = 0;  ///< offset of its first byte; it ends where the next run begins
    std::uint16_t style = 0;  ///< number in `styles()`
  };

  /// An empty block at `start`, which is column `startColumn` of line number `firstLine`.
  TextBlock(TextPosition start, std::uint64_t firstLine, LineColumn startColumn);

  const Summary& summary() const { return m_summary; }
  TextPosition start() const { return m_summary.start; }
  TextPosition end() const { return m_summary.end(); }
  std::size_t size() const { return m_summary.size; }
  std::string_view text() const { return {m_bytes.get(), size()}; }

  /// The number of the line that the first byte belongs to.
  std::uint64_t firstLine() const { return m_summary.firstLine; }
  /// Offsets where lines start, in order. The last may equal `size()`: a line that is still empty.
  const std::vector<std::uint16_t>& lineStarts() const { return m_lineStarts; }

  /// Whether the first fragment continues a line that started in an earlier block.
  bool continuesALine() const { return m_summary.continuesALine(); }
  std::size_t fragmentCount() const { return m_lineStarts.size() + (continuesALine() ? 1 : 0); }
  Fragment fragment(std::size_t index) const;
  /// The index of the fragment that contains `offset`; the end belongs to the last one.
  std::size_t fragmentAt(std::size_t offset) const;

  /// Whether columns must be found by walking the text, because it has tabs.
  bool hasTabs() const { return m_summary.hasTabs; }
  /// The column after the fragment's content.
  LineColumn endColumn(const Fragment& fragment) const { return columnAt(fragment, fragment.contentEnd); }
  /// The column of `offset`, which lies in the fragment; for a line end, the column after the content.
  LineColumn columnAt(const Fragment& fragment, std::size_t offset) const;
  struct Place {
    std::size_t offset = 0;
    LineColumn column = 0;
  };
  /// The first place in the fragment's content whose column is not less than `column`; its end when there is none.
  Place placeAt(const Fragment& fragment, LineColumn column) const;

  /// The column after the content of a first fragment that continues a line.
  LineColumn continuedEndColumn() const { return m_summary.continuedEndColumn; }
  /// In columns, the longest of the lines that start in this block, as far as they lie in it.
  LineColumn longestLine() const { return m_summary.longestLine; }

  const std::vector<StyleRun>& styleRuns() const { return m_runs; }
  const BlockStyles& styles() const { return m_styles; }
  /// The index of the style run that holds `offset` < size().
  std::size_t styleRunAt(std::size_t offset) const;

  /// A copy of the block as it is now, for other threads.
  std::shared_ptr<const TextBlock> copy() const;

  std::string encoded() const override;
  /// Restores the sealed block with this summary from what `encoded()` returned; null when the two do not match.
  static std::shared_ptr<const TextBlock> decoded(const Summary& summary, std::string_view bytes);
  /// A replacement for a sealed block whose text was lost: `notice` and blanks, with the same number of bytes and line
  /// ends. `endColumn` is the column where the next block begins.
  static std::shared_ptr<const TextBlock> lost(const Summary& summary, std::uint64_t lineEnds, LineColumn endColumn,
                                               std::string_view notice);
  std::size_t memoryBytes() const override;

 private:
  friend class TextStorage;

  std::size_t room() const { return size() < capacity ? capacity - size() : 0; }
  void append(std::string_view piece, TextLayout& layout);
  void layOut(std::string_view piece, TextLayout& layout);
  void addLineStart(std::size_t offset);
  void seal();
  void appendRun(std::size_t begin, std::uint16_t style);
  void noteLineLength(LineColumn columns);

  Summary m_summary;
  std::unique_ptr<char[]> m_bytes;
  std::vector<std::uint16_t> m_lineStarts;
  std::vector<StyleRun> m_runs;
  BlockStyles m_styles;

  static_assert(capacity + 1 <= std::numeric_limits<std::uint16_t>::max());
};

}  // namespace zolt
