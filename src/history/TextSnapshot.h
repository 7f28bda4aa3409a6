#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "history/BlockStore.h"
#include "history/TextBlock.h"

namespace zolt {

/// Shown at the beginning of text that had to be dropped.
inline constexpr std::string_view kHistoryLostNotice = "[Zolt: this part of the history could not be kept]";

/// Block `index` of a text from the store; null when the store no longer has it.
std::shared_ptr<const TextBlock> keptBlock(const BlockStore::Reader& store, std::size_t index,
                                           const TextBlock::Summary& summary);
/// The replacement for a block that the store no longer has; `next` is the summary of the block after it.
std::shared_ptr<const TextBlock> lostBlock(const TextBlock::Summary& summary, const TextBlock::Summary& next);

/// Owns or shares the text of a block.
class BlockText {
 public:
  std::string_view text() const {
    return m_block ? m_block->text() : std::string_view(m_bytes).substr(m_begin, m_size);
  }

 private:
  friend class TextSnapshot;

  std::shared_ptr<const TextBlock> m_block;
  std::string m_bytes;  // otherwise the text is part of these
  std::size_t m_begin = 0;
  std::size_t m_size = 0;
};

/// Consecutive blocks of a text storage as they were at one moment. Nothing changes them, but blocks may be lost. May
/// outlive the storage. Any thread.
class TextSnapshot {
 public:
  /// The numbers of the first block and of the one after the last. Blocks have the same numbers as in the storage.
  std::size_t firstBlock() const { return m_first; }
  std::size_t endBlock() const { return m_first + m_count; }

  const TextBlock::Summary& summary(std::size_t index) const { return m_summaries[index - m_first]; }
  /// Block `index`, with layout and styles.
  std::shared_ptr<const TextBlock> block(std::size_t index) const;
  /// The text of block `index` alone, which is cheaper.
  BlockText text(std::size_t index) const;

 private:
  friend class TextStorage;

  TextSnapshot(BlockStore::Reader store, std::size_t first, std::size_t count,
               std::vector<TextBlock::Summary> summaries, std::shared_ptr<const TextBlock> last)
      : m_store(std::move(store)),
        m_first(first),
        m_count(count),
        m_summaries(std::move(summaries)),
        m_last(std::move(last)) {}

  BlockStore::Reader m_store;
  std::size_t m_first;
  std::size_t m_count;
  std::vector<TextBlock::Summary> m_summaries;  // and of the block after the last, if there is one
  std::shared_ptr<const TextBlock> m_last;      // a copy of the last block, if it was still growing
};

}  // namespace zolt
