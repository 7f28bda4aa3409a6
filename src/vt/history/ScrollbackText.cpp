#include "vt/history/ScrollbackText.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zolt::vt {

ScrollbackText::ScrollbackText(ScrollbackView view) : m_view(std::move(view)) {
  show(m_view);
}

void ScrollbackText::show(ScrollbackView view) {
  m_view = std::move(view);
  const auto before = std::exchange(m_tail, {});
  for (const ScrollbackView::TailBlock& block : m_view.tail()) {
    const auto known = std::ranges::find(before, block.content, [](const auto& each) { return each->content(); });
    m_tail.push_back(known != before.end() ? *known
                                           : std::make_shared<const ScrollbackBlock>(block.content, block.start));
  }
}

const BlockSummary& ScrollbackText::summary(std::size_t index) const {
  return index < stableEnd() ? m_view.sealed().summary(index) : m_tail[index - stableEnd()]->summary();
}

std::shared_ptr<const LineBlock> ScrollbackText::lineBlock(std::size_t index) const {
  if (index < stableEnd()) return m_cache.block(m_view.sealed(), index);
  return m_tail[index - stableEnd()];
}

TextSnapshot ScrollbackText::snapshot(std::size_t first, std::size_t end) const {
  return {m_view.sealed(), {m_tail.begin(), m_tail.end()}, first, end};
}

HistoryLine ScrollbackText::part(TextPosition begin, TextPosition end) const {
  HistoryLine line;
  const std::size_t first = blockAt(begin);
  for (std::size_t i = first; i < endBlock() && (i == first || summary(i).start < end); ++i) {
    const auto held = block(i);
    const auto from = static_cast<std::size_t>(std::max(begin, held->start()) - held->start());
    const auto to = static_cast<std::size_t>(std::min(end, held->end()) - held->start());
    HistoryLine piece = historyLine(*static_cast<const ScrollbackBlock&>(*held).content(), from, to);
    for (HistoryMark& mark : piece.marks) {
      mark.offset += static_cast<std::uint32_t>(line.text.size());
    }
    line.text += piece.text;
    std::ranges::move(piece.runs, std::back_inserter(line.runs));
    std::ranges::move(piece.marks, std::back_inserter(line.marks));
  }
  line.isEnded = end < this->end() && at(end) == '\n';
  return line;
}

}  // namespace zolt::vt
