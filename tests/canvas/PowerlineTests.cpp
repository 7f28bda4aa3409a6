// Separators of coloured segments: they begin as high as the segment.
#include <gtest/gtest.h>

#include <utility>

#include "canvas/SymbolPictures.h"

namespace zolt {
namespace {

constexpr char32_t kArrow = 0xE0B0;
constexpr char32_t kArrowOutline = 0xE0B1;
constexpr char32_t kBulge = 0xE0B4;
constexpr char32_t kBulgeOutline = 0xE0B5;
constexpr char32_t kLowerLeftTriangle = 0xE0B8;
constexpr char32_t kLowerRightTriangle = 0xE0BA;
constexpr char32_t kUpperLeftTriangle = 0xE0BC;
constexpr char32_t kUpperRightTriangle = 0xE0BE;
constexpr char32_t kJaws = 0xE0D2;

class PowerlineTest : public SymbolTest {};

TEST_P(PowerlineTest, TouchesTheWholeEdgeThatItStartsFrom) {
  for (char32_t symbol : {kArrow, kBulge}) {
    const std::vector<int> edge = drawn(symbol).left();
    for (int y = 0; y < size.height; ++y) {
      EXPECT_GT(edge[static_cast<std::size_t>(y)], 0);
      // The slope takes off the corners only.
      const double toCorner = std::min(y, size.height - 1 - y);
      const bool isWhole = edge[static_cast<std::size_t>(y)] == 255;
      EXPECT_TRUE(isWhole || toCorner * 2 * size.width <= size.height) << drawn(symbol);
    }
    EXPECT_GT(std::ranges::max(drawn(symbol).right()), 32) << "and its tip the other edge";
  }
  EXPECT_EQ(drawn(kLowerLeftTriangle).bottom().front(), 255);
  EXPECT_GT(drawn(kLowerLeftTriangle).left().front(), 32);
  EXPECT_GT(drawn(kLowerLeftTriangle).bottom().back(), 32);
}

TEST_P(PowerlineTest, PointsLeftAsItPointsRight) {
  for (const auto& [right, left] : {std::pair{kArrow, 0xE0B2},
                                    {kArrowOutline, 0xE0B3},
                                    {kBulge, 0xE0B6},
                                    {kBulgeOutline, 0xE0B7},
                                    {kJaws, 0xE0D4}}) {
    EXPECT_TRUE(nearlyEqual(drawn(right).mirrored(), drawn(static_cast<char32_t>(left))));
  }
}

TEST_P(PowerlineTest, IsTheSameUpsideDown) {
  for (char32_t symbol : {kArrow, kArrowOutline, kBulge, kBulgeOutline}) {
    EXPECT_TRUE(nearlyEqual(drawn(symbol), drawn(symbol).upsideDown())) << drawn(symbol);
  }
}

TEST_P(PowerlineTest, HasOutlinesWithinItsAreas) {
  for (const auto& [outline, area] : {std::pair{kArrowOutline, kArrow}, {kBulgeOutline, kBulge}}) {
    EXPECT_LT((drawn(outline) | drawn(area)).area(), drawn(area).area() + 0.5);
    EXPECT_EQ(drawn(outline).at(0, size.height / 2), 0) << "they are open";
    EXPECT_GT(std::ranges::max(drawn(outline).right()), 32);
  }
}

TEST_P(PowerlineTest, CutsTheCellInTrianglesThatFillIt) {
  const SymbolPicture full = flat(size, 255);
  EXPECT_TRUE(nearlyEqual(drawn(kLowerLeftTriangle) + drawn(kUpperRightTriangle), full));
  EXPECT_TRUE(nearlyEqual(drawn(kLowerRightTriangle) + drawn(kUpperLeftTriangle), full));
}

TEST_P(PowerlineTest, SeparatesByTheDiagonalsOfBoxes) {
  EXPECT_EQ(drawn(0xE0B9), drawn(U'╲'));
  EXPECT_EQ(drawn(0xE0BF), drawn(U'╲'));
  EXPECT_EQ(drawn(0xE0BB), drawn(U'╱'));
  EXPECT_EQ(drawn(0xE0BD), drawn(U'╱'));
}

TEST_P(PowerlineTest, LeavesTheLightLineOpenBetweenItsJaws) {
  const SymbolPicture jaws = drawn(kJaws);
  const SymbolPicture line = drawn(U'─');
  EXPECT_EQ(jaws.left().size(), line.left().size());
  for (int y = 0; y < size.height; ++y)
    EXPECT_EQ(jaws.at(0, y) + line.at(0, y), 255);
}

INSTANTIATE_TEST_SUITE_P(Sizes, PowerlineTest, kCellSizes, nameOfSize);

}  // namespace
}  // namespace zolt
