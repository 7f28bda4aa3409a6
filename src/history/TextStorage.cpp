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
    : m_sealed(TextBlock::kind, std::move(settings)), m_open(std::make_shared<TextBlock>(TextPosition(), 0, 0)) {}

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
  m_open->seal(m_layout);
  const TextPosition start = m_open->end();
  m_sealed.add(std::move(m_open));
  m_open = std::make_shared<TextBlock>(start, m_layout.lineEnds, m_layout.column);
}

std::shared_ptr<const TextBlock> TextStorage::block(std::size_t index) const {
  if (index == m_sealed.endBlock()) return m_open;
  return std::static_pointer_cast<const TextBlock>(m_cache.block(m_sealed.sealed(), index));
}

std::shared_ptr<const LineBlock> TextStorage::lineBlock(std::size_t index) const {
  return block(index);
}

TextSnapshot TextStorage::snapshot(std::size_t first, std::size_t end) const {
  std::vector<std::shared_ptr<const LineBlock>> tail;
  if (end == blockCount()) tail.push_back(m_open->copy());
  return {m_sealed.sealed(), std::move(tail), first, end};
}

const BlockSummary& TextStorage::summary(std::size_t index) const {
  return index == m_sealed.endBlock() ? m_open->summary() : m_sealed.summary(index);
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
  return sizeof(*this) + m_sealed.memoryBytes() + m_open->memoryBytes();
}

}  // namespace zolt
