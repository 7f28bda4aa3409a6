#include "history/TextStorage.h"

#include <algorithm>
#include <cstring>

#include "text/TextScan.h"

namespace zolt {

// Walks the runs of a string that is appended piece by piece.
class TextStorage::RunCursor {
 public:
  explicit RunCursor(const AttributedString& string) : m_string(string), m_names(string.styles().size(), kUnnamed) {}

  // Gives `block` the runs of the next `bytes` bytes, which are about to be appended to it.
  void copyTo(TextBlock& block, std::size_t bytes) {
    if (&block != m_block) {
      m_block = &block;
      std::ranges::fill(m_names, kUnnamed);
    }
    std::size_t offset = block.size();
    while (bytes > 0) {
      const AttributedString::Run& run = m_string.runs()[m_run];
      std::int32_t& name = m_names[run.style];
      if (name == kUnnamed) name = block.styleIndex(m_string.attributes(run));
      block.appendRun(offset, static_cast<std::uint16_t>(name));
      const std::size_t taken = std::min<std::size_t>(run.length - m_takenOfRun, bytes);
      offset += taken;
      bytes -= taken;
      m_takenOfRun += taken;
      if (m_takenOfRun == run.length) {
        ++m_run;
        m_takenOfRun = 0;
      }
    }
  }

 private:
  static constexpr std::int32_t kUnnamed = -1;

  const AttributedString& m_string;
  std::vector<std::int32_t> m_names;  // what the string's styles are called in m_block
  const TextBlock* m_block = nullptr;
  std::size_t m_run = 0;
  std::size_t m_takenOfRun = 0;
};

TextStorage::TextStorage() {
  m_blocks.push_back(std::make_unique<TextBlock>(0, 0, 0));
}

void TextStorage::append(const AttributedString& string) {
  RunCursor runs(string);
  for (std::string_view rest = string.text(); !rest.empty();) {
    // The LF of a CR LF stays with its CR, in a full block as well.
    const bool completesALineEnd = m_endsInReturn && rest.front() == '\n';
    if (m_blocks.back()->room() == 0 && !completesALineEnd) startBlock();
    TextBlock& block = *m_blocks.back();
    const std::string_view piece = rest.substr(0, std::max<std::size_t>(block.room(), 1));
    layOut(block, piece);
    runs.copyTo(block, piece.size());
    block.appendBytes(piece);
    rest.remove_prefix(piece.size());
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
