#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "history/TextBlock.h"
#include "text/AttributedString.h"

namespace zolt {

/// The text of a log: appended to, never changed, never shortened.
///
/// ASCII with LF, CR and TAB, one byte a character; a stored LF or CR ends a line, and a CR directly followed by a LF
/// ends one. There is always one line more than line ends: the last may be empty. Appending costs constant time a byte,
/// and looking up a position or a line logarithmic time, at any size. Not synchronised: one thread at a time.
class TextStorage {
 public:
  TextStorage();

  /// Appends `string`, whose text is ASCII.
  void append(const AttributedString& string);

  TextPosition size() const { return m_blocks.back()->end(); }
  bool empty() const { return size() == 0; }
  std::uint64_t lineCount() const { return m_lineCount; }

  /// Blocks in order, at least one; only the last still grows.
  std::size_t blockCount() const { return m_blocks.size(); }
  const TextBlock& block(std::size_t index) const { return *m_blocks[index]; }
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

  /// An estimate of the memory in use, in bytes.
  std::size_t memoryBytes() const;

 private:
  class RunCursor;

  void startBlock();
  void layOut(TextBlock& block, std::string_view piece);

  std::vector<std::unique_ptr<TextBlock>> m_blocks;
  std::uint64_t m_lineCount = 1;
  LineColumn m_column = 0;      // of the end
  bool m_endsInReturn = false;  // the last byte is a CR: a LF now would be part of the same line end
};

}  // namespace zolt
