// Lines so long that they are searched in parts.
#include <gtest/gtest.h>

#include "find/Finding.h"

namespace zolt {
namespace {

constexpr std::size_t kPart = FindScanner::kLongLineBytes;
constexpr std::size_t kOverlap = FindScanner::kOverlapBytes;
constexpr FindOptions kExpression{.matchCase = true, .regularExpression = true};
constexpr std::size_t kChunkSizes[] = {1, 4096, 65536, 100'000, 10'000'000};

// A line of dots with words near all places where parts may begin and end.
struct LongLine {
  std::string text;
  Matches words;
};

LongLine withWordsNearPartEnds(std::size_t size) {
  LongLine line{std::string(size, '.'), {}};
  const std::string word = "needle17";
  for (std::size_t end = kPart - kOverlap; end + 100 < size; end += 7) {
    // Dense near the ends of parts and overlaps, sparse elsewhere.
    const std::size_t within = end % (kPart - kOverlap);
    const bool near = within < 60 || (within > kOverlap - 60 && within < kOverlap + 60);
    if (!near && end % 997 != 0) continue;
    if (!line.words.empty() && line.words.back().end.value >= end) continue;
    line.text.replace(end, word.size(), word);
    line.words.push_back(rangeOf(end, end + word.size()));
  }
  return line;
}

TEST(LongLine, LosesNoMatchShorterThanTheOverlap) {
  const LongLine line = withWordsNearPartEnds(4 * kPart);
  ASSERT_GT(line.words.size(), 50U);
  for (const std::size_t size : kChunkSizes) {
    for (const char* query : {"needle17", "needle\\d+", "\\bneedle\\d+\\b", "needle[0-9]+\\C??"}) {
      EXPECT_EQ(findInChunksOf(size, line.text, query, kExpression), line.words) << query << " by " << size;
    }
    EXPECT_EQ(findInChunksOf(size, line.text, "needle17", {}), line.words) << size;
    const FindOptions wholeWord{.wholeWord = true, .regularExpression = true};
    EXPECT_EQ(findInChunksOf(size, line.text, "needle\\d+", wholeWord), line.words) << size;
  }
}

TEST(LongLine, HasFullMatchesAcrossTheEndOfAPart) {
  const std::string text = std::string(kPart - kOverlap, '.') + std::string(kOverlap + 1000, 'x') + "...";
  for (const std::size_t size : kChunkSizes) {
    EXPECT_EQ(findInChunksOf(size, text, "x+", kExpression), (Matches{{kPart - kOverlap, kPart + 1000}})) << size;
  }
}

TEST(LongLine, BeginsAndEndsOnceAndNotWithItsParts) {
  const std::string text = "short\n" + std::string(3 * kPart + 12345, 'x') + "\nx";
  const std::size_t end = text.size() - 2;
  for (const std::size_t size : kChunkSizes) {
    EXPECT_EQ(findInChunksOf(size, text, "^x", kExpression), (Matches{{6, 7}, {end + 1, end + 2}})) << size;
    EXPECT_EQ(findInChunksOf(size, text, "\\Ax", kExpression), (Matches{{6, 7}, {end + 1, end + 2}})) << size;
    EXPECT_EQ(findInChunksOf(size, text, "\\bx", kExpression), (Matches{{6, 7}, {end + 1, end + 2}})) << size;
    EXPECT_EQ(findInChunksOf(size, text, "x\\b", kExpression), (Matches{{end - 1, end}, {end + 1, end + 2}})) << size;
    EXPECT_EQ(findInChunksOf(size, text, "x$", kExpression), (Matches{{end - 1, end}, {end + 1, end + 2}})) << size;
    EXPECT_EQ(findInChunksOf(size, text, "x\\z", kExpression), (Matches{{end - 1, end}, {end + 1, end + 2}})) << size;
  }
}

TEST(LongLine, IsSearchedInPartsOnlyBeyondTheLimit) {
  for (const std::size_t size : kChunkSizes) {
    for (const char* lineEnd : {"", "\n", "\r\n", "\nyy\n"}) {
      const std::string whole = std::string(kPart, 'x') + lineEnd;
      EXPECT_EQ(findInChunksOf(size, whole, "x+", kExpression), (Matches{{0, kPart}})) << size;
      EXPECT_EQ(findInChunksOf(size, whole, "x+$", kExpression), (Matches{{0, kPart}})) << size;
      const std::string longer = std::string(kPart + 1, 'x') + lineEnd;
      EXPECT_EQ(findInChunksOf(size, longer, "x+", kExpression), (Matches{{0, kPart}, {kPart, kPart + 1}})) << size;
      // Only the last part has the end of the line.
      for (const char* query : {"x+$", "x+\\z", "x+\\b"}) {
        EXPECT_EQ(findInChunksOf(size, longer, query, kExpression), (Matches{{kPart - kOverlap, kPart + 1}})) << query;
      }
    }
  }
}

TEST(LongLine, IsSplitIntoTheSamePartsHoweverItIsChunked) {
  std::string text;
  for (std::size_t i = 0; text.size() < 3 * kPart; ++i) {
    text += i % 3 == 0 ? "größe " : i % 7 == 0 ? "→" : "abc";
  }
  text += "\r\nab\r" + std::string(2 * kPart, 'a') + "b\nab";
  for (const char* query : {".+", "[^ ]+", "a.*b", "(abc)+", "\\C+", ".*ö", "a+b"}) {
    const Matches expected = findInChunksOf(text.size(), text, query, kExpression);
    EXPECT_FALSE(expected.empty());
    for (const std::size_t size : kChunkSizes) {
      EXPECT_EQ(findInChunksOf(size, text, query, kExpression), expected) << query << " by " << size;
    }
  }
}

TEST(LongLine, IsHeldOnePartAtATime) {
  const std::string chunk(100'000, 'x');
  for (const char* query : {"y", "x$"}) {
    for (const FindOptions options : {kExpression, FindOptions{}}) {
      FindScanner scanner(FindPattern::compile(query, options).value());
      Matches matches;
      for (int i = 0; i < 100; ++i) {
        scanner.feed(chunk, matches);
        ASSERT_LE(scanner.heldBytes(), options.regularExpression ? kPart + 1 : 2);
      }
    }
  }
}

}  // namespace
}  // namespace zolt
