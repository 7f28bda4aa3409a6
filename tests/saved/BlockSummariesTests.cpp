#include "saved/BlockSummaries.h"

#include <gtest/gtest.h>

#include <random>

namespace zolt {
namespace {

std::vector<BlockSummary> twoSummaries() {
  return {{.start = TextPosition(1ULL << 40),
           .firstLine = 1ULL << 33,
           .startColumn = 7,
           .continuedEndColumn = 9,
           .longestLine = 300,
           .size = 65'000,
           .lineStarts = 812,
           .endColumn = UINT32_MAX,
           .rule = ColumnRule::Clusters,
           .continuesALine = true,
           .endsALine = false},
          {.start = TextPosition((1ULL << 40) + 65'000), .firstLine = (1ULL << 33) + 812, .size = 3, .lineStarts = 1}};
}

TEST(BlockSummaries, ComeBackAsTheyWere) {
  EXPECT_EQ(decodedSummaries(encodedSummaries(twoSummaries())), twoSummaries());
  EXPECT_EQ(decodedSummaries(""), std::vector<BlockSummary>());
}

TEST(BlockSummaries, AreOfBlocksThatFollowEachOther) {
  auto summaries = twoSummaries();
  summaries[1].start = summaries[1].start + 1;
  EXPECT_EQ(decodedSummaries(encodedSummaries(summaries)), std::nullopt);
}

TEST(BlockSummaries, AreOfBlocksThatCanBe) {
  const auto refused = [](auto change) {
    auto summaries = twoSummaries();
    summaries.pop_back();
    change(summaries[0]);
    return !decodedSummaries(encodedSummaries(summaries)).has_value();
  };
  EXPECT_FALSE(refused([](BlockSummary&) {}));
  EXPECT_TRUE(refused([](BlockSummary& each) { each.rule = static_cast<ColumnRule>(4); }));
  EXPECT_TRUE(refused([](BlockSummary& each) { each.size = 0; }));
  EXPECT_TRUE(refused([](BlockSummary& each) { each.size = (16U << 20) + 1; }));
  EXPECT_TRUE(refused([](BlockSummary& each) { each.lineStarts = each.size + 1; }));
  EXPECT_TRUE(refused([](BlockSummary& each) {
    each.lineStarts = 0;
    each.continuesALine = false;
  }));
}

TEST(BlockSummaries, AreRefusedWhenTheyAreCutOff) {
  const std::string bytes = encodedSummaries(twoSummaries());
  const std::string first = encodedSummaries({twoSummaries().front()});
  for (std::size_t size = 1; size < bytes.size(); ++size) {
    if (size == first.size()) continue;
    EXPECT_EQ(decodedSummaries(bytes.substr(0, size)), std::nullopt) << size;
  }
}

TEST(BlockSummaries, HoldForAnyBytes) {
  std::mt19937 random(1);
  std::string bytes = encodedSummaries(twoSummaries());
  for (int i = 0; i < 20'000; ++i) {
    std::string damaged = bytes;
    damaged[random() % damaged.size()] = static_cast<char>(random());
    const auto summaries = decodedSummaries(damaged);
    if (!summaries) continue;
    for (const BlockSummary& each : *summaries) {
      ASSERT_LE(each.size, 16U << 20);
      ASSERT_GT(each.fragments(), 0U);
    }
  }
}

}  // namespace
}  // namespace zolt
