#include "history/TextStorage.h"

#include <gtest/gtest.h>

#include <string>

#include "history/LogTexts.h"
#include "support/TextPositions.h"

namespace zolt {
namespace {

constexpr std::size_t kCapacity = TextBlock::capacity;

// Compares every line of the log, and `at`, `text` and `lineAt` around each line's edges.
void expectSameLines(const Log& log) {
  const TextStorage& storage = log.storage;
  const std::string& text = log.naive.text();
  const std::vector<NaiveLog::Line> lines = log.naive.lines();
  ASSERT_EQ(storage.size(), text.size());
  ASSERT_EQ(storage.lineCount(), lines.size());
  for (std::uint64_t line = 0; line < lines.size(); ++line) {
    const NaiveLog::Line& expected = lines[line];
    ASSERT_EQ(storage.lineStart(line), expected.begin) << "line " << line;
    ASSERT_EQ(storage.lineEnd(line), expected.contentEnd) << "line " << line;
    ASSERT_EQ(storage.lineAt(expected.begin), line);
    ASSERT_EQ(storage.lineAt(expected.contentEnd), line);
    // A line's end is the start of the next one, except for the last line.
    const bool last = line + 1 == lines.size();
    ASSERT_EQ(storage.lineAt(last ? expected.end : expected.end - 1), line);
  }
  EXPECT_EQ(storage.text({}, storage.end()), text);
}

// Expects blocks without gaps, within their capacity, that never begin between CR and LF.
void expectSoundBlocks(const TextStorage& storage) {
  TextPosition position;
  for (std::size_t i = 0; i < storage.blockCount(); ++i) {
    const auto heldBlock = storage.block(i);
    const TextBlock& block = *heldBlock;
    ASSERT_EQ(block.start(), position);
    ASSERT_LE(block.size(), kCapacity + 1);
    position = block.end();
    if (i == 0) continue;
    ASSERT_FALSE(block.size() != 0 && block.text().front() == '\n' && storage.at(block.start() - 1) == '\r');
  }
  ASSERT_EQ(position, storage.end());
}

TEST(TextStorage, HasOneEmptyLineToBeginWith) {
  const TextStorage storage;
  EXPECT_TRUE(storage.empty());
  EXPECT_EQ(storage.size(), 0u);
  EXPECT_EQ(storage.lineCount(), 1u);
  EXPECT_EQ(storage.lineStart(0), 0_pos);
  EXPECT_EQ(storage.lineEnd(0), 0_pos);
  EXPECT_EQ(storage.lineAt(0_pos), 0u);
  EXPECT_EQ(storage.text({}, {}), "");
}

TEST(TextStorage, EndsALineAtALineFeedACarriageReturnAndAPairOfThem) {
  Log log;
  log.append("a\nb\rc\r\nd");
  EXPECT_EQ(log.storage.lineCount(), 4u);
  EXPECT_EQ(log.storage.lineStart(3), 7_pos);
  EXPECT_EQ(log.storage.lineEnd(2), 5_pos);
  expectSameLines(log);
}

TEST(TextStorage, HasAnEmptyLineAfterTheLastLineEnd) {
  Log log;
  log.append("a\n");
  EXPECT_EQ(log.storage.lineCount(), 2u);
  EXPECT_EQ(log.storage.lineStart(1), 2_pos);
  EXPECT_EQ(log.storage.lineEnd(1), 2_pos);
  EXPECT_EQ(log.storage.lineAt(2_pos), 1u);
}

TEST(TextStorage, JoinsALaterLineFeedToItsCarriageReturn) {
  Log log;
  log.append("a\r");
  EXPECT_EQ(log.storage.lineCount(), 2u);
  log.append("\n");
  EXPECT_EQ(log.storage.lineCount(), 2u);
  log.append("\nb");
  EXPECT_EQ(log.storage.lineCount(), 3u);
  expectSameLines(log);
}

TEST(TextStorage, CountsALineFeedSeparatelyWhenTextSeparatesItFromTheCarriageReturn) {
  for (const char* between : {"x", "\t", "\r"}) {
    Log log;
    log.append("a\r");
    log.append(between);
    log.append("\n");
    expectSameLines(log);
  }
}

TEST(TextStorage, AppendsNothingForAnEmptyString) {
  Log log;
  log.append("");
  log.append("a\r");
  log.append("");
  log.append("\n");
  expectSameLines(log);
}

TEST(TextStorage, ReturnsAnyRangeOfItsText) {
  Log log;
  log.append(std::string(kCapacity - 2, 'x') + "abcdef");
  EXPECT_EQ(log.storage.text(TextPosition(kCapacity - 3), TextPosition(kCapacity + 3)), "xabcde");
  EXPECT_EQ(log.storage.text(5_pos, 5_pos), "");
  EXPECT_EQ(log.storage.text(6_pos, 5_pos), "");
  EXPECT_EQ(log.storage.at(TextPosition(kCapacity)), 'c');
  EXPECT_EQ(log.storage.blockAt(TextPosition(kCapacity - 1)), 0u);
  EXPECT_EQ(log.storage.blockAt(TextPosition(kCapacity)), 1u);
  EXPECT_EQ(log.storage.blockAt(log.storage.end()), 1u);
}

TEST(TextStorage, NeverSplitsACarriageReturnAndItsLineFeedBetweenBlocks) {
  Log log;
  log.append(std::string(kCapacity - 1, 'x') + "\r");
  EXPECT_EQ(log.storage.lineCount(), 2u);
  log.append("\nnext");
  EXPECT_EQ(log.storage.lineCount(), 2u);
  EXPECT_EQ(log.storage.block(0)->size(), kCapacity + 1);
  expectSameLines(log);
}

TEST(TextStorage, HasTheSameLinesWhateverTextEndsABlock) {
  for (const std::string& ending : boundaryEndings()) {
    for (std::size_t before = 0; before <= ending.size(); ++before) {
      for (const char first : {'x', '\n'}) {
        Log whole;
        const std::string filler = first + std::string(kCapacity - before - 1, 'x');
        whole.append(filler + ending + "more\nlines");
        ASSERT_NO_FATAL_FAILURE(expectSameLines(whole)) << escaped(ending) << ' ' << before;
        ASSERT_NO_FATAL_FAILURE(expectSoundBlocks(whole.storage));
        Log byBytes;
        byBytes.append(filler);
        for (const char c : ending) {
          byBytes.append({&c, 1});
          ASSERT_NO_FATAL_FAILURE(expectSameLines(byBytes)) << escaped(ending) << ' ' << before;
        }
        byBytes.append("more\nlines");
        ASSERT_NO_FATAL_FAILURE(expectSameLines(byBytes)) << escaped(ending) << ' ' << before;
      }
    }
  }
}

TEST(TextStorage, HasTheLinesOfTextsOfSeveralBlocks) {
  for (const NamedText& named : severalBlocksOfText()) {
    Log log;
    log.append(named.text);
    ASSERT_NO_FATAL_FAILURE(expectSameLines(log)) << named.name;
    ASSERT_NO_FATAL_FAILURE(expectSoundBlocks(log.storage)) << named.name;
    EXPECT_GT(log.storage.blockCount(), 4u) << named.name;
    EXPECT_GT(log.storage.memoryBytes(), log.storage.size()) << named.name;
  }
}

TEST(TextStorage, HasTheSameLinesHoweverItsTextIsChunked) {
  RandomText random(32, logAlphabet);
  for (int round = 0; round < 60; ++round) {
    Log log;
    log.append(std::string(kCapacity - random.below(200), "x\n\t\r"[random.below(4)]));
    for (int step = 0; step < 60; ++step) {
      log.append(random.text(8));
    }
    ASSERT_NO_FATAL_FAILURE(expectSameLines(log)) << "round " << round;
    ASSERT_NO_FATAL_FAILURE(expectSoundBlocks(log.storage)) << "round " << round;
    for (int sample = 0; sample < 200; ++sample) {
      const TextPosition begin(random.below(log.storage.size() + 1));
      const TextPosition end = begin + random.below(300);
      const std::size_t length = std::min(end, log.storage.end()) - begin;
      ASSERT_EQ(log.storage.text(begin, begin + length), log.naive.text().substr(begin.value, length));
    }
  }
}

}  // namespace
}  // namespace zolt
