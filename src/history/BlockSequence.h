#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "history/BlockStore.h"
#include "history/LineBlock.h"
#include "history/SharedList.h"

namespace zolt {

/// How the blocks of one history are restored.
struct BlockKind {
  /// The block with this summary from what its `encoded()` returned; null when the two do not match.
  std::shared_ptr<const LineBlock> (*decoded)(const BlockSummary& summary, std::string_view bytes);
  /// A replacement for a block whose text was lost.
  std::shared_ptr<const LineBlock> (*lost)(const BlockSummary& summary);
};

/// A sealed block as it is kept from one session to the next.
struct StoredBlock {
  BlockSummary summary;
  std::shared_ptr<const std::string> compressed;  ///< its `encoded()` bytes (compressBlock); null: lost
};

/// Owns or shares the text of a block.
class BlockText {
 public:
  /// All of the text of `block`.
  explicit BlockText(std::shared_ptr<const LineBlock> block) : m_block(std::move(block)) {}
  /// A part of `bytes`.
  BlockText(std::string bytes, std::size_t begin, std::size_t size)
      : m_bytes(std::move(bytes)), m_begin(begin), m_size(size) {}

  std::string_view text() const {
    return m_block ? m_block->text() : std::string_view(m_bytes).substr(m_begin, m_size);
  }

 private:
  std::shared_ptr<const LineBlock> m_block;
  std::string m_bytes;
  std::size_t m_begin = 0;
  std::size_t m_size = 0;
};

/// The sealed blocks of a history at one moment. Nothing changes them, but blocks may be lost. May outlive the history.
/// Copies are cheap. Any thread.
class SealedBlocks {
 public:
  /// The numbers of the first block and of the one after the last.
  std::size_t firstBlock() const { return m_summaries.begin(); }
  std::size_t endBlock() const { return m_summaries.end(); }
  const BlockSummary& summary(std::size_t index) const { return m_summaries[index]; }

  /// Block `index`; null when it was lost.
  std::shared_ptr<const LineBlock> kept(std::size_t index) const;
  std::shared_ptr<const LineBlock> lost(std::size_t index) const { return m_kind->lost(summary(index)); }
  /// The one or the other.
  std::shared_ptr<const LineBlock> block(std::size_t index) const;
  /// Block `index` as it is stored for another session; without its text when it was lost.
  StoredBlock stored(std::size_t index) const;
  /// The text of block `index` alone, which is cheaper.
  BlockText text(std::size_t index) const;

 private:
  friend class BlockSequence;
  SealedBlocks(const BlockKind& kind, BlockStore::Reader store) : m_kind(&kind), m_store(std::move(store)) {}

  const BlockKind* m_kind;
  BlockStore::Reader m_store;
  SharedList<BlockSummary> m_summaries;
};

/// The blocks of one history that a thread has read last, decoded, and those that it found to be lost.
class BlockCache {
 public:
  std::shared_ptr<const LineBlock> block(const SealedBlocks& blocks, std::size_t index);
  /// In the order of discovery. Their layout differs from their summary.
  const std::vector<std::size_t>& lost() const { return m_lost; }

 private:
  struct Cached {
    std::size_t index = 0;
    std::shared_ptr<const LineBlock> block;
  };
  std::array<Cached, 16> m_cached;  // replaced in turn
  std::size_t m_next = 0;
  std::vector<std::size_t> m_lost;
};

/// The sealed blocks of a history as its owner has them: kept in a BlockStore, numbered from 0 on whatever is trimmed.
/// Not synchronised: one thread at a time; others get `sealed()`.
class BlockSequence {
 public:
  BlockSequence(const BlockKind& kind, HistorySettings settings)
      : m_store(std::move(settings)), m_sealed(kind, m_store.reader()) {}

  /// Appends a block.
  void add(std::shared_ptr<const LineBlock> block);
  /// Appends a block of an earlier session. Only before the first block is added.
  void addStored(StoredBlock block);
  /// Trims the blocks before number `index` <= endBlock().
  void dropBefore(std::size_t index);

  const SealedBlocks& sealed() const { return m_sealed; }
  std::size_t firstBlock() const { return m_sealed.firstBlock(); }
  std::size_t endBlock() const { return m_sealed.endBlock(); }
  const BlockSummary& summary(std::size_t index) const { return m_sealed.summary(index); }

  /// Without the blocks that only readers still hold.
  std::size_t memoryBytes() const { return m_sealed.m_summaries.memoryBytes() + m_store.usage().memoryBytes; }
  BlockStore::Usage usage() const { return m_store.usage(); }
  /// Waits until the store has nothing left to compress or move.
  void waitUntilIdle() { m_store.waitUntilIdle(); }

 private:
  BlockStore m_store;
  SealedBlocks m_sealed;
};

}  // namespace zolt
