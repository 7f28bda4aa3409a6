#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "history/BlockStore.h"
#include "history/TextBlock.h"
#include "history/TextSnapshot.h"
#include "text/AttributedString.h"

namespace zolt {

/// The text of a log: appended to, never changed, never shortened.
///
/// ASCII with LF, CR and TAB, one byte a character; a stored LF or CR ends a line, and a CR directly followed by a LF
/// ends one. There is always one line more than line ends: the last may be empty. Appending costs constant time a byte,
/// and looking up a position or a line logarithmic time, at any size. Full blocks go to a BlockStore, which keeps them
/// in little memory; a block whose text it had to give up reads as kHistoryLostNotice and blanks, in as many lines and
/// bytes as before, so that every position and line number stays as it is. Not synchronised: one thread at a time.
class TextStorage {
 public:
  explicit TextStorage(HistorySettings settings = {});

  /// Appends `string`, whose text is ASCII.
  void append(const AttributedString& string);

  TextPosition size() const { return m_open->end(); }
  bool empty() const { return size() == 0; }
  std::uint64_t lineCount() const { return m_layout.lineEnds + 1; }

  /// Blocks in order, at least one; only the last still grows.
  std::size_t blockCount() const { return m_sealed.size() + 1; }
  /// Block `index` < blockCount(), made again from the store where it is not at hand.
  std::shared_ptr<const TextBlock> block(std::size_t index) const;
  /// What is known of block `index` < blockCount() without that.
  const TextBlock::Summary& summary(std::size_t index) const;
  /// The blocks that were found to be lost, in the order of the finding: their layout is not as their summary says.
  const std::vector<std::size_t>& lostBlocks() const { return m_lost; }
  /// The block that holds `position`, at most `size()`; the end belongs to the last block.
  std::size_t blockAt(TextPosition position) const;

  /// Where line `line` < lineCount() starts.
  TextPosition lineStart(std::uint64_t line) const;
  /// The number of the line that `position` lies in; a line end belongs to the line that it ends.
  std::uint64_t lineAt(TextPosition position) const;
  /// Where line `line` ends, its line end not included.
  TextPosition lineEnd(std::uint64_t line) const;

  /// The bytes from `begin` to `end` (not included), as stored.
  std::string text(TextPosition begin, TextPosition end) const;
  /// The byte at `position` < size().
  char at(TextPosition position) const;

  using RunVisitor = std::function<void(TextPosition begin, std::string_view text, const TextAttributes& attributes)>;
  /// Visits the runs from `begin` to `end` (not included) in order, cut at block boundaries.
  void forEachRun(TextPosition begin, TextPosition end, const RunVisitor& visit) const;

  /// The blocks from `first` to `end` (not included, at most blockCount()), for other threads.
  TextSnapshot snapshot(std::size_t first, std::size_t end) const;

  /// An estimate of the memory in use, in bytes.
  std::size_t memoryBytes() const;
  BlockStore::Usage usage() const { return m_store.usage(); }
  /// Waits until the store has nothing left to compress or to move.
  void settle() { m_store.settle(); }

 private:
  class RunCursor;

  struct CachedBlock {
    std::size_t index = 0;
    std::shared_ptr<const TextBlock> block;
  };

  void startBlock();
  std::shared_ptr<const TextBlock> load(std::size_t index) const;
  template <class IsBefore>
  std::size_t lastBlock(IsBefore isBefore) const;

  BlockStore m_store;
  std::vector<TextBlock::Summary> m_sealed;
  std::shared_ptr<TextBlock> m_open;            // the last block, which still grows
  TextLayout m_layout;                          // of the end
  mutable std::array<CachedBlock, 16> m_cache;  // the latest looked at, replaced in turn
  mutable std::size_t m_nextCached = 0;
  mutable std::vector<std::size_t> m_lost;
};

}  // namespace zolt
