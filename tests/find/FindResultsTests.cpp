#include "find/FindResults.h"

#include <gtest/gtest.h>

#include <random>

#include "find/Finding.h"

namespace zolt {
namespace {

// Segments of 100 positions; matches of one byte.
constexpr std::uint64_t kLength = 100;

std::vector<TextRange> matchesAt(std::initializer_list<std::uint64_t> positions) {
  std::vector<TextRange> matches;
  for (const std::uint64_t position : positions) {
    matches.push_back(rangeOf(position, position + 1));
  }
  return matches;
}

TextRange extentOf(std::uint64_t segment) {
  return rangeOf(segment * kLength, (segment + 1) * kLength);
}

FindResults someResults() {
  FindResults results;
  results.set(0, extentOf(0), matchesAt({5, 50}));
  results.set(1, extentOf(1), {});
  results.set(2, extentOf(2), matchesAt({200, 299}));
  return results;
}

TEST(FindResults, AreEmptyAtFirst) {
  const FindResults results;
  EXPECT_EQ(results.count(), 0U);
  EXPECT_FALSE(results.isKnown(0));
  EXPECT_EQ(results.matchesIn(3), nullptr);
}

TEST(FindResults, LeadFromMatchToMatchInBothDirections) {
  const FindResults results = someResults();
  EXPECT_EQ(results.firstFrom(0, 0_pos, 3).match, (rangeOf(5, 6)));
  EXPECT_EQ(results.firstFrom(0, 5_pos, 3).match, (rangeOf(5, 6)));
  EXPECT_EQ(results.firstFrom(0, 6_pos, 3).match, (rangeOf(50, 51)));
  EXPECT_EQ(results.firstFrom(0, 51_pos, 3).match, (rangeOf(200, 201)));
  EXPECT_EQ(results.firstFrom(2, 299_pos, 3).match, (rangeOf(299, 300)));
  EXPECT_EQ(results.lastBefore(2, 300_pos).match, (rangeOf(299, 300)));
  EXPECT_EQ(results.lastBefore(2, 299_pos).match, (rangeOf(200, 201)));
  EXPECT_EQ(results.lastBefore(2, 200_pos).match, (rangeOf(50, 51)));
  EXPECT_EQ(results.lastBefore(0, 50_pos).match, (rangeOf(5, 6)));
}

TEST(FindResults, LeadNowhereAfterTheLastMatch) {
  const FindResults results = someResults();
  for (const FindResults::Step& step : {results.lastBefore(0, 5_pos), results.firstFrom(2, 300_pos, 3)}) {
    EXPECT_FALSE(step.match);
    EXPECT_FALSE(step.missing);
  }
}

TEST(FindResults, LeadToTheFirstSegmentThatIsNotKnown) {
  FindResults results;
  results.set(3, extentOf(3), matchesAt({310}));
  EXPECT_EQ(results.lastBefore(3, 310_pos).missing, 2U);
  EXPECT_EQ(results.firstFrom(3, 311_pos, 6).missing, 4U);
  EXPECT_EQ(results.firstFrom(0, 0_pos, 6).missing, 0U);
}

TEST(FindResults, ReplaceTheMatchesOfASegment) {
  FindResults results = someResults();
  results.set(2, extentOf(2), matchesAt({250}));
  EXPECT_EQ(results.count(), 3U);
  EXPECT_EQ(results.countIn(2), 1U);
  EXPECT_EQ(results.firstFrom(2, 200_pos, 3).match, (rangeOf(250, 251)));
}

TEST(FindResults, NumberAMatchOnceEverythingBeforeItIsKnown) {
  FindResults results;
  results.set(2, extentOf(2), matchesAt({200, 299}));
  results.set(1, extentOf(1), matchesAt({150}));
  EXPECT_EQ(results.countBefore(2, 299_pos), std::nullopt);
  results.set(0, extentOf(0), matchesAt({5, 50}));
  EXPECT_EQ(results.countBefore(2, 299_pos), 4U);
  EXPECT_EQ(results.countBefore(0, 5_pos), 0U);
}

TEST(FindResults, KeepAllCountsButALimitedNumberOfMatches) {
  FindResults results;
  constexpr std::size_t kInSegment = FindResults::kKeptMatches / 4;
  for (std::uint64_t segment = 0; segment < 10; ++segment) {
    std::vector<TextRange> matches;
    for (std::uint64_t i = 0; i < kInSegment; ++i) {
      matches.push_back(rangeOf(segment * kInSegment + i, segment * kInSegment + i + 1));
    }
    results.set(segment, rangeOf(segment * kInSegment, (segment + 1) * kInSegment), std::move(matches));
    ASSERT_NE(results.matchesIn(segment), nullptr);
  }
  EXPECT_EQ(results.count(), 10 * kInSegment);
  std::size_t kept = 0;
  for (std::size_t segment = 0; segment < 10; ++segment) {
    EXPECT_TRUE(results.isKnown(segment));
    EXPECT_EQ(results.countIn(segment), kInSegment);
    if (results.matchesIn(segment) != nullptr) {
      kept += results.matchesIn(segment)->size();
    } else {
      EXPECT_EQ(results.firstFrom(segment, TextPosition(segment * kInSegment), 10).missing, segment);
    }
  }
  EXPECT_LE(kept, FindResults::kKeptMatches);
  EXPECT_LE(results.memoryBytes(), FindResults::kKeptMatches * sizeof(TextRange));
  EXPECT_GT(kept, FindResults::kKeptMatches / 2);
}

TEST(FindResults, KeepTheLatestSegmentHoweverLargeItIs) {
  FindResults results;
  results.set(0, extentOf(0), std::vector<TextRange>(FindResults::kKeptMatches + 1, rangeOf(1, 2)));
  EXPECT_NE(results.matchesIn(0), nullptr);
  results.set(1, extentOf(1), matchesAt({100}));
  EXPECT_EQ(results.matchesIn(0), nullptr);
  EXPECT_NE(results.matchesIn(1), nullptr);
}

TEST(FindResults, ListTheMatchesWhileThereAreFew) {
  EXPECT_EQ(someResults().spread(), matchesAt({5, 50, 200, 299}));
  EXPECT_TRUE(FindResults().spread().empty());
}

TEST(FindResults, ListThePartsOfSegmentsThatHaveMatchesWhenThereAreMany) {
  FindResults results;
  std::vector<TextRange> matches;
  for (std::uint64_t i = 0; i < 5000; ++i) {
    matches.push_back(rangeOf(i, i + 1));
  }
  matches.push_back(rangeOf(63'999, 64'000));
  results.set(0, rangeOf(0, 64'000), matches);
  const std::vector<TextRange> expected{rangeOf(0, 1000),    rangeOf(1000, 2000), rangeOf(2000, 3000),
                                        rangeOf(3000, 4000), rangeOf(4000, 5000), rangeOf(63'000, 64'000)};
  EXPECT_EQ(results.spread(), expected);
}

TEST(FindResults, ListWholeSegmentsWhenThereAreManyOfThoseToo) {
  FindResults results;
  std::vector<TextRange> matches(5000, rangeOf(1000, 1001));
  results.set(10, extentOf(10), matches);
  results.set(80, extentOf(80), matchesAt({8050}));
  EXPECT_EQ(results.spread(), (std::vector<TextRange>{extentOf(10), extentOf(80)}));
}

TEST(FindResults, MatchAPlainListUnderRandomUse) {
  std::mt19937 random(11);
  for (int round = 0; round < 200; ++round) {
    constexpr std::size_t kSegments = 8;
    FindResults results;
    std::vector<std::uint64_t> all;
    for (std::size_t segment = 0; segment < kSegments; ++segment) {
      std::vector<TextRange> matches;
      for (std::uint64_t at = segment * kLength; at < (segment + 1) * kLength; ++at) {
        if (random() % 60 != 0) continue;
        matches.push_back(rangeOf(at, at + 1));
        all.push_back(at);
      }
      results.set(segment, extentOf(segment), matches);
    }
    ASSERT_EQ(results.count(), all.size());
    for (std::uint64_t at = 0; at < kSegments * kLength; at += random() % 20) {
      const auto after = std::ranges::lower_bound(all, at);
      const auto next = results.firstFrom(at / kLength, TextPosition(at), kSegments).match;
      ASSERT_EQ(next.has_value(), after != all.end());
      if (next) {
        ASSERT_EQ(next->begin, TextPosition(*after));
      }
      const auto previous = results.lastBefore(at / kLength, TextPosition(at)).match;
      ASSERT_EQ(previous.has_value(), after != all.begin());
      if (previous) {
        ASSERT_EQ(previous->begin, TextPosition(*(after - 1)));
      }
      ASSERT_EQ(results.countBefore(at / kLength, TextPosition(at)), static_cast<std::uint64_t>(after - all.begin()));
    }
  }
}

TEST(FindResults, ForgetsSegmentsAtTheFrontForGood) {
  FindResults results;
  results.set(5, rangeOf(500, 600), Matches{{510, 520}, {590, 610}});
  results.set(6, rangeOf(600, 700), Matches{{650, 660}});
  results.set(7, rangeOf(700, 800), Matches{{750, 760}});
  results.forgetBefore(6, TextPosition(655));
  EXPECT_EQ(results.count(), 1U);
  EXPECT_FALSE(results.isKnown(5));
  EXPECT_TRUE(results.isKnown(6));
  EXPECT_EQ(results.countIn(6), 0U);
  results.set(5, rangeOf(500, 600), Matches{{510, 520}});
  EXPECT_FALSE(results.isKnown(5));
  EXPECT_FALSE(results.lastBefore(6, TextPosition(700)).match);
  EXPECT_FALSE(results.lastBefore(6, TextPosition(700)).missing);
  EXPECT_EQ(results.countBefore(7, TextPosition(800)), 1U);
  EXPECT_EQ(results.spread(), (Matches{{750, 760}}));
}

TEST(FindResults, ForgetsMatchesBehindTheEnd) {
  FindResults results;
  results.set(0, rangeOf(0, 100), Matches{{10, 20}, {95, 105}});
  results.set(1, rangeOf(100, 200), Matches{{150, 160}});
  results.set(2, rangeOf(200, 300), Matches{{250, 260}});
  results.forgetAfter(3, TextPosition(300));
  EXPECT_EQ(results.count(), 4U);
  results.forgetAfter(2, TextPosition(155));
  EXPECT_EQ(results.count(), 2U);
  EXPECT_FALSE(results.isKnown(2));
  results.forgetAfter(1, TextPosition(100));
  EXPECT_EQ(results.count(), 1U) << "one reached into the next segment";
  EXPECT_EQ(results.spread(), (Matches{{10, 20}}));
}

}  // namespace
}  // namespace zolt
