#include "history/TextSnapshot.h"

#include <optional>
#include <utility>

#include "history/HistoryBlock.h"

namespace zolt {

std::shared_ptr<const TextBlock> keptBlock(const BlockStore::Reader& store, std::size_t index,
                                           const TextBlock::Summary& summary) {
  const std::optional<BlockStore::Content> content = store.read(index);
  if (!content) return nullptr;
  if (content->block) return std::static_pointer_cast<const TextBlock>(content->block);
  return TextBlock::decoded(summary, content->bytes);
}

std::shared_ptr<const TextBlock> lostBlock(const TextBlock::Summary& summary, const TextBlock::Summary& next) {
  return TextBlock::lost(summary, next.firstLine - summary.firstLine, next.startColumn, kHistoryLostNotice);
}

std::shared_ptr<const TextBlock> TextSnapshot::block(std::size_t index) const {
  if (m_last && index + 1 == endBlock()) return m_last;
  auto kept = keptBlock(m_store, index, summary(index));
  return kept ? kept : lostBlock(summary(index), summary(index + 1));
}

BlockText TextSnapshot::text(std::size_t index) const {
  BlockText result;
  if (!m_last || index + 1 != endBlock()) {
    std::optional<BlockStore::Content> content = m_store.read(index);
    const auto text = content && !content->block ? textOfHistoryBlock(content->bytes) : std::nullopt;
    if (text && text->size() == summary(index).size) {
      result.m_begin = static_cast<std::size_t>(text->data() - content->bytes.data());
      result.m_size = text->size();
      result.m_bytes = std::move(content->bytes);
      return result;
    }
  }
  result.m_block = block(index);
  return result;
}

}  // namespace zolt
