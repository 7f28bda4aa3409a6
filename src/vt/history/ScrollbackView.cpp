#include "vt/history/ScrollbackView.h"

#include "history/BlockCodec.h"

namespace zolt::vt {

namespace {

// A run may have been started for text that has not come yet.
std::shared_ptr<const HistoryBlock> withoutEmptyRun(const std::shared_ptr<const HistoryBlock>& block) {
  if (block->runs.back().begin < block->text.size()) return block;
  auto copy = std::make_shared<HistoryBlock>(*block);
  std::erase_if(copy->runs, [&](const HistoryRun& run) { return run.begin >= block->text.size(); });
  return copy;
}

}  // namespace

void ScrollbackView::forEachStored(const std::function<void(StoredBlock block)>& take) const {
  for (std::size_t i = m_sealed.firstBlock(); i < m_sealed.endBlock(); ++i) {
    take(m_sealed.stored(i));
  }
  for (const TailBlock& tail : m_tail) {
    if (tail.content->text.empty()) continue;
    const ScrollbackBlock block(withoutEmptyRun(tail.content), tail.start);
    take({.summary = block.summary(),
          .compressed = std::make_shared<const std::string>(compressBlock(block.encoded()))});
  }
}

}  // namespace zolt::vt
