// Making the text larger and smaller.
#include "view/ViewFixture.h"

namespace zolt {
namespace {

using ZoomTest = test::TextViewTest;

TEST_F(ZoomTest, ChangesTheFontByALogicalPixelAndTheSizeInCharactersWithIt) {
  const TerminalSize before = view.gridSize();
  view.zoomIn();
  EXPECT_EQ(view.textFont().size, 15);
  EXPECT_LE(view.gridSize().rows, before.rows);
  for (int i = 0; i < 7; ++i) {
    view.zoomOut();
  }
  EXPECT_EQ(view.textFont().size, 8);
  EXPECT_GT(view.gridSize().columns, before.columns);
  view.resetZoom();
  EXPECT_EQ(view.textFont().size, 14);
  EXPECT_EQ(view.gridSize(), before);
}

TEST_F(ZoomTest, EndsAtTheSmallestAndTheLargestSize) {
  for (int i = 0; i < 200; ++i) {
    view.zoomOut();
  }
  EXPECT_EQ(view.textFont().size, TextCanvas::smallestZoom.value);
  view.zoomIn();
  EXPECT_EQ(view.textFont().size, TextCanvas::smallestZoom.value + 1) << "steps past the end do not count";
  for (int i = 0; i < 200; ++i) {
    view.zoomIn();
  }
  EXPECT_EQ(view.textFont().size, TextCanvas::largestZoom.value);
}

TEST_F(ZoomTest, StaysWhenAnotherFontIsSet) {
  view.zoomIn();
  view.zoomIn();
  view.setTextFont({.size = 20});
  EXPECT_EQ(view.textFont().size, 22);
  view.resetZoom();
  EXPECT_EQ(view.textFont().size, 20);
}

TEST_F(ZoomTest, LeavesASizeOutOfItsRangeAloneAndLeadsBackIntoIt) {
  view.setTextFont({.size = 4});
  EXPECT_EQ(view.textFont().size, 4);
  view.zoomOut();
  EXPECT_EQ(view.textFont().size, 4);
  view.zoomIn();
  EXPECT_EQ(view.textFont().size, 6);
  view.resetZoom();
  EXPECT_EQ(view.textFont().size, 4);
}

}  // namespace
}  // namespace zolt
