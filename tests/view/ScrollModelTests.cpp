#include <gtest/gtest.h>

#include <cstdlib>

#include "view/canvas/ScrollModel.h"

namespace zolt {
namespace {

TEST(ScrollModel, HasNothingToScrollWhenEverythingFits) {
  const ScrollModel model{.contentHeight = 300, .viewportHeight = 600};
  EXPECT_EQ(model.maximum(), 0);
  EXPECT_EQ(model.barMaximum(), 0);
  EXPECT_EQ(model.offsetFor(0), 0);
}

TEST(ScrollModel, CountsPixelsWhileTheyFitTheScrollBar) {
  const ScrollModel model{.contentHeight = 10'000, .viewportHeight = 600};
  EXPECT_EQ(model.maximum(), 9'400);
  EXPECT_EQ(model.barMaximum(), 9'400);
  EXPECT_EQ(model.barValue(1'234), 1'234);
  EXPECT_EQ(model.offsetFor(1'234), 1'234);
}

TEST(ScrollModel, ReachesBothEndsAtAnySize) {
  for (const Pixels height : {Pixels{601}, Pixels{1} << 31, Pixels{1} << 40, Pixels{17} * 100'000'000'000}) {
    const ScrollModel model{.contentHeight = height, .viewportHeight = 600};
    EXPECT_GT(model.barMaximum(), 0);
    EXPECT_EQ(model.offsetFor(0), 0);
    EXPECT_EQ(model.offsetFor(model.barMaximum()), height - 600);
    EXPECT_EQ(model.barValue(model.maximum()), model.barMaximum());
    EXPECT_GE(model.barPageStep(), 1);
  }
}

TEST(ScrollModel, KeepsOffsetsWithinAStepAtAnySize) {
  const ScrollModel model{.contentHeight = Pixels{1} << 40, .viewportHeight = 600};
  const Pixels offset = (Pixels{1} << 39) + 12'345;
  EXPECT_LE(std::abs(model.offsetFor(model.barValue(offset)) - offset), model.pixelsPerStep());
}

TEST(ScrollModel, ClampsOffsets) {
  const ScrollModel model{.contentHeight = 1'000, .viewportHeight = 600};
  EXPECT_EQ(model.clamped(-5), 0);
  EXPECT_EQ(model.clamped(100'000), 400);
}

}  // namespace
}  // namespace zolt
