#include "history/BlockStore.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "history/BlockCodec.h"
#include "history/HistoryWorker.h"
#include "history/TemporaryFolder.h"

namespace zolt {
namespace {

using test::TemporaryFolder;

// Text that hardly compresses, so that sizes can be predicted.
std::string textOf(std::size_t number, std::size_t size = 4096) {
  std::string text = "block " + std::to_string(number) + ":";
  for (std::uint64_t state = number * 2654435761U + 1; text.size() < size;) {
    state = state * 6364136223846793005U + 1442695040888963407U;
    text.push_back(static_cast<char>('!' + (state >> 33) % 90));
  }
  return text;
}

class TextOnly : public SealedBlock {
 public:
  explicit TextOnly(std::string text) : m_text(std::move(text)) {}
  std::string encoded() const override { return m_text; }
  std::size_t memoryBytes() const override { return m_text.size(); }

 private:
  std::string m_text;
};

void add(BlockStore& store, std::size_t first, std::size_t count) {
  for (std::size_t number = first; number < first + count; ++number) {
    store.add(std::make_shared<TextOnly>(textOf(number)));
  }
}

// The text of a block; nothing if the store has dropped it.
std::optional<std::string> read(const BlockStore& store, std::size_t number) {
  const auto content = store.read(number);
  if (!content) return std::nullopt;
  return content->block ? content->block->encoded() : content->bytes;
}

void expectAll(const BlockStore& store, std::size_t count, std::size_t size = 4096) {
  for (std::size_t number = 0; number < count; ++number) {
    ASSERT_EQ(read(store, number), textOf(number, size)) << number;
  }
}

// A file in memory with the limits that a test sets.
struct FakeDisk {
  std::size_t capacity = SIZE_MAX;  // maximum size of the file
  int failingWrite = -1;            // which write fails, counted from 0
  int writes = 0;
  std::string bytes;
};

class FakeFile : public SpillFile {
 public:
  explicit FakeFile(std::shared_ptr<FakeDisk> disk) : m_disk(std::move(disk)) {}
  bool write(std::uint64_t offset, std::string_view bytes) override {
    if (m_disk->writes++ == m_disk->failingWrite || offset + bytes.size() > m_disk->capacity) return false;
    if (m_disk->bytes.size() < offset + bytes.size()) m_disk->bytes.resize(offset + bytes.size());
    m_disk->bytes.replace(offset, bytes.size(), bytes);
    return true;
  }
  bool read(std::uint64_t offset, std::size_t size, std::string& bytes) const override {
    if (offset + size > m_disk->bytes.size()) return false;
    bytes = m_disk->bytes.substr(offset, size);
    return true;
  }

