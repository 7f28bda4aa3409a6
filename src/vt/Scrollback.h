#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "history/BlockStore.h"
#include "history/HistoryBlock.h"
#include "vt/CellTables.h"
#include "vt/Grid.h"
#include "vt/HistoryLine.h"

namespace zolt::vt {

/// What scrolled off the screen, without limit: its text a byte for an ASCII character, with styles, links and marks,
/// in blocks that a BlockStore keeps small. Full of what is printed, it costs a copy of the bytes.
class Scrollback {
 public:
  explicit Scrollback(HistorySettings settings);

  /// Adds a row. `cells` are those up to its extent; where it `wraps`, its line goes on with the next row.
  void append(std::span<const Cell> cells, bool wraps, std::span<const RowMark> marks, const CellTables& tables);
  /// Lines that were never on the screen: text of one look, and line ends. What was written since a place was asked for
  /// can be taken back, for as long as nothing else is done. The block does not end meanwhile: `isFull` asks for that.
  void appendText(std::string_view utf8, Cell look, const CellTables& tables);
  void endLine(const CellTables& tables);
  bool isFull() const {
    return m_open->content.text.size() >= kBlockBytes || m_open->content.packedStyles.size() >= kManyStyles ||
           m_linkBytes >= kManyLinkBytes;
  }
  /// Ends the block where it is, or where so many styles more would be too many.
  void startBlockIfFull(std::size_t styles);
  struct Place {
    std::size_t bytes = 0;
    std::size_t runs = 0;
    std::uint64_t lineEnds = 0;
    std::optional<std::uint64_t> runLook;
  };
  Place place() const;
  void takeBack(const Place& place);

  /// Takes the last line out again, for the screen: at most `maxBytes` of text. Nothing where it is longer, or where
  /// it lies too far back: the latest 64 KiB can be had at least, where there are as many.
  std::optional<HistoryLine> takeLast(std::size_t maxBytes);
  /// Whether the last line was not ended: the screen's first row goes on with it.
  bool endsInside() const {
    for (const Block* block : {m_open.get(), m_previous.get()}) {
      if (block != nullptr && !block->content.text.empty()) return block->content.text.back() != '\n';
    }
    return m_storedInside;
  }
  void clear();
  /// The tables that cells refer to have given numbers anew.
  void forgetNames() {
    ++m_epoch;
    m_runLook.reset();
  }
  /// Ends the last line where it is: what follows on the screen is none of it.
  void endOpenLine(const CellTables& tables) {
    if (endsInside()) endLine(tables);
  }

  /// The lines that have begun.
  std::uint64_t lineCount() const { return m_lineEnds + (endsInside() ? 1 : 0); }
  /// Tells every line from the oldest on, cut where a block ends. A block that is lost is told as one line, its notice.
  void forEachLine(const std::function<void(HistoryLine&&)>& take) const;

  std::size_t memoryBytes() const;
  /// Waits until nothing is left to compress.
  void settle() { m_store->settle(); }

 private:
  // The text of a block before it is full; a row more fits in any case.
  static constexpr std::size_t kBlockBytes = std::size_t{64} << 10;
  // Half of what a style's number has room for.
  static constexpr std::size_t kManyStyles = 32768;
  static constexpr std::size_t kManyLinkBytes = std::size_t{256} << 10;

  struct Block : SealedBlock {
    HistoryBlock content;
    std::string encoded() const override { return encodeHistoryBlock(content); }
    std::size_t memoryBytes() const override;
  };

  struct Name {
    std::uint32_t epoch = 0;
    std::uint32_t name = 0;
  };

  void startRun(Cell cell, std::size_t begin, const CellTables& tables);
  void appendCells(std::span<const Cell> cells, const CellTables& tables);
  void startBlock();

  HistorySettings m_settings;
  std::unique_ptr<BlockStore> m_store;
  std::size_t m_stored = 0;           // blocks in the store
  std::shared_ptr<Block> m_previous;  // full, but kept from the store so that lines can be taken back
  std::shared_ptr<Block> m_open;
  bool m_storedInside = false;  // the store ends inside of a line
  std::uint64_t m_lineEnds = 0;

  // What the styles and links of cells are called in the open block, by their number: names of an earlier epoch do not
  // count.
  std::vector<Name> m_styleNames;
  std::vector<Name> m_linkNames;
  std::uint32_t m_epoch = 1;
  std::size_t m_linkBytes = 0;             // of the targets in the open block
  std::vector<char> m_scratch;             // text on its way
  std::optional<std::uint64_t> m_runLook;  // of the cells of the open run, but whether they are protected
};

}  // namespace zolt::vt
