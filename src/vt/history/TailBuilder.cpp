#include "vt/history/TailBuilder.h"

#include <utility>

namespace zolt::vt {

namespace {

// Blocks store style numbers in 16 bits.
constexpr std::size_t kMaxStyles = UINT16_MAX;

}  // namespace

TailBuilder::TailBuilder(ScrollbackView view, bool clusters)
    : m_view(std::move(view)), m_tail(m_view.tail()), m_clusters(clusters) {
  startBlock(ScrollbackBlock(m_tail.back().content, m_tail.back().start).following());
}

void TailBuilder::startBlock(const BlockStart& start) {
  m_start = start;
  m_block = std::make_shared<HistoryBlock>();
  m_block->clusters = m_clusters;
  m_styles.clear();
  m_links.clear();
}

void TailBuilder::closeBlock() {
  const BlockStart start = m_start;
  m_tail.push_back({.content = std::move(m_block), .start = start});
  startBlock(ScrollbackBlock(m_tail.back().content, start).following());
}

std::uint16_t TailBuilder::styleNumber(const Style& style) {
  const auto [known, isNew] = m_styles.try_emplace(style, static_cast<std::uint16_t>(m_block->packedStyles.size()));
  if (isNew) m_block->packedStyles.push_back(packedStyle(style));
  return known->second;
}

std::uint32_t TailBuilder::linkNumber(const LinkTarget& link) {
  if (link == LinkTarget()) return 0;
  const auto [known, isNew] = m_links.try_emplace(link, static_cast<std::uint32_t>(m_block->links.size() + 1));
  if (isNew) m_block->links.push_back(packedLink(link));
  return known->second;
}

void TailBuilder::add(const HistoryLine& line) {
  if (m_block->text.size() >= kScrollbackBlockBytes ||
      m_block->packedStyles.size() + line.runs.size() + 1 > kMaxStyles) {
    closeBlock();
  }
  const auto begin = static_cast<std::uint32_t>(m_block->text.size());
  std::uint32_t at = begin;
  for (const HistoryLine::Run& run : line.runs) {
    if (run.length == 0) continue;
    m_block->runs.push_back({.begin = at, .style = styleNumber(run.style), .link = linkNumber(run.link)});
    at += static_cast<std::uint32_t>(run.length);
  }
  for (HistoryMark mark : line.marks) {
    mark.offset += begin;
    m_block->marks.push_back(mark);
  }
  m_block->text += line.text;
  if (!line.isEnded) return;
  // The line end belongs to the run before it, and every block has to start with a run.
  if (m_block->runs.empty()) m_block->runs.push_back({.begin = begin, .style = styleNumber(Style())});
  m_block->text.push_back('\n');
}

ScrollbackView TailBuilder::finish() {
  if (!m_block->text.empty()) closeBlock();
  const ScrollbackView::TailBlock& last = m_tail.back();
  const BlockStart after = ScrollbackBlock(last.content, last.start).following();
  return {m_view.sealed(), std::move(m_tail),  m_view.begin(),
          after.position,  m_view.firstLine(), after.line + (after.continuesALine ? 1 : 0)};
}

}  // namespace zolt::vt
