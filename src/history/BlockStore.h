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

/// A block that is full and will never change.
class SealedBlock {
 public:
  virtual ~SealedBlock() = default;
  /// A serialized form, from which its owner can restore it. Any thread.
  virtual std::string encoded() const = 0;
  /// Its size in memory. Any thread.
  virtual std::size_t memoryBytes() const = 0;
};

/// Where a terminal keeps its history, and how much of it in memory.
struct HistorySettings {
  /// Bytes of blocks in memory beyond which the oldest are moved to a file.
  std::size_t memoryBudget = std::size_t{32} << 20;
  /// How many of the latest blocks stay uncompressed: those on screen and a few more. Fewer when blocks are large.
  std::size_t hotBlocks = 16;
  /// The folder for the file; when empty, there is none and everything stays in memory.
  std::string folder{};
  /// Opens the file. If it returns null, it is called again for the next block.
  std::function<std::unique_ptr<SpillFile>(const std::string& folder)> openFile = openSpillFile;
};

/// Keeps any number of sealed blocks in little memory.
///
/// The latest stay as they are. Older ones are compressed (zstd, a fast level) by a thread that all stores share and,
/// beyond the budget, moved to an unlinked file, each encrypted and authenticated (XChaCha20-Poly1305) with a key that
/// is never written anywhere. When the file can hold no more, the oldest blocks are dropped; nothing else is ever lost.
/// The owner may trim blocks from the front; their room is used again once no reader made before can ask for them.
///
/// A store belongs to one thread, which adds and reads blocks and never waits for the worker. When blocks arrive faster
/// than the worker compresses them, the owner compresses some itself, which keeps memory bounded.
class BlockStore {
  class State;
  class Pin;

 public:
  explicit BlockStore(HistorySettings settings = {});
  BlockStore(BlockStore&&) noexcept = default;
  BlockStore& operator=(BlockStore&&) = delete;
  ~BlockStore();

  /// Appends a block. Blocks are numbered from 0, whatever is trimmed.
  void add(std::shared_ptr<const SealedBlock> block);
  /// Appends a block of an earlier store, as `Reader::compressed` returned it; null: one that was lost. Only before the
  /// first block is added.
  void addCompressed(std::shared_ptr<const std::string> block);
  /// Trims the blocks before number `index`, which is at most the number of blocks added.
  void dropBefore(std::size_t index);

  struct Content {
    std::shared_ptr<const SealedBlock> block;  ///< the block as it was added, or null
    std::string bytes;                         ///< otherwise what `encoded()` returned
  };

  /// Reads the blocks that a store had when the reader was made, and later ones, even after the store itself is gone.
  /// Blocks that are trimmed meanwhile stay readable. Copies are cheap. Any thread.
  class Reader {
   public:
    /// Block number `index`, which must have been added; nothing when it was dropped or can no longer be read.
    std::optional<Content> read(std::size_t index) const;
    /// The same block compressed (compressBlock); null when it was dropped or can no longer be read.
    std::shared_ptr<const std::string> compressed(std::size_t index) const;

   private:
    friend class BlockStore;
    explicit Reader(std::shared_ptr<const Pin> pin) : m_pin(std::move(pin)) {}
    std::shared_ptr<const Pin> m_pin;
  };
  Reader reader() const;
  /// As a reader made now.
  std::optional<Content> read(std::size_t index) const;

  /// Where the blocks are.
  struct Usage {
    std::size_t plainBlocks = 0;
    std::size_t compressedBlocks = 0;
    std::size_t spilledBlocks = 0;
    std::size_t droppedBlocks = 0;  ///< lost, not trimmed
    std::size_t memoryBytes = 0;    ///< total size of the blocks in memory
    std::uint64_t fileBytes = 0;    ///< total size of the blocks in the file
  };
  Usage usage() const;
  /// Waits until there is nothing left to compress or move.
  void waitUntilIdle();

 private:
  std::shared_ptr<State> m_state;
};

}  // namespace zolt
