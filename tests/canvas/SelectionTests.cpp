#include "canvas/Selection.h"

#include <gtest/gtest.h>

#include <utility>

#include "canvas/CanvasLiterals.h"

namespace zolt {
namespace {

SelectionEnd corner(std::uint64_t position, CanvasColumn column) {
  return {.text = rangeOf(position, position), .column = column};
}

TEST(Selection, ReachesFromItsOriginToTheOtherEndInEitherDirection) {
  Selection selection;
  selection.begin(SelectionUnit::Word, rangeOf(10, 14));
  EXPECT_EQ(selection.range(), rangeOf(10, 14));
  selection.extend(rangeOf(20, 25));
  EXPECT_EQ(selection.range(), rangeOf(10, 25));
  selection.extend(rangeOf(2, 5));
  EXPECT_EQ(selection.range(), rangeOf(2, 14)) << "the word of the origin stays selected";
  EXPECT_FALSE(selection.empty());
  selection.clear();
  EXPECT_TRUE(selection.empty());
}

TEST(Selection, OfARectangleHasTheColumnsBetweenItsCornersInAnyOrder) {
  const ColumnRange columns{.begin = 3_col, .end = 8_col};
  for (const auto& [from, to] : {std::pair(3_col, 8_col), std::pair(8_col, 3_col)}) {
    Selection selection;
    selection.begin(SelectionUnit::Rectangle, corner(10, from));
    selection.extend(corner(50, to));
    EXPECT_EQ(selection.columns(), columns);
    EXPECT_EQ(selection.range(), rangeOf(10, 50));
    EXPECT_FALSE(selection.empty());
  }
}

TEST(Selection, OfARectangleIsEmptyWithoutColumnsAndNotForWantOfText) {
  Selection selection;
  selection.begin(SelectionUnit::Rectangle, corner(10, 3_col));
  selection.extend(corner(50, 3_col));
  EXPECT_TRUE(selection.empty());
  selection.extend(corner(10, 8_col));
  EXPECT_FALSE(selection.empty()) << "blank cells to the right of the text";
}

TEST(Selection, FollowsItsTextWithBothOfItsEnds) {
  Selection selection;
  selection.begin(SelectionUnit::Word, rangeOf(10, 14));
  selection.extend(rangeOf(20, 25));
  // Ten characters were put in at 12.
  const auto moved = [](TextPosition position) { return position < 12_pos ? position : position + 10; };
  selection.move(moved);
  EXPECT_EQ(selection.range(), rangeOf(10, 35));
  selection.extend(rangeOf(2, 5));
  EXPECT_EQ(selection.range(), rangeOf(2, 24)) << "the origin has grown";
  selection.move([](TextPosition position) { return position + 1; });
  EXPECT_EQ(selection.range(), rangeOf(3, 25));
}

}  // namespace
}  // namespace zolt
