#include <gtest/gtest.h>

#include <algorithm>

#include "canvas/CanvasLiterals.h"
#include "canvas/ScrollModel.h"

namespace zolt {
namespace {

TEST(ScrollModel, HasNothingToScrollWhenEverythingFits) {
  const ScrollModel model{.contentHeight = 300_px, .viewportHeight = 600_px};
  EXPECT_EQ(model.maximum(), 0_px);
  EXPECT_EQ(model.barMaximum(), 0);
  EXPECT_EQ(model.offsetFor(0), 0_px);
}

TEST(ScrollModel, CountsPixelsWhileTheyFitTheScrollBar) {
  const ScrollModel model{.contentHeight = 10'000_px, .viewportHeight = 600_px};
  EXPECT_EQ(model.maximum(), 9'400_px);
  EXPECT_EQ(model.barMaximum(), 9'400);
  EXPECT_EQ(model.barValue(1'234_px), 1'234);
  EXPECT_EQ(model.offsetFor(1'234), 1'234_px);
}

TEST(ScrollModel, ReachesBothEndsAtAnySize) {
  for (const DevicePixels height : {601_px, (1LL << 31) * 1_px, (1LL << 40) * 1_px, 1'700'000'000'000_px}) {
    const ScrollModel model{.contentHeight = height, .viewportHeight = 600_px};
    EXPECT_GT(model.barMaximum(), 0);
    EXPECT_EQ(model.offsetFor(0), 0_px);
    EXPECT_EQ(model.offsetFor(model.barMaximum()), height - 600_px);
    EXPECT_EQ(model.barValue(model.maximum()), model.barMaximum());
    EXPECT_GE(model.barPageStep(), 1);
  }
}

TEST(ScrollModel, KeepsOffsetsWithinAStepAtAnySize) {
  const ScrollModel model{.contentHeight = (1LL << 40) * 1_px, .viewportHeight = 600_px};
  const DevicePixels offset = (1LL << 39) * 1_px + 12'345_px;
  const DevicePixels distance = model.offsetFor(model.barValue(offset)) - offset;
  EXPECT_LE(std::max(distance, -distance), model.pixelsPerStep());
}

TEST(ScrollModel, ClampsOffsets) {
  const ScrollModel model{.contentHeight = 1'000_px, .viewportHeight = 600_px};
  EXPECT_EQ(model.clamped(-5_px), 0_px);
  EXPECT_EQ(model.clamped(100'000_px), 400_px);
}

}  // namespace
}  // namespace zolt
