#include "history/BlockSequence.h"

#include <algorithm>
#include <optional>

#include "history/HistoryBlock.h"

namespace zolt {

std::shared_ptr<const LineBlock> SealedBlocks::kept(std::size_t index) const {
  const std::optional<BlockStore::Content> content = m_store.read(index);
  if (!content) return nullptr;
  if (content->block) return std::static_pointer_cast<const LineBlock>(content->block);
  return m_kind->decoded(summary(index), content->bytes);
}

std::shared_ptr<const LineBlock> SealedBlocks::block(std::size_t index) const {
  auto found = kept(index);
  return found ? found : lost(index);
}

StoredBlock SealedBlocks::stored(std::size_t index) const {
  return {.summary = summary(index), .compressed = m_store.compressed(index)};
}

BlockText SealedBlocks::text(std::size_t index) const {
  std::optional<BlockStore::Content> content = m_store.read(index);
  const auto text = content && !content->block ? textOfHistoryBlock(content->bytes) : std::nullopt;
  if (!text || text->size() != summary(index).size) return BlockText(block(index));
  const auto begin = static_cast<std::size_t>(text->data() - content->bytes.data());
  return {std::move(content->bytes), begin, text->size()};
}

std::shared_ptr<const LineBlock> BlockCache::block(const SealedBlocks& blocks, std::size_t index) {
  for (const Cached& cached : m_cached) {
    if (cached.index == index && cached.block) return cached.block;
  }
  std::shared_ptr<const LineBlock> found = blocks.kept(index);
  if (!found) {
    if (std::ranges::find(m_lost, index) == m_lost.end()) m_lost.push_back(index);
    found = blocks.lost(index);
  }
  m_cached[m_next] = {.index = index, .block = found};
  m_next = (m_next + 1) % m_cached.size();
  return found;
}

void BlockSequence::add(std::shared_ptr<const LineBlock> block) {
  m_sealed.m_summaries.push_back(block->summary());
  m_store.add(std::move(block));
}

void BlockSequence::addStored(StoredBlock block) {
  m_sealed.m_summaries.push_back(block.summary);
  m_store.addCompressed(std::move(block.compressed));
}

void BlockSequence::dropBefore(std::size_t index) {
  if (index <= firstBlock()) return;
  m_sealed.m_summaries.dropBefore(index);
  m_store.dropBefore(index);
  // The reader made before keeps what was trimmed.
  m_sealed.m_store = m_store.reader();
}

}  // namespace zolt
