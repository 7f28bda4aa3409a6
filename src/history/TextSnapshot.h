#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "history/BlockSequence.h"

namespace zolt {

/// Consecutive blocks of a text as they were at one moment. Nothing changes them, but blocks may be lost. May outlive
/// the text. Any thread.
class TextSnapshot {
 public:
  /// The blocks from `first` to `end` (not included); those after the sealed ones are in `tail`.
  TextSnapshot(SealedBlocks sealed, std::vector<std::shared_ptr<const LineBlock>> tail, std::size_t first,
               std::size_t end)
      : m_sealed(std::move(sealed)), m_tail(std::move(tail)), m_first(first), m_end(end) {}

  /// The numbers of the first block and of the one after the last. Blocks have the same numbers as in the text.
  std::size_t firstBlock() const { return m_first; }
  std::size_t endBlock() const { return m_end; }

  const BlockSummary& summary(std::size_t index) const {
    return index < m_sealed.endBlock() ? m_sealed.summary(index) : tail(index)->summary();
  }
  /// Block `index`, with layout and styles.
  std::shared_ptr<const LineBlock> block(std::size_t index) const {
    return index < m_sealed.endBlock() ? m_sealed.block(index) : tail(index);
  }
  /// The text of block `index` alone, which is cheaper.
  BlockText text(std::size_t index) const {
    return index < m_sealed.endBlock() ? m_sealed.text(index) : BlockText(tail(index));
  }

 private:
  const std::shared_ptr<const LineBlock>& tail(std::size_t index) const { return m_tail[index - m_sealed.endBlock()]; }

  SealedBlocks m_sealed;
  std::vector<std::shared_ptr<const LineBlock>> m_tail;
  std::size_t m_first;
  std::size_t m_end;
};

}  // namespace zolt
