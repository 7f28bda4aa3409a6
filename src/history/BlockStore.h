#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "history/SpillFile.h"

namespace zolt {

/// A block that has been filled and never changes again.
class SealedBlock {
 public:
  virtual ~SealedBlock() = default;
  /// Its bytes, from which its owner can make it again. Any thread.
  virtual std::string encoded() const = 0;
  /// What it takes in memory. Any thread.
  virtual std::size_t memoryBytes() const = 0;
};

/// How much history a terminal keeps where.
struct HistorySettings {
  /// The most bytes of blocks in memory before the oldest move to a file.
  std::size_t memoryBudget = std::size_t{32} << 20;
  /// The latest blocks, which stay as they are: what is on screen, and a little more. Fewer where they are large.
  std::size_t hotBlocks = 16;
  /// Where the file is made; empty: there is none, and everything stays in memory.
  std::string folder{};
  /// Makes the file; called again for the next block where it gave none.
  std::function<std::unique_ptr<SpillFile>(const std::string& folder)> openFile = openSpillFile;
};

/// Keeps any number of sealed blocks in little memory.
///
/// The latest stay as they are. Older ones are compressed (zstd, a fast level) by a thread that all stores share, and
/// beyond the budget moved to an unlinked file, each encrypted and authenticated (XChaCha20-Poly1305) with a key that
/// is never written anywhere. When the file takes no more, the oldest blocks are given up; nothing else is ever lost.
///
/// A store belongs to one thread, which adds and reads; it never waits for the other, but when blocks come faster than
/// they are compressed it compresses some itself, so that memory stays bounded.
class BlockStore {
  class State;

 public:
  explicit BlockStore(HistorySettings settings = {});
  BlockStore(BlockStore&&) noexcept = default;
  BlockStore& operator=(BlockStore&&) = delete;
  ~BlockStore();

  /// Takes the next block; they are numbered from 0.
  void add(std::shared_ptr<const SealedBlock> block);

  struct Content {
    std::shared_ptr<const SealedBlock> block;  ///< as it was added, or null
    std::string bytes;                         ///< else what `encoded()` gave
  };
  /// The block with number `index`, which has been added; nothing when it was given up or cannot be read any more.
  std::optional<Content> read(std::size_t index) const { return reader().read(index); }

  /// Reads the blocks of a store, also when the store itself is gone. Any thread.
  class Reader {
   public:
    std::optional<Content> read(std::size_t index) const;

   private:
    friend class BlockStore;
    explicit Reader(std::shared_ptr<const State> state) : m_state(std::move(state)) {}
    std::shared_ptr<const State> m_state;
  };
  Reader reader() const { return Reader(m_state); }

  /// Where the blocks are.
  struct Usage {
    std::size_t plainBlocks = 0;
    std::size_t compressedBlocks = 0;
    std::size_t spilledBlocks = 0;
    std::size_t givenUpBlocks = 0;
    std::size_t memoryBytes = 0;  ///< of the blocks in memory
    std::uint64_t fileBytes = 0;  ///< of the blocks in the file
  };
  Usage usage() const;
  /// Waits until nothing is left to compress or to move.
  void settle();

 private:
  std::shared_ptr<State> m_state;
};

}  // namespace zolt
