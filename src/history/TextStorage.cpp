#include "history/TextStorage.h"

#include <algorithm>
#include <cstring>

#include "text/TextScan.h"

namespace zolt {

TextStorage::TextStorage() {
  m_blocks.push_back(std::make_unique<TextBlock>(0, 0, 0));
}

void TextStorage::append(const AttributedString& string) {
  // What the string's styles are called in the current block; forgotten when a block is full.
  std::vector<std::int32_t> names(string.styles().size(), -1);
  const TextBlock* namedIn = m_blocks.back().get();
  std::string_view rest = string.text();
  for (const AttributedString::Run& run : string.runs()) {
    std::string_view text = rest.substr(0, run.length);
    rest.remove_prefix(run.length);
    while (!text.empty()) {
      const bool completesALineEnd = m_endsInReturn && text.front() == '\n';
      if (m_blocks.back()->room() == 0 && !completesALineEnd) startBlock();
      TextBlock& block = *m_blocks.back();
      if (&block != namedIn) {
        std::fill(names.begin(), names.end(), -1);
        namedIn = &block;
      }
      std::int32_t& name = names[run.style];
      if (name < 0) name = block.styleIndex(string.styles()[run.style]);
      const std::string_view piece = text.substr(0, std::max<std::size_t>(block.room(), 1));
      block.appendRun(static_cast<std::uint16_t>(name));
      layOut(block, piece);
      block.appendBytes(piece);
      text.remove_prefix(piece.size());
    }
  }
}

void TextStorage::startBlock() {
  TextBlock& full = *m_blocks.back();
  std::uint64_t line = m_lineCount - 1;
  // A line that would start at the very end starts in the next block instead, so that every row begins in one block.
  if (!full.m_lineStarts.empty() && full.m_lineStarts.back() == full.size() && full.size() != 0) {
    full.m_lineStarts.pop_back();
  }
  full.m_lineStarts.shrink_to_fit();
  full.m_runs.shrink_to_fit();
  full.m_styles.shrink_to_fit();
  m_blocks.push_back(std::make_unique<TextBlock>(full.end(), line, m_column));
}

// Takes note of line ends and tabs in `piece`, which is about to be appended to `block`.
void TextStorage::layOut(TextBlock& block, std::string_view piece) {
  std::size_t position = 0;
  while (position < piece.size()) {
    const std::size_t content = controlFreePrefix(piece.substr(position));
    if (content != 0) {
      m_column += content;
      position += content;
      m_endsInReturn = false;
      if (position == piece.size()) break;
    }
    const char control = piece[position++];
    if (control == '\t') {
      block.m_hasTabs = true;
      m_column = afterTab(m_column);
      m_endsInReturn = false;
      continue;
    }
    const auto next = static_cast<std::uint16_t>(block.size() + position);
    if (control == '\n' && m_endsInReturn) {
      block.m_lineStarts.back() = next;  // the line after the CR starts after the LF
      m_endsInReturn = false;
      continue;
    }
    block.noteLineLength(m_column);
    block.m_lineStarts.push_back(next);
    ++m_lineCount;
    m_column = 0;
    m_endsInReturn = control == '\r';
  }
  block.noteLineLength(m_column);
}

std::size_t TextStorage::blockAt(TextPosition position) const {
  const auto after = std::upper_bound(m_blocks.begin(), m_blocks.end(), position,
                                      [](TextPosition wanted, const auto& block) { return wanted < block->start(); });
  return static_cast<std::size_t>(after - m_blocks.begin()) - 1;
}

TextPosition TextStorage::lineStart(std::uint64_t line) const {
  // The last block that starts at or before the line holds its start, unless the line starts exactly with a later
  // block.
  const auto after =
      std::upper_bound(m_blocks.begin(), m_blocks.end(), line, [](std::uint64_t wanted, const auto& block) {
        return wanted < block->firstLine() || (wanted == block->firstLine() && block->continuesALine());
      });
  const TextBlock& block = **(after - 1);
  const std::uint64_t index = line - block.firstLine() - (block.continuesALine() ? 1 : 0);
  return block.start() + block.lineStarts()[index];
}

std::uint64_t TextStorage::lineAt(TextPosition position) const {
  const TextBlock& holder = block(blockAt(position));
  return holder.firstLine() + holder.fragmentAt(static_cast<std::size_t>(position - holder.start()));
}

TextPosition TextStorage::lineEnd(std::uint64_t line) const {
  if (line + 1 == m_lineCount) return size();
  TextPosition end = lineStart(line + 1) - 1;
  const TextPosition start = lineStart(line);
  if (end > start && at(end) == '\n' && at(end - 1) == '\r') --end;
  return end;
}

std::string TextStorage::text(TextPosition begin, TextPosition end) const {
  std::string result;
  if (begin >= end) return result;
  result.reserve(static_cast<std::size_t>(end - begin));
  for (std::size_t i = blockAt(begin); i < m_blocks.size() && m_blocks[i]->start() < end; ++i) {
    const TextBlock& source = *m_blocks[i];
    const TextPosition from = std::max(begin, source.start());
    const TextPosition to = std::min(end, source.end());
    result +=
        source.text().substr(static_cast<std::size_t>(from - source.start()), static_cast<std::size_t>(to - from));
  }
  return result;
}

char TextStorage::at(TextPosition position) const {
  const TextBlock& holder = block(blockAt(position));
  return holder.text()[static_cast<std::size_t>(position - holder.start())];
}

void TextStorage::forEachRun(TextPosition begin, TextPosition end, const RunVisitor& visit) const {
  if (begin >= end) return;
  for (std::size_t i = blockAt(begin); i < m_blocks.size() && m_blocks[i]->start() < end; ++i) {
    const TextBlock& source = *m_blocks[i];
    auto offset = static_cast<std::size_t>(std::max(begin, source.start()) - source.start());
    const auto limit = static_cast<std::size_t>(std::min(end, source.end()) - source.start());
    if (offset >= limit) continue;
    const auto& runs = source.styleRuns();
    for (std::size_t run = source.styleRunAt(offset); offset < limit; ++run) {
      const std::size_t runEnd = run + 1 < runs.size() ? std::min<std::size_t>(runs[run + 1].begin, limit) : limit;
      visit(source.start() + offset, source.text().substr(offset, runEnd - offset), source.styles()[runs[run].style]);
      offset = runEnd;
    }
  }
}

std::size_t TextStorage::memoryBytes() const {
  std::size_t bytes = sizeof(*this) + m_blocks.capacity() * sizeof(m_blocks[0]);
  for (const auto& block : m_blocks) {
    bytes += sizeof(TextBlock) + TextBlock::capacity + 1 + block->m_lineStarts.capacity() * sizeof(std::uint16_t) +
             block->m_runs.capacity() * sizeof(TextBlock::StyleRun) +
             block->m_styles.capacity() * sizeof(TextAttributes);
  }
  return bytes;
}

}  // namespace zolt
