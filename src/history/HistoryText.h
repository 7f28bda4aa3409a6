#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "history/BlockSequence.h"
#include "history/LineBlock.h"
#include "history/TextSnapshot.h"
#include "text/TextPosition.h"

namespace zolt {

/// A text in blocks, as a row index, find and saving read it.
///
/// Positions, lines and blocks are numbered from the session's start. Blocks before `stableEnd()` never change, but may
/// be lost; the others may be replaced when the text changes. The text may lose blocks at its front, which renumbers
/// nothing. Finding a position or a line takes logarithmic time. Not synchronised: one thread at a time.
class HistoryText {
 public:
  virtual ~HistoryText() = default;

  /// The numbers of the first block and of the one after the last; there is at least one.
  virtual std::size_t firstBlock() const = 0;
  virtual std::size_t endBlock() const = 0;
  virtual std::size_t stableEnd() const = 0;
  /// What is known about a block without its text.
  virtual const BlockSummary& summary(std::size_t index) const = 0;
  /// A block, restored from the store if necessary.
  std::shared_ptr<const LineBlock> block(std::size_t index) const { return lineBlock(index); }
  /// The blocks found to be lost, in the order of discovery. Their layout differs from their summary.
  virtual const std::vector<std::size_t>& lostBlocks() const = 0;
  /// The blocks from `first` to `end` (not included), for other threads.
  virtual TextSnapshot snapshot(std::size_t first, std::size_t end) const = 0;

  TextPosition begin() const { return summary(firstBlock()).start; }
  TextPosition end() const { return summary(endBlock() - 1).end(); }
  /// The block that contains `position`, which lies between begin() and end(); the end belongs to the last block.
  std::size_t blockAt(TextPosition position) const;

  /// The numbers of the first line, whose start may be gone, and of the one after the last.
  std::uint64_t firstLine() const { return summary(firstBlock()).firstLine; }
  std::uint64_t endLine() const;
  /// Where line `line` starts, or the text if the line's start is gone.
  TextPosition lineStart(std::uint64_t line) const;
  /// The number of the line that contains `position`; a line end belongs to the line that it ends.
  std::uint64_t lineAt(TextPosition position) const;
  /// Where line `line` ends, without its line end.
  TextPosition lineEnd(std::uint64_t line) const;

  /// The bytes from `begin` to `end` (not included), as stored.
  std::string text(TextPosition begin, TextPosition end) const;
  /// The byte at `position` < end().
  char at(TextPosition position) const;

 protected:
  virtual std::shared_ptr<const LineBlock> lineBlock(std::size_t index) const = 0;

 private:
  template <class IsBefore>
  std::size_t lastBlock(IsBefore isBefore) const;
};

}  // namespace zolt
