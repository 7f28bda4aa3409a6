#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "history/TextStorage.h"
#include "support/TextPositions.h"
#include "text/RandomText.h"

namespace zolt {
namespace {

constexpr std::size_t kCapacity = TextBlock::capacity;

// Half of them fit a packed code.
TextAttributes styleNumber(std::size_t number) {
  TextAttributes style;
  if (number % 2 == 0) {
    style.foreground = CompactColor(static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(number >> 8),
                                    static_cast<std::uint8_t>(number >> 16))
                           .color();
  } else {
    style.foreground = Color::gray(static_cast<double>(number + 1));
  }
  return style;
}

// A storage, and the style number of each byte appended to it.
struct StyledLog {
  TextStorage storage;
  std::string text;
  std::vector<std::size_t> styles;

  void note(std::string_view piece, std::size_t style) {
    text += piece;
    styles.insert(styles.end(), piece.size(), style);
  }
  void append(std::string_view piece, std::size_t style) {
    storage.append(AttributedString(piece, styleNumber(style)));
    note(piece, style);
  }
};

// Visits `begin` to `end`, compares text and style of every byte, and returns the number of runs.
std::size_t expectSameRuns(const StyledLog& log, TextRange range) {
  const auto [begin, end] = range;
  TextPosition position = begin;
  std::size_t runs = 0;
  log.storage.forEachRun(begin, end, [&](TextPosition at, std::string_view text, const TextAttributes& attributes) {
    ++runs;
    ASSERT_EQ(at, position);
    ASSERT_FALSE(text.empty());
    ASSERT_EQ(text, std::string_view(log.text).substr(at.value, text.size()));
    ASSERT_EQ(log.storage.blockAt(at), log.storage.blockAt(at + text.size() - 1));
    for (std::size_t i = 0; i < text.size(); ++i) {
      ASSERT_EQ(attributes, styleNumber(log.styles[at.value + i])) << at + i;
    }
    position = position + text.size();
  });
  EXPECT_EQ(position, std::max(begin, end));
  return runs;
}

TEST(TextStorageRuns, KeepTheStylesOfWhatWasAppended) {
  StyledLog log;
  log.append("one", 1);
  log.append("two\n", 2);
  log.append("three", 1);
  EXPECT_EQ(expectSameRuns(log, rangeOf(0, 12)), 3u);
  EXPECT_EQ(expectSameRuns(log, rangeOf(2, 4)), 2u);
  EXPECT_EQ(expectSameRuns(log, rangeOf(4, 6)), 1u);
}

TEST(TextStorageRuns, AreAbsentFromAnEmptyRange) {
  StyledLog log;
  EXPECT_EQ(expectSameRuns(log, rangeOf(0, 0)), 0u);
  log.append("one", 1);
  EXPECT_EQ(expectSameRuns(log, rangeOf(1, 1)), 0u);
  EXPECT_EQ(expectSameRuns(log, rangeOf(3, 3)), 0u);
}

TEST(TextStorageRuns, OfOneStyleAreJoined) {
  StyledLog log;
  log.append("one", 1);
  log.append("more", 1);
  EXPECT_EQ(expectSameRuns(log, rangeOf(0, 7)), 1u);
}

TEST(TextStorageRuns, AreSplitAtBlockBoundaries) {
  StyledLog log;
  log.append(std::string(2 * kCapacity + 10, 'x'), 7);
  EXPECT_EQ(expectSameRuns(log, rangeOf(0, 2 * kCapacity + 10)), 3u);
  EXPECT_EQ(expectSameRuns(log, rangeOf(kCapacity - 1, kCapacity + 1)), 2u);
  EXPECT_EQ(expectSameRuns(log, rangeOf(kCapacity - 1, kCapacity)), 1u);
}

TEST(TextStorageRuns, ChangeInsideALineEndThatStaysInOneBlock) {
  StyledLog log;
  log.append(std::string(kCapacity - 1, 'x') + "\r", 1);
  log.append("\n", 2);
  log.append("y", 3);
  EXPECT_EQ(expectSameRuns(log, rangeOf(0, kCapacity + 2)), 3u);
  EXPECT_EQ(expectSameRuns(log, rangeOf(kCapacity, kCapacity + 1)), 1u);
}

TEST(TextStorageRuns, KeepStylesThatWereLastUsedLongAgo) {
  StyledLog log;
  for (std::size_t round = 0; round < 3; ++round) {
    for (std::size_t style = 0; style < 500; ++style) {
      log.append("ab", style);
    }
  }
  EXPECT_EQ(expectSameRuns(log, rangeOf(0, 3000)), 1500u);
}

TEST(TextStorageRuns, KeepAStylePerByteThroughoutABlock) {
  StyledLog log;
  AttributedString string;
  for (std::size_t i = 0; i < kCapacity + 100; ++i) {
    string.appendText('x');
    string.endRun(styleNumber(i));
    log.note("x", i);
  }
  log.storage.append(string);
  EXPECT_EQ(expectSameRuns(log, rangeOf(0, kCapacity + 100)), kCapacity + 100);
}

TEST(TextStorageRuns, KeepTheStylesOfStringsWithManyRunsAcrossBlocks) {
  RandomText random(33);
  for (const std::size_t styles : {3u, 20u, 400u}) {
    StyledLog log;
    while (log.text.size() < 3 * kCapacity) {
      AttributedString string;
      for (std::size_t runs = random.below(30); runs > 0; --runs) {
        const std::string piece(1 + random.below(random.below(10) == 0 ? 5000 : 20), "abc\n"[random.below(4)]);
        const std::size_t style = random.below(styles);
        string.appendText(piece);
        string.endRun(styleNumber(style));
        log.note(piece, style);
      }
      log.storage.append(string);
    }
    ASSERT_NO_FATAL_FAILURE(expectSameRuns(log, rangeOf(0, log.text.size())));
    for (int sample = 0; sample < 300; ++sample) {
      const TextPosition begin(random.below(log.text.size() + 1));
      const TextPosition end = std::min(begin + random.below(200), log.storage.end());
      ASSERT_NO_FATAL_FAILURE(expectSameRuns(log, {.begin = begin, .end = end}));
    }
  }
}

}  // namespace
}  // namespace zolt
