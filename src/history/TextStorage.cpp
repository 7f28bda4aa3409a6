#include "history/TextStorage.h"

#include <algorithm>
#include <utility>

namespace zolt {

// The position in the runs of a string that is appended in pieces.
class TextStorage::RunCursor {
 public:
  explicit RunCursor(const AttributedString& string) : m_string(string) {}

  // Copies the runs of the next `bytes` bytes, which are about to be appended to `block`.
  void copyTo(TextBlock& block, std::size_t bytes) {
    std::size_t offset = block.size();
    while (bytes > 0) {
      const AttributedString::Run& run = m_string.runs()[m_run];
      block.appendRun(offset, run.style.isListed() ? block.m_styles.number(m_string.attributes(run))
                                                   : block.m_styles.number(run.style));
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
  const AttributedString& m_string;
  std::size_t m_run = 0;
  std::size_t m_takenOfRun = 0;
};

TextStorage::TextStorage(HistorySettings settings)
    : m_store(std::move(settings)), m_open(std::make_shared<TextBlock>(TextPosition(), 0, 0)) {}

void TextStorage::append(const AttributedString& string) {
  RunCursor runs(string);
  for (std::string_view rest = string.text(); !rest.empty();) {
    // The LF of a CR LF stays with its CR, even if the block is full.
    const bool completesALineEnd = m_layout.endsInReturn && rest.front() == '\n';
    if (m_open->room() == 0 && !completesALineEnd) startBlock();
    const std::string_view piece = rest.substr(0, std::max<std::size_t>(m_open->room(), 1));
    runs.copyTo(*m_open, piece.size());
    m_open->append(piece, m_layout);
    rest.remove_prefix(piece.size());
  }
}

void TextStorage::startBlock() {
  m_open->seal();
  m_sealed.push_back(m_open->summary());
  const TextPosition start = m_open->end();
  m_store.add(std::move(m_open));
  m_open = std::make_shared<TextBlock>(start, m_layout.lineEnds, m_layout.column);
}

std::shared_ptr<const TextBlock> TextStorage::block(std::size_t index) const {
  if (index == m_sealed.size()) return m_open;
  for (const CachedBlock& cached : m_cache) {
    if (cached.index == index && cached.block) return cached.block;
  }
  std::shared_ptr<const TextBlock> found = load(index);
  m_cache[m_nextCached] = {.index = index, .block = found};
  m_nextCached = (m_nextCached + 1) % m_cache.size();
  return found;
}

std::shared_ptr<const TextBlock> TextStorage::load(std::size_t index) const {
  if (auto kept = keptBlock(m_store.reader(), index, m_sealed[index])) return kept;
  if (std::ranges::find(m_lost, index) == m_lost.end()) m_lost.push_back(index);
  return lostBlock(m_sealed[index], summary(index + 1));
}

TextSnapshot TextStorage::snapshot(std::size_t first, std::size_t end) const {
  std::vector<TextBlock::Summary> summaries;
  summaries.reserve(end - first + 1);
  for (std::size_t i = first; i < std::min(end + 1, blockCount()); ++i) {
    summaries.push_back(summary(i));
  }
  return {m_store.reader(), first, end - first, std::move(summaries), end == blockCount() ? m_open->copy() : nullptr};
}

const TextBlock::Summary& TextStorage::summary(std::size_t index) const {
  return index == m_sealed.size() ? m_open->summary() : m_sealed[index];
}

// The last block whose summary satisfies `isBefore`, which must hold for the first block and then up to some block.
template <class IsBefore>
std::size_t TextStorage::lastBlock(IsBefore isBefore) const {
  if (isBefore(m_open->summary())) return m_sealed.size();
  const auto after = std::ranges::partition_point(m_sealed, isBefore);
  return static_cast<std::size_t>(after - m_sealed.begin()) - 1;
}

std::size_t TextStorage::blockAt(TextPosition position) const {
  return lastBlock([&](const TextBlock::Summary& block) { return block.start <= position; });
}

TextPosition TextStorage::lineStart(std::uint64_t line) const {
  // The last block whose first line comes before this line, or starts with it.
  const std::size_t index = lastBlock([&](const TextBlock::Summary& block) {
    return block.firstLine < line || (block.firstLine == line && !block.continuesALine());
  });
  const TextBlock::Summary& about = summary(index);
  const std::uint64_t start = line - about.firstLine - (about.continuesALine() ? 1 : 0);
  return about.start + block(index)->lineStarts()[start];
}

std::uint64_t TextStorage::lineAt(TextPosition position) const {
  const auto holder = block(blockAt(position));
  return holder->firstLine() + holder->fragmentAt(static_cast<std::size_t>(position - holder->start()));
}

TextPosition TextStorage::lineEnd(std::uint64_t line) const {
  if (line + 1 == lineCount()) return this->end();
  TextPosition end = lineStart(line + 1) - 1;
  const TextPosition start = lineStart(line);
  if (end > start && at(end) == '\n' && at(end - 1) == '\r') end = end - 1;
  return end;
}

std::string TextStorage::text(TextPosition begin, TextPosition end) const {
  std::string result;
  if (begin >= end) return result;
  result.reserve(static_cast<std::size_t>(end - begin));
  for (std::size_t i = blockAt(begin); i < blockCount() && summary(i).start < end; ++i) {
    const auto source = block(i);
    const TextPosition from = std::max(begin, source->start());
    const TextPosition to = std::min(end, source->end());
    result +=
        source->text().substr(static_cast<std::size_t>(from - source->start()), static_cast<std::size_t>(to - from));
  }
  return result;
}

char TextStorage::at(TextPosition position) const {
  const auto holder = block(blockAt(position));
  return holder->text()[static_cast<std::size_t>(position - holder->start())];
}

void TextStorage::forEachRun(TextPosition begin, TextPosition end, const RunVisitor& visit) const {
  if (begin >= end) return;
  for (std::size_t i = blockAt(begin); i < blockCount() && summary(i).start < end; ++i) {
    const auto source = block(i);
    auto offset = static_cast<std::size_t>(std::max(begin, source->start()) - source->start());
    const auto limit = static_cast<std::size_t>(std::min(end, source->end()) - source->start());
    if (offset >= limit) continue;
    const auto& runs = source->styleRuns();
    for (std::size_t run = source->styleRunAt(offset); offset < limit; ++run) {
      const std::size_t runEnd = run + 1 < runs.size() ? std::min<std::size_t>(runs[run + 1].begin, limit) : limit;
      visit(source->start() + offset, source->text().substr(offset, runEnd - offset),
            source->styles()[runs[run].style]);
      offset = runEnd;
    }
  }
}

std::size_t TextStorage::memoryBytes() const {
  return sizeof(*this) + m_sealed.capacity() * sizeof(m_sealed[0]) + m_store.usage().memoryBytes +
         m_open->memoryBytes();
}

}  // namespace zolt
