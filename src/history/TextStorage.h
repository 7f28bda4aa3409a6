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

/// The text of a log, which is only ever appended to.
///
/// ASCII with LF, CR and TAB. A line ends with LF, CR or CR LF. There is always one more line than there are line ends:
/// the last may be empty. Appending takes constant time per byte, finding a position or a line logarithmic time. Full
/// blocks go to a BlockStore, which keeps them in little memory. A block whose text was dropped there reads as
/// kHistoryLostNotice and blanks, with as many lines and bytes as before, so that positions and line numbers stay
/// valid. Not synchronised: one thread at a time.
class TextStorage {
 public:
  explicit TextStorage(HistorySettings settings = {});

  /// Appends `string`, whose text is ASCII.
  void append(const AttributedString& string);

  TextPosition end() const { return m_open->end(); }
  /// In bytes.
  std::uint64_t size() const { return end().value; }
  bool empty() const { return size() == 0; }
  std::uint64_t lineCount() const { return m_layout.lineEnds + 1; }

  /// The number of blocks, at least 1. Only the last block still grows.
  std::size_t blockCount() const { return m_sealed.size() + 1; }
  /// Block `index` < blockCount(), restored from the store if necessary.
  std::shared_ptr<const TextBlock> block(std::size_t index) const;
  /// What is known about block `index` < blockCount() without its text.
  const TextBlock::Summary& summary(std::size_t index) const;
  /// The blocks found to be lost, in the order of discovery. Their layout differs from their summary.
  const std::vector<std::size_t>& lostBlocks() const { return m_lost; }
  /// The block that contains `position` <= end(); the end belongs to the last block.
  std::size_t blockAt(TextPosition position) const;

  /// Where line `line` < lineCount() starts.
  TextPosition lineStart(std::uint64_t line) const;
  /// The number of the line that contains `position`; a line end belongs to the line that it ends.
  std::uint64_t lineAt(TextPosition position) const;
  /// Where line `line` ends, without its line end.
  TextPosition lineEnd(std::uint64_t line) const;

  /// The bytes from `begin` to `end` (not included), as stored.
  std::string text(TextPosition begin, TextPosition end) const;
  /// The byte at `position` < end().
  char at(TextPosition position) const;

  using RunVisitor = std::function<void(TextPosition begin, std::string_view text, const TextAttributes& attributes)>;
  /// Visits the runs from `begin` to `end` (not included) in order, split at block boundaries.
  void forEachRun(TextPosition begin, TextPosition end, const RunVisitor& visit) const;

  /// The blocks from `first` to `end` (not included, at most blockCount()), for other threads.
  TextSnapshot snapshot(std::size_t first, std::size_t end) const;

  /// An estimate of the memory in use, in bytes.
  std::size_t memoryBytes() const;
  BlockStore::Usage usage() const { return m_store.usage(); }
  /// Waits until the store has nothing left to compress or move.
  void waitUntilIdle() { m_store.waitUntilIdle(); }

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
  mutable std::array<CachedBlock, 16> m_cache;  // recently used blocks, replaced in turn
  mutable std::size_t m_nextCached = 0;
  mutable std::vector<std::size_t> m_lost;
};

}  // namespace zolt