 private:
  std::shared_ptr<FakeDisk> m_disk;
};

HistorySettings onFakeDisk(const std::shared_ptr<FakeDisk>& disk, std::size_t budget) {
  return {.memoryBudget = budget, .hotBlocks = 0, .folder = "a disk", .openFile = [disk](const std::string&) {
            return std::make_unique<FakeFile>(disk);
          }};
}

TEST(BlockStore, KeepsTheLatestUncompressedAndCompressesTheRest) {
  BlockStore store({.hotBlocks = 3});
  const auto block = std::make_shared<TextOnly>(std::string(50'000, 'y'));
  for (int i = 0; i < 10; ++i) {
    store.add(block);
  }
  store.waitUntilIdle();
  const BlockStore::Usage usage = store.usage();
  EXPECT_EQ(usage.plainBlocks, 3U);
  EXPECT_EQ(usage.compressedBlocks, 7U);
  EXPECT_LT(usage.memoryBytes, 3 * 50'000U + 7 * 500U) << "repetitive text takes a hundredth";
  EXPECT_EQ(store.read(9)->block, block);
  EXPECT_EQ(store.read(0)->block, nullptr);
  EXPECT_EQ(store.read(0)->bytes, std::string(50'000, 'y'));
}

TEST(BlockStore, KeepsFewerUncompressedWhenTheyAreLarge) {
  BlockStore store({.hotBlocks = 16});
  constexpr std::size_t kLarge = std::size_t{3} << 20;
  for (std::size_t number = 0; number < 10; ++number) {
    store.add(std::make_shared<TextOnly>(std::string(kLarge, static_cast<char>('a' + number))));
  }
  store.waitUntilIdle();
  EXPECT_EQ(store.usage().plainBlocks, 2U);
  EXPECT_LT(store.usage().memoryBytes, 3 * kLarge);
  for (std::size_t number = 0; number < 10; ++number) {
    EXPECT_EQ(read(store, number), std::string(kLarge, static_cast<char>('a' + number)));
  }
}

TEST(BlockStore, StaysInMemoryWithoutAFolder) {
  BlockStore store({.memoryBudget = 1, .hotBlocks = 0});
  add(store, 0, 50);
  store.waitUntilIdle();
  EXPECT_EQ(store.usage().compressedBlocks, 50U);
  expectAll(store, 50);
}

TEST(BlockStore, MovesTheOldestToAFileBeyondItsBudget) {
  const TemporaryFolder folder;
  BlockStore store({.memoryBudget = 40'000, .hotBlocks = 2, .folder = folder.path()});
  add(store, 0, 100);
  store.waitUntilIdle();
  const BlockStore::Usage usage = store.usage();
  EXPECT_LE(usage.memoryBytes, 40'000U);
  EXPECT_GE(usage.memoryBytes, 30'000U) << "the budget is used";
  EXPECT_GT(usage.spilledBlocks, 80U);
  EXPECT_EQ(usage.droppedBlocks, 0U);
  EXPECT_GT(usage.fileBytes, 80 * 3000U);
  expectAll(store, 100);
}

// The files below a folder that this process has open and that are unlinked.
std::vector<std::filesystem::path> unlinkedFilesIn(const std::string& folder) {
  std::vector<std::filesystem::path> found;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    const std::string target = std::filesystem::read_symlink(entry, gone).string();
    if (target.starts_with(folder) && target.ends_with(" (deleted)")) found.push_back(entry.path());
  }
  return found;
}

TEST(BlockStore, WritesNothingThatAnotherProcessCouldRead) {
  const TemporaryFolder folder;
  const std::string secret(2000, 's');
  BlockStore store({.memoryBudget = 0, .hotBlocks = 0, .folder = folder.path() + "/made/for/it"});
  store.add(std::make_shared<TextOnly>(secret + textOf(1)));
  store.add(std::make_shared<TextOnly>(secret + textOf(1)));
  store.waitUntilIdle();
  ASSERT_EQ(store.usage().spilledBlocks, 2U);
  EXPECT_TRUE(std::filesystem::is_empty(folder.path() + "/made/for/it")) << "the file has no name";
  const auto files = unlinkedFilesIn(folder.path());
  ASSERT_EQ(files.size(), 1U);
  struct stat status {};
  ASSERT_EQ(stat(files.front().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
  std::ifstream file(files.front(), std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  ASSERT_EQ(bytes.size(), store.usage().fileBytes);
  EXPECT_EQ(bytes.find("sss"), std::string::npos);
  EXPECT_EQ(bytes.find("block 1"), std::string::npos);
  const std::string packed = compressBlock(secret + textOf(1));
  EXPECT_EQ(bytes.find(packed.substr(0, 8)), std::string::npos) << "not merely compressed";
  EXPECT_NE(bytes.substr(0, bytes.size() / 2), bytes.substr(bytes.size() / 2))
      << "equal blocks are encrypted differently";
}

TEST(BlockStore, KeepsWorkingWhenItsFolderIsRemoved) {
  const TemporaryFolder folder;
  const std::string cache = folder.path() + "/cache";
  BlockStore store({.memoryBudget = 10'000, .hotBlocks = 0, .folder = cache});
  add(store, 0, 20);
  store.waitUntilIdle();
  std::filesystem::remove_all(cache);
  add(store, 20, 20);
  store.waitUntilIdle();
  EXPECT_EQ(store.usage().droppedBlocks, 0U);
  expectAll(store, 40);
}

TEST(BlockStore, DropsTheOldestWhenNoFileCanBeOpened) {
  const auto disk = std::make_shared<FakeDisk>();
  bool available = false;
  HistorySettings settings = onFakeDisk(disk, 20'000);
  settings.openFile = [&](const std::string&) { return available ? std::make_unique<FakeFile>(disk) : nullptr; };
  BlockStore store(settings);
  add(store, 0, 30);
  store.waitUntilIdle();
  const std::size_t lost = store.usage().droppedBlocks;
  EXPECT_GT(lost, 15U);
  EXPECT_LE(store.usage().memoryBytes, 20'000U);
  available = true;
  add(store, 30, 30);
  store.waitUntilIdle();
  EXPECT_EQ(store.usage().droppedBlocks, lost) << "nothing is lost once there is a file";
  for (std::size_t number = 0; number < 60; ++number) {
    EXPECT_EQ(read(store, number), number < lost ? std::nullopt : std::optional(textOf(number))) << number;
  }
}

TEST(BlockStore, DropsTheOldestForNewerOnesWhenTheDiskIsFull) {
  const auto disk = std::make_shared<FakeDisk>();
  disk->capacity = 100'000;
  BlockStore store(onFakeDisk(disk, 20'000));
  for (std::size_t added = 0; added < 400; added += 40) {
    add(store, added, 40);
    store.waitUntilIdle();
    const BlockStore::Usage usage = store.usage();
    EXPECT_LE(usage.memoryBytes, 20'000U);
    if (added >= 80) {
      EXPECT_GT(usage.fileBytes, 70'000U) << "the room on the disk is used";
    }
    // Only the oldest blocks are lost.
    for (std::size_t number = 0; number < added + 40; ++number) {
      const auto text = read(store, number);
      EXPECT_EQ(text, number < usage.droppedBlocks ? std::nullopt : std::optional(textOf(number))) << number;
    }
  }
  disk->capacity = SIZE_MAX;
  const std::size_t lost = store.usage().droppedBlocks;
  add(store, 400, 40);
  store.waitUntilIdle();
  EXPECT_EQ(store.usage().droppedBlocks, lost) << "nothing more is lost once there is room again";
}

TEST(BlockStore, LosesOnlyOldBlocksWhicheverWriteFails) {
  for (int failing = 0; failing < 40; ++failing) {
    const auto disk = std::make_shared<FakeDisk>();
    disk->failingWrite = failing;
    BlockStore store(onFakeDisk(disk, 10'000));
    add(store, 0, 40);
    store.waitUntilIdle();
    const std::size_t lost = store.usage().droppedBlocks;
    EXPECT_LE(lost, 2U) << failing;
    EXPECT_EQ(lost > 0, failing < disk->writes) << failing;
    for (std::size_t number = 0; number < 40; ++number) {
      const auto text = read(store, number);
      ASSERT_TRUE(!text || *text == textOf(number)) << "never another text";
    }
  }
}

TEST(SpillFile, ReportsAWriteThatDoesNotFit) {
  const TemporaryFolder folder;
  const auto file = openSpillFile(folder.path());
  ASSERT_TRUE(file);
  struct rlimit before {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
  const struct rlimit small { .rlim_cur = 10'000, .rlim_max = before.rlim_max };
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const std::string bytes(6000, 'x');
  const bool first = file->write(0, bytes);
  const bool second = file->write(6000, bytes);  // fits partly
  const bool third = file->write(10'000, bytes);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, ignored);
  EXPECT_TRUE(first);
  EXPECT_FALSE(second);
  EXPECT_FALSE(third);
  std::string read;
  EXPECT_TRUE(file->read(0, bytes.size(), read));
  EXPECT_EQ(read, bytes);
  EXPECT_FALSE(file->read(9000, bytes.size(), read));
}

TEST(SpillFile, CreatesItsFolderForTheUserAlone) {
  const TemporaryFolder folder;
  const std::string made = folder.path() + "/caches/zolt";
  ASSERT_TRUE(openSpillFile(made));
  struct stat status {};
  ASSERT_EQ(stat(made.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700U);
  EXPECT_TRUE(std::filesystem::is_empty(made));
}

TEST(BlockStore, RejectsABlockThatWasChangedInTheFile) {
  const auto disk = std::make_shared<FakeDisk>();
  BlockStore store(onFakeDisk(disk, 0));
  add(store, 0, 3);
  store.waitUntilIdle();
  const std::size_t sealed = disk->bytes.size() / 3;
  disk->bytes[sealed + 100] ^= 1;
  EXPECT_EQ(read(store, 0), textOf(0));
  EXPECT_EQ(read(store, 1), std::nullopt);
  EXPECT_EQ(read(store, 2), textOf(2));
}

// Keeps the shared worker from doing anything else for as long as it exists.
class BusyWorker {
 public:
  BusyWorker() {
    HistoryWorker::shared().submit(m_work);
    m_work->started.get_future().wait();
  }
  ~BusyWorker() { m_work->end.set_value(); }
  BusyWorker(const BusyWorker&) = delete;
  BusyWorker& operator=(const BusyWorker&) = delete;

 private:
  struct Work : SteppedWork {
    std::promise<void> started;
    std::promise<void> end;
    bool step() override {
      started.set_value();
      end.get_future().wait();
      return false;
    }
  };
  std::shared_ptr<Work> m_work = std::make_shared<Work>();
};

TEST(BlockStore, LimitsHowManyBlocksWaitForTheWorker) {
  constexpr std::size_t kSize = 300;
  const BusyWorker busy;
  BlockStore store({.hotBlocks = 4});
  for (std::size_t number = 0; number < 200; ++number) {
    store.add(std::make_shared<TextOnly>(textOf(number, kSize)));
    ASSERT_EQ(store.usage().plainBlocks, std::min<std::size_t>(number + 1, 4 + 64));
  }
  expectAll(store, 200, kSize);
}

// A block whose styles take far more memory than its text.
class ColorfulBlock : public TextOnly {
 public:
  explicit ColorfulBlock(std::size_t number) : TextOnly(textOf(number)) {}
  std::size_t memoryBytes() const override { return std::size_t{10} << 20; }
};

TEST(BlockStore, LimitsHowManyBytesWaitForTheWorker) {
  const BusyWorker busy;
  BlockStore store({.hotBlocks = 4});
  for (std::size_t number = 0; number < 20; ++number) {
    store.add(std::make_shared<ColorfulBlock>(number));
    ASSERT_EQ(store.usage().plainBlocks, std::min<std::size_t>(number + 1, 6)) << "64 MiB hold six of them";
  }
  expectAll(store, 20);
}

TEST(BlockStore, MayBeDestroyedWhileItsBlocksAreBeingCompressed) {
  for (int round = 0; round < 50; ++round) {
    BlockStore store({.memoryBudget = 1000, .hotBlocks = 0});
    add(store, 0, 30);
  }
}

TEST(BlockCipher, OpensOnlyWhatItSealedUnderThatNumber) {
  const BlockCipher cipher;
  const BlockCipher other;
  const std::string sealed = cipher.seal(3, "text");
  EXPECT_EQ(sealed.size(), 4 + BlockCipher::overhead);
  EXPECT_EQ(cipher.open(3, sealed), "text");
  EXPECT_EQ(cipher.open(4, sealed), std::nullopt);
  EXPECT_EQ(other.open(3, sealed), std::nullopt);
  EXPECT_EQ(cipher.open(3, sealed.substr(1)), std::nullopt);
  EXPECT_EQ(cipher.open(3, ""), std::nullopt);
}

TEST(BlockCodec, RejectsDamagedFrames) {
  EXPECT_EQ(decompressBlock(compressBlock("text")), "text");
  EXPECT_EQ(decompressBlock(compressBlock("")), "");
  EXPECT_EQ(decompressBlock(""), std::nullopt);
  EXPECT_EQ(decompressBlock("not a frame at all"), std::nullopt);
  const std::string frame = compressBlock(textOf(1));
  EXPECT_EQ(decompressBlock(frame.substr(0, frame.size() - 1)), std::nullopt);
}

TEST(BlockCodec, RejectsFramesOfMoreThanSixteenMebibytes) {
  constexpr std::size_t kLimit = std::size_t{16} << 20;
  const auto isAccepted = [](std::size_t size) {
    return decompressBlock(compressBlock(std::string(size, 'x'))).has_value();
  };
  EXPECT_TRUE(isAccepted(kLimit));
  EXPECT_FALSE(isAccepted(kLimit + 1));
}

}  // namespace
}  // namespace zolt
