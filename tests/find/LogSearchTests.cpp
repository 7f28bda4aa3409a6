// Compares the search of a history, segment by segment, with a naive search of the whole text.
#include "find/LogSearch.h"

#include <gtest/gtest.h>

#include <string>

#include "find/Finding.h"
#include "find/NaiveFind.h"
#include "history/TextStorage.h"
#include "support/TextPositions.h"
#include "text/RandomText.h"

namespace zolt {
namespace {

constexpr Piece kWords[] = {{"a", 8}, {"b", 5}, {"ab", 5}, {" ", 6}, {"_", 1}, {"\n", 3}, {"\r", 1}, {"aaa", 2}};

std::vector<TextRange> findInAll(const TextStorage& storage, const FindPattern& pattern) {
  FindInterrupt never;
  std::vector<TextRange> all;
  for (std::size_t segment = 0; segment < segmentCount(storage); ++segment) {
    const TextSnapshot snapshot = snapshotOfSegments(storage, segment, segment + 1);
    const std::vector<TextRange> matches = findInSegment(pattern, snapshot, segment, never);
    all.insert(all.end(), matches.begin(), matches.end());
  }
  return all;
}

FindPattern patternOf(std::string_view query, FindOptions options = {.matchCase = true}) {
  return FindPattern::compile(query, options).value();
}

constexpr std::size_t kSegmentBytes = kSegmentBlocks * TextBlock::capacity;

TEST(LogSearch, HasTheMatchesOfANaiveSearchOfTheWholeText) {
  struct Query {
    const char* text;
    FindOptions options;
  };
  constexpr Query kQueries[] = {{"ab", {.matchCase = true}},
                                {"aa", {.matchCase = true}},
                                {"ab", {.matchCase = true, .wholeWord = true}},
                                {"a b", {}},
                                {"^a+", {.matchCase = true, .regularExpression = true}},
                                {"b.*$", {.matchCase = true, .regularExpression = true}}};
  RandomText random(5, kWords);
  for (int round = 0; round < 3; ++round) {
    std::string text;
    while (text.size() < 2 * kSegmentBytes + 1000 * static_cast<std::size_t>(round)) {
      text += random.text(1000);
    }
    TextStorage storage({.hotBlocks = 2});
    storage.append(AttributedString(text, TextAttributes()));
    storage.waitUntilIdle();
    ASSERT_EQ(segmentCount(storage), 3U);
    for (const Query& query : kQueries) {
      ASSERT_EQ(findInAll(storage, patternOf(query.text, query.options)), naiveFind(text, query.text, query.options))
          << query.text;
    }
  }
}

TEST(LogSearch, FindsAMatchAcrossTwoSegmentsOnceAndInTheFirst) {
  for (std::size_t shift = 0; shift <= 8; ++shift) {
    TextStorage storage;
    const std::string before(kSegmentBytes - shift, '.');
    storage.append(AttributedString(before + "needle..." + std::string(1000, '.'), TextAttributes()));
    FindInterrupt never;
    const FindPattern pattern = patternOf("needle");
    const TextSnapshot both = snapshotOfSegments(storage, 0, 2);
    const std::vector<TextRange> expected{rangeOf(before.size(), before.size() + 6)};
    const bool beginsInFirst = shift > 0;
    EXPECT_EQ(findInSegment(pattern, both, 0, never), beginsInFirst ? expected : std::vector<TextRange>()) << shift;
    EXPECT_EQ(findInSegment(pattern, both, 1, never), beginsInFirst ? std::vector<TextRange>() : expected) << shift;
  }
}

TEST(LogSearch, MatchesTheStartOfALineOnlyWhereALineStarts) {
  TextStorage storage;
  const std::string line(kSegmentBytes + kSegmentBytes / 2, 'x');
  storage.append(AttributedString(line + "\n" + line, TextAttributes()));
  const auto found = findInAll(storage, patternOf("^x", {.regularExpression = true}));
  EXPECT_EQ(found, (Matches{{0, 1}, {line.size() + 1, line.size() + 2}}));
}

TEST(LogSearch, FindsEveryByteOfALineOfManySegments) {
  TextStorage storage;
  storage.append(AttributedString(std::string(3 * kSegmentBytes, 'x'), TextAttributes()));
  EXPECT_EQ(findInAll(storage, patternOf("x")).size(), 3 * kSegmentBytes);
  EXPECT_EQ(findInAll(storage, patternOf("xx")).size(), 3 * kSegmentBytes / 2);
}

TEST(LogSearch, KnowsTheSegmentOfAPosition) {
  TextStorage storage;
  EXPECT_EQ(segmentCount(storage), 1U);
  EXPECT_EQ(segmentAt(storage, 0_pos), 0U);
  storage.append(AttributedString(std::string(kSegmentBytes + 1, 'x'), TextAttributes()));
  EXPECT_EQ(segmentCount(storage), 2U);
  EXPECT_EQ(segmentAt(storage, TextPosition(kSegmentBytes - 1)), 0U);
  EXPECT_EQ(segmentAt(storage, TextPosition(kSegmentBytes)), 1U);
}

TEST(LogSearch, CanBeStoppedWhileAnExpressionTakesQuadraticTime) {
  TextStorage storage;
  storage.append(AttributedString(std::string(kSegmentBytes, 'a'), TextAttributes()));
  const TextSnapshot snapshot = snapshotOfSegments(storage, 0, 1);
  for (const char* expression : {"a+b|a", "(a+b)?"}) {
    for (const bool wholeWord : {false, true}) {
      int checks = 0;
      FindInterrupt interrupt([&] { return ++checks > 4; });
      const FindPattern pattern = patternOf(expression, {.wholeWord = wholeWord, .regularExpression = true});
      const auto matches = findInSegment(pattern, snapshot, 0, interrupt);
      EXPECT_LT(matches.size(), kSegmentBytes) << expression;
      EXPECT_EQ(checks == 5, interrupt.hasStopped()) << expression;
      if (!wholeWord) {
        EXPECT_TRUE(interrupt.hasStopped()) << expression;
      }
    }
  }
}

}  // namespace
}  // namespace zolt
