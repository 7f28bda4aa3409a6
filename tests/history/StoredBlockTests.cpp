// Blocks that go from one store to another, compressed.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "history/BlockCodec.h"
#include "history/BlockStore.h"
#include "history/TemporaryFolder.h"

namespace zolt {
namespace {

using Compressed = std::shared_ptr<const std::string>;

class TextBlockOf : public SealedBlock {
 public:
  explicit TextBlockOf(std::string text) : m_text(std::move(text)) {}
  std::string encoded() const override { return m_text; }
  std::size_t memoryBytes() const override { return m_text.size(); }

 private:
  std::string m_text;
};

std::string textOf(std::size_t number) {
  std::string text;
  while (text.size() < 5000) {
    text += "line ";
    text += std::to_string(number * 1000 + text.size());
    text += '\n';
  }
  return text;
}

void addTexts(BlockStore& store, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    store.add(std::make_shared<const TextBlockOf>(textOf(i)));
  }
}

std::string read(const BlockStore& store, std::size_t index) {
  const auto content = store.read(index);
  if (!content) return "lost";
  return content->block ? content->block->encoded() : content->bytes;
}

TEST(StoredBlocks, GoFromOneStoreToAnotherWhereverTheyAre) {
  const test::TemporaryFolder folder;
  BlockStore from({.memoryBudget = 13'000, .hotBlocks = 2, .folder = folder.path()});
  addTexts(from, 20);
  from.waitUntilIdle();
  ASSERT_GT(from.usage().spilledBlocks, 0U);
  ASSERT_GT(from.usage().compressedBlocks, 0U);
  ASSERT_GT(from.usage().plainBlocks, 0U);
  BlockStore to;
  for (std::size_t i = 0; i < 20; ++i) {
    to.addCompressed(from.reader().compressed(i));
  }
  for (std::size_t i = 0; i < 20; ++i) {
    EXPECT_EQ(read(to, i), textOf(i)) << i;
  }
}

TEST(StoredBlocks, AreCompressedOnce) {
  BlockStore from({.hotBlocks = 0});
  addTexts(from, 1);
  from.waitUntilIdle();
  const BlockStore::Reader reader = from.reader();
  EXPECT_EQ(reader.compressed(0), reader.compressed(0));
}

TEST(StoredBlocks, AreFollowedByNewOnes) {
  BlockStore store({.hotBlocks = 0});
  store.addCompressed(std::make_shared<const std::string>(compressBlock("old")));
  store.add(std::make_shared<const TextBlockOf>("new"));
  store.waitUntilIdle();
  EXPECT_EQ(read(store, 0), "old");
  EXPECT_EQ(read(store, 1), "new");
  EXPECT_EQ(store.usage().compressedBlocks, 2U);
}

TEST(StoredBlocks, AreLostAlone) {
  BlockStore store;
  store.addCompressed(std::make_shared<const std::string>(compressBlock("one")));
  store.addCompressed(nullptr);
  store.addCompressed(std::make_shared<const std::string>("no frame"));
  store.addCompressed(std::make_shared<const std::string>(compressBlock("four")));
  EXPECT_EQ(read(store, 0), "one");
  EXPECT_EQ(read(store, 1), "lost");
  EXPECT_EQ(read(store, 2), "lost");
  EXPECT_EQ(read(store, 3), "four");
  EXPECT_EQ(store.reader().compressed(1), nullptr);
}

TEST(StoredBlocks, MoveToTheFileBeyondTheBudgetPastThoseThatAreLost) {
  const test::TemporaryFolder folder;
  BlockStore store({.memoryBudget = 1000, .hotBlocks = 2, .folder = folder.path()});
  store.addCompressed(nullptr);
  for (std::size_t i = 1; i < 10; ++i) {
    store.addCompressed(i == 5 ? nullptr : std::make_shared<const std::string>(compressBlock(textOf(i))));
  }
  addTexts(store, 5);
  store.waitUntilIdle();
  EXPECT_GE(store.usage().spilledBlocks, 7U);
  EXPECT_EQ(store.usage().droppedBlocks, 2U);
  EXPECT_EQ(read(store, 4), textOf(4));
  EXPECT_EQ(read(store, 6), textOf(6));
}

TEST(StoredBlocks, AreTrimmedAsOthersAre) {
  BlockStore store;
  store.addCompressed(std::make_shared<const std::string>(compressBlock("one")));
  store.addCompressed(std::make_shared<const std::string>(compressBlock("two")));
  store.dropBefore(1);
  EXPECT_EQ(read(store, 0), "lost");
  EXPECT_EQ(read(store, 1), "two");
}

}  // namespace
}  // namespace zolt
