#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "history/BlockStore.h"
#include "history/FreeExtents.h"
#include "history/SharedList.h"
#include "history/TemporaryFolder.h"

namespace zolt {
namespace {

using test::TemporaryFolder;

class Noise : public SealedBlock {
 public:
  explicit Noise(unsigned seed, std::size_t size = 10'000) {
    std::mt19937 random(seed);
    while (m_bytes.size() < size) {
      m_bytes.push_back(static_cast<char>(random()));
    }
  }
  std::string encoded() const override { return m_bytes; }
  std::size_t memoryBytes() const override { return m_bytes.size(); }

 private:
  std::string m_bytes;
};

// Notes how far it is written.
class MeasuredFile : public SpillFile {
 public:
  MeasuredFile(std::unique_ptr<SpillFile> file, std::shared_ptr<std::atomic<std::uint64_t>> end)
      : m_file(std::move(file)), m_end(std::move(end)) {}
  bool write(std::uint64_t offset, std::string_view bytes) override {
    *m_end = std::max<std::uint64_t>(*m_end, offset + bytes.size());
    return m_file->write(offset, bytes);
  }
  bool read(std::uint64_t offset, std::size_t size, std::string& bytes) const override {
    return m_file->read(offset, size, bytes);
  }

 private:
  std::unique_ptr<SpillFile> m_file;
  std::shared_ptr<std::atomic<std::uint64_t>> m_end;
};

template <class Source>
std::string contentOf(const Source& source, std::size_t index) {
  const auto content = source.read(index);
  if (!content) return "gone";
  return content->block ? content->block->encoded() : content->bytes;
}

TEST(BlockStore, TrimsBlocksWhereverTheyAre) {
  const TemporaryFolder folder;
  BlockStore store({.memoryBudget = 100'000, .hotBlocks = 4, .folder = folder.path()});
  for (unsigned i = 0; i < 40; ++i) {
    store.add(std::make_shared<Noise>(i));
  }
  store.waitUntilIdle();
  ASSERT_GT(store.usage().spilledBlocks, 10U);
  for (const std::size_t first : {5U, 30U, 38U}) {
    store.dropBefore(first);
    store.waitUntilIdle();
    EXPECT_EQ(contentOf(store, first - 1), "gone");
    EXPECT_EQ(contentOf(store, first), Noise(static_cast<unsigned>(first)).encoded());
    const BlockStore::Usage usage = store.usage();
    EXPECT_EQ(usage.plainBlocks + usage.compressedBlocks + usage.spilledBlocks, 40 - first);
    EXPECT_EQ(usage.droppedBlocks, 0U);
  }
  store.dropBefore(40);
  EXPECT_EQ(store.usage().memoryBytes, 0U);
  EXPECT_EQ(store.usage().fileBytes, 0U);
  store.add(std::make_shared<Noise>(40));
  EXPECT_EQ(contentOf(store, 40), Noise(40).encoded());
}

TEST(BlockStore, KeepsTrimmedBlocksForReadersThatWereMadeBefore) {
  const TemporaryFolder folder;
  BlockStore store({.memoryBudget = 50'000, .hotBlocks = 1, .folder = folder.path()});
  for (unsigned i = 0; i < 20; ++i) {
    store.add(std::make_shared<Noise>(i));
  }
  std::optional early = store.reader();
  std::optional copy = early;
  store.dropBefore(10);
  const BlockStore::Reader late = store.reader();
  store.waitUntilIdle();
  for (unsigned i = 0; i < 20; ++i) {
    EXPECT_EQ(contentOf(*early, i), Noise(i).encoded()) << i;
  }
  EXPECT_EQ(contentOf(late, 10), Noise(10).encoded());
  const std::uint64_t before = store.usage().fileBytes;
  early.reset();
  EXPECT_EQ(store.usage().fileBytes, before);
  copy.reset();
  EXPECT_LT(store.usage().fileBytes, before);
  EXPECT_EQ(contentOf(late, 9), "gone");
}

TEST(BlockStore, WritesOverTheRoomOfTrimmedBlocks) {
  const TemporaryFolder folder;
  const auto end = std::make_shared<std::atomic<std::uint64_t>>(0);
  BlockStore store(
      {.memoryBudget = 0, .hotBlocks = 0, .folder = folder.path(), .openFile = [&](const std::string& path) {
         return std::make_unique<MeasuredFile>(openSpillFile(path), end);
       }});
  std::mt19937 random(2);
  for (unsigned i = 0; i < 400; ++i) {
    store.add(std::make_shared<Noise>(i, 1000 + random() % 20'000));
    store.waitUntilIdle();
    if (i >= 10) store.dropBefore(i - 10);
  }
  EXPECT_LT(*end, 600'000U) << "ten blocks of 20,000 bytes at most, and what is left between them";
  EXPECT_NE(contentOf(store, 395), "gone");
}

TEST(BlockStore, MayBeTrimmedWhileItsBlocksAreBeingCompressed) {
  const TemporaryFolder folder;
  BlockStore store({.memoryBudget = 10'000, .hotBlocks = 0, .folder = folder.path()});
  for (unsigned i = 0; i < 500; ++i) {
    store.add(std::make_shared<Noise>(i % 20));
    if (i % 3 == 0) store.dropBefore(i - i % 5);
  }
  store.waitUntilIdle();
  EXPECT_EQ(contentOf(store, 499), Noise(499 % 20).encoded());
  store.dropBefore(500);
  EXPECT_EQ(store.usage().memoryBytes, 0U);
}

TEST(FreeExtents, AreTakenFromTheFirstThatIsLargeEnough) {
  FreeExtents free;
  free.add(100, 10);
  free.add(0, 5);
  EXPECT_EQ(free.take(6), 100U);
  EXPECT_EQ(free.take(6), std::nullopt);
  EXPECT_EQ(free.take(4), 0U);
  EXPECT_EQ(free.take(4), 106U);
}

TEST(FreeExtents, JoinWhereTheyTouch) {
  FreeExtents free;
  free.add(0, 10);
  free.add(20, 10);
  EXPECT_EQ(free.take(21), std::nullopt);
  free.add(10, 10);
  EXPECT_EQ(free.take(30), 0U);
  EXPECT_EQ(free.take(1), std::nullopt);
}

TEST(SharedList, KeepsTheIndicesOfItsElements) {
  SharedList<int> list;
  for (int i = 0; i < 3000; ++i) {
    list.push_back(i);
    if (i % 7 == 0) list.dropBefore(static_cast<std::size_t>(i) * 2 / 3);
    ASSERT_EQ(list[list.begin()], static_cast<int>(list.begin()));
    ASSERT_EQ(list[list.end() - 1], i);
  }
  EXPECT_LT(list.memoryBytes(), 2000 * sizeof(int));
  list.dropBefore(list.end());
  list.push_back(3000);
  EXPECT_EQ(list[3000], 3000);
}

TEST(SharedList, LeavesItsCopiesAlone) {
  SharedList<int> list;
  std::vector<SharedList<int>> copies;
  for (int i = 0; i < 1000; ++i) {
    list.push_back(i);
    copies.push_back(list);
    list.dropBefore(static_cast<std::size_t>(i) / 2);
  }
  for (const SharedList<int>& copy : copies) {
    for (std::size_t i = copy.begin(); i < copy.end(); ++i) {
      ASSERT_EQ(copy[i], static_cast<int>(i));
    }
  }
}

}  // namespace
}  // namespace zolt
