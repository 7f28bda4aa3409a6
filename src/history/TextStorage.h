#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "history/BlockSequence.h"
#include "history/HistoryText.h"
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
class TextStorage : public HistoryText {
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
  std::size_t blockCount() const { return m_sealed.endBlock() + 1; }
  std::size_t firstBlock() const override { return 0; }
  std::size_t endBlock() const override { return blockCount(); }
  std::size_t stableEnd() const override { return m_sealed.endBlock(); }
  const BlockSummary& summary(std::size_t index) const override;
  /// As HistoryText::block.
  std::shared_ptr<const TextBlock> block(std::size_t index) const;
  const std::vector<std::size_t>& lostBlocks() const override { return m_cache.lost(); }
  TextSnapshot snapshot(std::size_t first, std::size_t end) const override;

  using RunVisitor = std::function<void(TextPosition begin, std::string_view text, const TextAttributes& attributes)>;
  /// Visits the runs from `begin` to `end` (not included) in order, split at block boundaries.
  void forEachRun(TextPosition begin, TextPosition end, const RunVisitor& visit) const;

  /// An estimate of the memory in use, in bytes.
  std::size_t memoryBytes() const;
  BlockStore::Usage usage() const { return m_sealed.usage(); }
  /// Waits until the store has nothing left to compress or move.
  void waitUntilIdle() { m_sealed.waitUntilIdle(); }

 private:
  class RunCursor;

  void startBlock();
  std::shared_ptr<const LineBlock> lineBlock(std::size_t index) const override;

  BlockSequence m_sealed;
  std::shared_ptr<TextBlock> m_open;  // the last block, which still grows
  TextLayout m_layout;                // of the end
  mutable BlockCache m_cache;
};

}  // namespace zolt
