#include "history/HistoryText.h"

#include <algorithm>

namespace zolt {

// The last block whose summary satisfies `isBefore`, which must hold for the first block and then up to some block.
template <class IsBefore>
std::size_t HistoryText::lastBlock(IsBefore isBefore) const {
  std::size_t last = endBlock() - 1;
  if (isBefore(summary(last))) return last;
  std::size_t found = firstBlock();
  while (last - found > 1) {
    const std::size_t middle = found + (last - found) / 2;
    (isBefore(summary(middle)) ? found : last) = middle;
  }
  return found;
}

std::size_t HistoryText::blockAt(TextPosition position) const {
  return lastBlock([&](const BlockSummary& block) { return block.start <= position; });
}

std::uint64_t HistoryText::endLine() const {
  const BlockSummary& last = summary(endBlock() - 1);
  return last.firstLine + last.fragments();
}

TextPosition HistoryText::lineStart(std::uint64_t line) const {
  // The last block whose first line comes before this line, or starts with it.
  const std::size_t index = lastBlock([&](const BlockSummary& block) {
    return block.firstLine < line || (block.firstLine == line && !block.continuesALine);
  });
  const BlockSummary& about = summary(index);
  if (line == about.firstLine && about.continuesALine) return about.start;
  const std::uint64_t start = line - about.firstLine - (about.continuesALine ? 1 : 0);
  return about.start + block(index)->lineStart(start);
}

std::uint64_t HistoryText::lineAt(TextPosition position) const {
  const auto holder = block(blockAt(position));
  // At the end there may be a block without a line yet.
  if (holder->fragmentCount() == 0) return std::max(holder->firstLine(), firstLine() + 1) - 1;
  return holder->firstLine() + holder->fragmentAt(static_cast<std::size_t>(position - holder->start()));
}

TextPosition HistoryText::lineEnd(std::uint64_t line) const {
  const TextPosition start = lineStart(line);
  const TextPosition after = line + 1 < endLine() ? lineStart(line + 1) : end();
  if (after == start) return start;
  const char last = at(after - 1);
  if (last != '\n' && last != '\r') return after;
  const bool isPair = last == '\n' && after - start > 1 && at(after - 2) == '\r';
  return after - (isPair ? 2 : 1);
}

std::string HistoryText::text(TextPosition begin, TextPosition end) const {
  std::string result;
  if (begin >= end) return result;
  result.reserve(static_cast<std::size_t>(end - begin));
  for (std::size_t i = blockAt(begin); i < endBlock() && summary(i).start < end; ++i) {
    const auto source = block(i);
    const TextPosition from = std::max(begin, source->start());
    const TextPosition to = std::min(end, source->end());
    result +=
        source->text().substr(static_cast<std::size_t>(from - source->start()), static_cast<std::size_t>(to - from));
  }
  return result;
}

char HistoryText::at(TextPosition position) const {
  const auto holder = block(blockAt(position));
  return holder->text()[static_cast<std::size_t>(position - holder->start())];
}

}  // namespace zolt
