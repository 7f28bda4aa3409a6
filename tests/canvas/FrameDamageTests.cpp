#include <gtest/gtest.h>

#include "canvas/CanvasLiterals.h"
#include "canvas/FrameDamage.h"

namespace zolt {
namespace {

constexpr DevicePixels kRow = 10_px;
constexpr DevicePixels kViewport = 50_px;

// The rows from number `first` on.
Frame frameOf(std::uint64_t first, std::size_t rows, DevicePixels top = 0_px) {
  Frame frame;
  frame.rowHeight = kRow;
  frame.firstRowTop = top;
  for (std::uint64_t n = first; n < first + rows; ++n) {
    frame.rows.push_back({.content = {.identity = n, .extent = 50}});
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
  EXPECT_EQ(damage.shift, 0_px);
  EXPECT_TRUE(damage.dirtyRows.empty());
  EXPECT_TRUE(compare(frameOf(3, 6, -4_px), frameOf(3, 6, -4_px)).dirtyRows.empty()) << "nor where rows are cut off";
}

TEST(FrameDamage, IsTheRowWhoseTextGrew) {
  Frame after = frameOf(3, 5);
  after.rows[4].content.extent = 51;
  EXPECT_EQ(compare(frameOf(3, 5), after).dirtyRows, Rows{4});
}

TEST(FrameDamage, IsTheRowWhoseSelectionChanged) {
  Frame after = frameOf(3, 5);
  after.rows[2].selected = {.begin = 0_col, .end = 10_col};
  EXPECT_EQ(compare(frameOf(3, 5), after).dirtyRows, Rows{2});
}

TEST(FrameDamage, IsTheRowWhoseMarksChanged) {
  Frame after = frameOf(3, 5);
  after.rows[1].found = {{.begin = 2_col, .end = 4_col}};
  after.rows[3].current = {.begin = 2_col, .end = 4_col};
  EXPECT_EQ(compare(frameOf(3, 5), after).dirtyRows, (Rows{1, 3}));
}

TEST(FrameDamage, IsTheRowThatWasRewrittenInPlace) {
  Frame after = frameOf(3, 5);
  after.rows[2].content.version = 1;
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
  const FrameDamage damage = compare(frameOf(3, 5), frameOf(3, 6, -4_px));
  EXPECT_EQ(damage.shift, -4_px);
  EXPECT_EQ(damage.dirtyRows, Rows{5}) << "only the row that came into view";
}

TEST(FrameDamage, PaintsARowAgainThatWasCutOffBeforeItMoved) {
  // The last row reached 4 pixels below the viewport: they were never painted.
  const FrameDamage damage = compare(frameOf(3, 5, 4_px), frameOf(3, 5, 0_px));
  EXPECT_EQ(damage.shift, -4_px);
  EXPECT_EQ(damage.dirtyRows, Rows{4});
}

TEST(FrameDamage, PaintsARowAgainThatWasCutOffAtTheTop) {
  const FrameDamage damage = compare(frameOf(3, 6, -4_px), frameOf(3, 6, 0_px));
  EXPECT_EQ(damage.shift, 4_px);
  EXPECT_EQ(damage.dirtyRows, (Rows{0, 5})) << "the last one is still cut off, elsewhere";
}

TEST(FrameDamage, LeavesBlankWhatRowsThatMovedUpLeaveBehind) {
  const FrameDamage damage = compare(frameOf(3, 5), frameOf(5, 3));
  EXPECT_FALSE(damage.everything);
  EXPECT_EQ(damage.shift, -2 * kRow);
  EXPECT_EQ(damage.dirtyRows, Rows{});
}

TEST(FrameDamage, IsEverythingWhenItMovesByTheWholeViewport) {
  EXPECT_FALSE(compare(frameOf(3, 8), frameOf(7, 8)).everything);
  EXPECT_TRUE(compare(frameOf(3, 8), frameOf(8, 8)).everything);
  EXPECT_FALSE(compare(frameOf(7, 8), frameOf(3, 8)).everything);
  EXPECT_TRUE(compare(frameOf(8, 8), frameOf(3, 8)).everything);
}

TEST(FrameDamage, IsEverythingWhenNoRowStays) {
  EXPECT_TRUE(compare(frameOf(3, 5), frameOf(30, 5)).everything);
}

TEST(FrameDamage, IsEverythingWhenRowsHaveAnotherHeight) {
  Frame after = frameOf(3, 5);
  after.rowHeight = kRow + 1_px;
  EXPECT_TRUE(compare(frameOf(3, 5), after).everything);
}

TEST(FrameDamage, IsEverythingWhenRowsVanish) {
  EXPECT_TRUE(compare(frameOf(3, 5), frameOf(3, 4)).everything);
}

}  // namespace
}  // namespace zolt
