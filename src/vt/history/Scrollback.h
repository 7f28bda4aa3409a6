#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "history/BlockSequence.h"
#include "history/HistoryBlock.h"
#include "vt/cells/CellTables.h"
#include "vt/cells/RowMark.h"
#include "vt/history/HistoryLine.h"
#include "vt/history/ScrollbackBlock.h"
#include "vt/history/ScrollbackView.h"

namespace zolt::vt {

/// The lines that scrolled off the screen: UTF-8 text with runs of styles and links, and marks, in blocks that a
/// BlockStore compresses. Appending plain output costs little more than copying its bytes.
///
/// Positions count bytes from the session's start; a line takes those of its text and one for its line end. They are
/// never given anew, nor are the numbers of lines and blocks, but for the text that was taken back from the end. One
/// thread at a time; others get a `view()`.
class Scrollback {
 public:
  explicit Scrollback(HistorySettings settings);

  /// Appends a row. `cells` are those up to its extent; if it `wraps`, the next row continues its line.
  void append(std::span<const Cell> cells, bool wraps, std::span<const RowMark> marks, const CellTables& tables);
  /// Append text with one set of attributes, and line ends, for the bulk path, whose lines were never on the screen.
  /// Appended text can be rolled back to an earlier `checkpoint` until anything else is called. To allow for that, no
  /// new block is started: the caller checks `isFull`.
  void appendText(std::string_view utf8, Cell likeCell, const CellTables& tables);
  void endLine(const CellTables& tables);
  bool isFull() const {
    return m_open.content->text.size() >= kScrollbackBlockBytes || m_open.content->packedStyles.size() >= kManyStyles ||
           m_linkBytes >= kManyLinkBytes;
  }
  /// Starts a new block if this one is full, or has no room for `styles` more styles.
  void startBlockIfFull(std::size_t styles);
  /// Whether a cell of the text to come holds a grapheme cluster. A change starts a new block.
  void setClusters(bool clusters) {
    if (m_open.content->clusters != clusters) changeClusters(clusters);
  }
  struct Checkpoint {
    std::size_t bytes = 0;
    std::size_t runs = 0;
    std::uint64_t lineEnds = 0;
    std::optional<std::uint64_t> runAttributes;
  };
  Checkpoint checkpoint() const;
  void rollBack(const Checkpoint& checkpoint);

  static constexpr std::uint64_t partBytes = 4096;

  /// Removes the last line and returns it, to be shown on the screen again. Returns nothing if it is longer than
  /// `maxBytes` or already in the store; at least the latest 64 KiB are not.
  std::optional<HistoryLine> takeLastLine(std::size_t maxBytes);
  /// Whether the screen's first row continues the last line.
  bool endsMidLine() const {
    const std::string& text = m_open.content->text;
    return text.empty() ? m_open.start.continuesALine : text.back() != '\n';
  }
  /// Trims everything.
  void clear();
  /// Where the text that is appended next will begin; its column is unknown, and 0.
  BlockStart next() const { return {.position = end(), .line = m_lineEnds, .continuesALine = endsMidLine()}; }
  /// Goes on from `start`, as if a history that ends there had been appended and trimmed. Only in a new scrollback.
  void startAt(const BlockStart& start);
  /// Puts the blocks of an earlier session (`storedBlocks`) before the text, without gaps between them, where
  /// `startAt` had the first byte to come. Only in a new scrollback. False, and nothing happens, if they do not fit
  /// there.
  bool adopt(std::vector<StoredBlock> blocks);
  /// From now on whole blocks are trimmed at the front, each time one is full, as long as this many lines remain. In a
  /// line that fills whole blocks, each `partBytes` count as a line. None: without limit, as at first.
  void setLimit(std::optional<std::uint64_t> lines);
  /// Must be called when IDs in the screen's tables have been reassigned.
  void forgetIds() {
    ++m_epoch;
    m_runAttributes.reset();
  }
  /// Ends the last line, so that the screen's first row no longer continues it.
  void endOpenLine(const CellTables& tables) {
    if (endsMidLine()) endLine(tables);
  }

  TextPosition begin() const { return firstStart().position; }
  TextPosition end() const { return m_open.start.position + m_open.content->text.size(); }
  /// The numbers of the first line, of which a part may be trimmed, and of the one after the last.
  std::uint64_t firstLine() const { return firstStart().line; }
  std::uint64_t endLine() const { return m_lineEnds + (endsMidLine() ? 1 : 0); }
  /// Including a first line of which a part is trimmed, and a last line that has not ended.
  std::uint64_t lineCount() const { return endLine() - firstLine(); }
  /// The scrollback as it is now. Costs little; the next change copies the open block, at most about 64 KiB.
  ScrollbackView view() const;
  /// Calls `take` with every line from the oldest on; a line that spans two blocks is passed in two parts. A block that
  /// was lost is represented by a notice.
  void forEachLine(const std::function<void(HistoryLine&&)>& take) const;

  std::size_t memoryBytes() const;
  /// Waits until all stored blocks are compressed.
  void waitForCompression() { m_blocks.waitUntilIdle(); }

 private:
  // Half of what 16-bit IDs can tell apart.
  static constexpr std::size_t kManyStyles = 32768;
  static constexpr std::size_t kManyLinkBytes = std::size_t{256} << 10;

  // A block that still changes. Where a view has its content, it is copied first.
  struct OpenBlock {
    std::shared_ptr<HistoryBlock> content;
    BlockStart start;
    mutable bool isShared = false;

    HistoryBlock& writable() {
      if (isShared) copyContent();
      return *content;
    }
    void copyContent();
  };

  // The ID that a style or a link has in the open block.
  struct BlockId {
    std::uint32_t epoch = 0;
    std::uint32_t id = 0;
  };

  void startRun(Cell cell, std::size_t begin, const CellTables& tables);
  void appendCells(std::span<const Cell> cells, const CellTables& tables);
  void startBlock();
  void openBlock(const BlockStart& start, bool clusters);
  void seal(const OpenBlock& block);
  void trim();
  void changeClusters(bool clusters);
  BlockStart firstStart() const;
  BlockStart startOf(std::size_t block) const;

  BlockSequence m_blocks;
  // Full, but not sealed yet so that its lines can be taken again.
  std::optional<OpenBlock> m_previous;
  OpenBlock m_open;
  std::optional<std::uint64_t> m_limit;
  std::uint64_t m_lineEnds = 0;  // since the session's start

  // By the IDs of cells. Entries of an earlier epoch are stale.
  std::vector<BlockId> m_styleIds;
  std::vector<BlockId> m_linkIds;
  std::uint32_t m_epoch = 1;
  std::size_t m_linkBytes = 0;                   // total size of link targets in the open block
  std::vector<char> m_scratch;                   // text of a row before it is appended
  std::optional<std::uint64_t> m_runAttributes;  // of the open run, without protection
};

}  // namespace zolt::vt
