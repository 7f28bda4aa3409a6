#include <gtest/gtest.h>

#include "view/canvas/FrameDamage.h"

namespace zolt {
namespace {

constexpr Pixels kRow = 10;
constexpr Pixels kViewport = 50;

// Rows that show the characters from 100 * n on, for each n from `first` on.
Frame frameOf(CanvasPosition first, std::size_t rows, Pixels top = 0) {
  Frame frame;
  frame.rowHeight = kRow;
  frame.firstRowTop = top;
  for (CanvasPosition n = first; n < first + rows; ++n) {
    frame.rows.push_back({.text = {.begin = 100 * n, .end = 100 * n + 50}, .selected = {}});
  }
  return frame;
}

FrameDamage compare(const Frame& before, const Frame& after) {
  return compareFrames(before, after, kViewport);
}

using Rows = std::vector<std::size_t>;

TEST(FrameDamage, IsNothingBetweenEqualFrames) {
  const FrameDamage damage = compare(frameOf(3, 5), frameOf(3, 5));
  EXPECT_FALSE(damage.everything);
  EXPECT_EQ(damage.shift, 0);
  EXPECT_TRUE(damage.dirtyRows.empty());
}

TEST(FrameDamage, IsTheRowWhoseTextGrew) {
  Frame after = frameOf(3, 5);
  after.rows[4].text.end += 1;
  EXPECT_EQ(compare(frameOf(3, 5), after).dirtyRows, Rows{4});
}

TEST(FrameDamage, IsTheRowWhoseSelectionChanged) {
  Frame after = frameOf(3, 5);
  after.rows[2].selected = {.begin = 500, .end = 510};
  EXPECT_EQ(compare(frameOf(3, 5), after).dirtyRows, Rows{2});
}

TEST(FrameDamage, MovesThePictureWhenTheTextScrolls) {
  const FrameDamage down = compare(frameOf(3, 5), frameOf(5, 5));
  EXPECT_FALSE(down.everything);
  EXPECT_EQ(down.shift, -2 * kRow);
  EXPECT_EQ(down.dirtyRows, (Rows{3, 4}));
  const FrameDamage up = compare(frameOf(5, 5), frameOf(3, 5));
  EXPECT_EQ(up.shift, 2 * kRow);
  EXPECT_EQ(up.dirtyRows, (Rows{0, 1}));
}

TEST(FrameDamage, MovesByPixelsToo) {
  const FrameDamage damage = compare(frameOf(3, 5), frameOf(3, 6, -4));
  EXPECT_EQ(damage.shift, -4);
  EXPECT_EQ(damage.dirtyRows, Rows{5}) << "only the row that came into view";
}

TEST(FrameDamage, PaintsARowAgainThatWasCutOffBeforeItMoved) {
  // The last row reached 4 pixels below the viewport: they were never painted.
  const FrameDamage damage = compare(frameOf(3, 5, 4), frameOf(3, 5, 0));
  EXPECT_EQ(damage.shift, -4);
  EXPECT_EQ(damage.dirtyRows, Rows{4});
}

TEST(FrameDamage, IsEverythingWhenNoRowStays) {
  EXPECT_TRUE(compare(frameOf(3, 5), frameOf(30, 5)).everything);
}

TEST(FrameDamage, IsEverythingWhenRowsHaveAnotherHeight) {
  Frame after = frameOf(3, 5);
  after.rowHeight = kRow + 1;
  EXPECT_TRUE(compare(frameOf(3, 5), after).everything);
}

TEST(FrameDamage, IsEverythingWhenRowsVanish) {
  EXPECT_TRUE(compare(frameOf(3, 5), frameOf(3, 4)).everything);
}

}  // namespace
}  // namespace zolt
