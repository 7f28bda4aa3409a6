#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>

#include "history/HistoryBlock.h"
#include "history/LogTexts.h"
#include "history/TemporaryFolder.h"
#include "history/TextStorage.h"
#include "support/NumberedLines.h"

namespace zolt {
namespace {

using test::numberedLines;
using test::TemporaryFolder;

std::string textOf(const TextSnapshot& snapshot) {
  std::string text;
  for (std::size_t i = snapshot.firstBlock(); i < snapshot.endBlock(); ++i) {
    const BlockText held = snapshot.text(i);
    EXPECT_EQ(held.text(), snapshot.block(i)->text()) << i;
    text += held.text();
  }
  return text;
}

TEST(TextSnapshot, KeepsItsTextWhateverIsAppendedLater) {
  TextStorage storage;
  std::string expected;
  for (int round = 0; round < 20; ++round) {
    const std::string piece = numberedLines(1500);
    storage.append(AttributedString(piece, TextAttributes()));
    expected += piece;
    const TextSnapshot snapshot = storage.snapshot(0, storage.blockCount());
    storage.append(AttributedString(std::string("more"), TextAttributes()));
    ASSERT_EQ(textOf(snapshot), expected);
    expected += "more";
  }
}

TEST(TextSnapshot, CanBeReadByAnotherThreadWhileTheTextGrows) {
  const TemporaryFolder folder;
  TextStorage storage({.memoryBudget = 20'000, .hotBlocks = 1, .folder = folder.path()});
  const std::string text = numberedLines(60'000);
  storage.append(AttributedString(text, TextAttributes()));
  const TextSnapshot snapshot = storage.snapshot(0, storage.blockCount());
  std::string read;
  std::thread reader([&] { read = textOf(snapshot); });
  for (int i = 0; i < 200; ++i) {
    storage.append(AttributedString(numberedLines(2000), TextAttributes()));
  }
  reader.join();
  EXPECT_EQ(read, text);
  storage.waitUntilIdle();
  EXPECT_GT(storage.usage().spilledBlocks, 0U);
  EXPECT_EQ(textOf(snapshot), text);
}

TEST(TextSnapshot, OutlivesItsStorage) {
  const TemporaryFolder folder;
  const std::string text = numberedLines(60'000);
  auto storage = std::make_unique<TextStorage>(HistorySettings{.memoryBudget = 20'000, .folder = folder.path()});
  storage->append(AttributedString(text, TextAttributes()));
  const TextSnapshot snapshot = storage->snapshot(0, storage->blockCount());
  storage.reset();
  EXPECT_EQ(textOf(snapshot), text);
}

TEST(TextSnapshot, OfTheMiddleHasItsBlocksUnderTheirNumbers) {
  TextStorage storage;
  storage.append(AttributedString(numberedLines(60'000), TextAttributes()));
  ASSERT_GT(storage.blockCount(), 5U);
  const TextSnapshot snapshot = storage.snapshot(2, 4);
  EXPECT_EQ(snapshot.firstBlock(), 2U);
  EXPECT_EQ(snapshot.endBlock(), 4U);
  EXPECT_EQ(snapshot.summary(3), storage.summary(3));
  EXPECT_EQ(textOf(snapshot), storage.text(storage.summary(2).start, storage.summary(4).start));
}

TEST(TextSnapshot, ReadsTheSameAsTheStorageWhenTextIsLost) {
  for (const NamedText& named : severalBlocksOfText()) {
    TextStorage storage({.memoryBudget = 0, .hotBlocks = 1, .folder = "nowhere", .openFile = [](const std::string&) {
                           return std::unique_ptr<SpillFile>();
                         }});
    storage.append(AttributedString(named.text + named.text, TextAttributes()));
    storage.waitUntilIdle();
    ASSERT_GT(storage.usage().droppedBlocks, 0U);
    EXPECT_EQ(textOf(storage.snapshot(0, storage.blockCount())), storage.text({}, storage.end())) << named.name;
  }
}

TEST(HistoryBlock, ProvidesItsTextWithoutTheRest) {
  HistoryBlock block;
  block.text = "some text";
  block.styles.emplace_back();
  block.runs.emplace_back();
  EXPECT_EQ(textOfHistoryBlock(encodeHistoryBlock(block)), "some text");
  EXPECT_EQ(textOfHistoryBlock(encodeHistoryBlock({})), "");
  EXPECT_EQ(textOfHistoryBlock("\x01\x7f"
                               "short"),
            std::nullopt);
  EXPECT_EQ(textOfHistoryBlock("\xff"), std::nullopt);
}

}  // namespace
}  // namespace zolt
