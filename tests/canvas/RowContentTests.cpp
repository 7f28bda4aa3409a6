#include "canvas/RowContent.h"

#include <gtest/gtest.h>

#include "canvas/CanvasLiterals.h"

namespace zolt {
namespace {

// Characters 10 to 19: the one at 12 takes columns 2 to 7, the one at 15 columns 10 to 15.
RowContent row() {
  RowContent row;
  row.range = rangeOf(10, 20);
  row.end = 20_col;
  row.steps = {{.position = 10_pos, .column = 0_col},
               {.position = 13_pos, .column = 8_col},
               {.position = 16_pos, .column = 16_col}};
  return row;
}

TEST(RowContent, TellsTheColumnOfEachPosition) {
  EXPECT_EQ(row().columnOf(10_pos), 0_col);
  EXPECT_EQ(row().columnOf(12_pos), 2_col);
  EXPECT_EQ(row().columnOf(13_pos), 8_col);
  EXPECT_EQ(row().columnOf(15_pos), 10_col);
  EXPECT_EQ(row().columnOf(19_pos), 19_col);
}

TEST(RowContent, EndsColumnsAtItsEdges) {
  EXPECT_EQ(row().columnOf(3_pos), 0_col);
  EXPECT_EQ(row().columnOf(20_pos), 20_col);
  EXPECT_EQ(row().columnOf(99_pos), 20_col);
}

TEST(RowContent, TellsThePositionBeforeTheFirstCharacterAtAColumnOrAfterIt) {
  EXPECT_EQ(row().positionAt(0_col), 10_pos);
  EXPECT_EQ(row().positionAt(CanvasColumn(-1)), 10_pos);
  EXPECT_EQ(row().positionAt(2_col), 12_pos);
  EXPECT_EQ(row().positionAt(3_col), 13_pos) << "within a wide character";
  EXPECT_EQ(row().positionAt(8_col), 13_pos);
  EXPECT_EQ(row().positionAt(15_col), 16_pos);
  EXPECT_EQ(row().positionAt(19_col), 19_pos);
  EXPECT_EQ(row().positionAt(99_col), 20_pos);
}

TEST(RowContent, MayStartAfterItsFirstColumn) {
  RowContent late;
  late.range = rangeOf(10, 12);
  late.end = 7_col;
  late.steps = {{.position = 10_pos, .column = 5_col}};
  EXPECT_EQ(late.columnOf(10_pos), 5_col);
  EXPECT_EQ(late.columnOf(9_pos), 0_col);
  EXPECT_EQ(late.positionAt(0_col), 10_pos);
  EXPECT_EQ(late.positionAt(4_col), 10_pos);
  EXPECT_EQ(late.positionAt(6_col), 11_pos);
}

TEST(RowContent, TellsTheColumnsOfTheTextThatItShares) {
  EXPECT_EQ(row().columnsOf(rangeOf(0, 99)), (ColumnRange{.begin = 0_col, .end = 20_col}));
  EXPECT_EQ(row().columnsOf(rangeOf(12, 13)), (ColumnRange{.begin = 2_col, .end = 8_col}));
  EXPECT_EQ(row().columnsOf(rangeOf(0, 10)), ColumnRange());
  EXPECT_EQ(row().columnsOf(rangeOf(20, 30)), ColumnRange());
  EXPECT_EQ(row().columnsOf(rangeOf(15, 15)), ColumnRange());
}

// "a", a wide character of three bytes, "b".
RowContent withAWideCharacter() {
  RowContent row;
  row.range = rangeOf(10, 15);
  row.end = 4_col;
  row.steps = {{.position = 10_pos, .column = 0_col},
               {.position = 11_pos, .column = 1_col, .isUnit = true},
               {.position = 14_pos, .column = 3_col}};
  return row;
}

TEST(RowContent, NeverPointsIntoAUnit) {
  const RowContent row = withAWideCharacter();
  EXPECT_EQ(row.positionAt(1_col), 11_pos);
  EXPECT_EQ(row.positionAt(2_col), 14_pos);
  EXPECT_EQ(row.positionAt(3_col), 14_pos);
  EXPECT_EQ(row.columnOf(12_pos), 1_col);
  EXPECT_EQ(row.columnOf(13_pos), 1_col);
  EXPECT_EQ(row.columnOf(14_pos), 3_col);
  EXPECT_EQ(row.columnsOf(rangeOf(11, 14)), (ColumnRange{.begin = 1_col, .end = 3_col}));
}

TEST(RowContent, TellsTheCharacterAroundAPosition) {
  const RowContent row = withAWideCharacter();
  EXPECT_EQ(row.characterAt(10_pos), rangeOf(10, 11));
  EXPECT_EQ(row.characterAt(11_pos), rangeOf(11, 14));
  EXPECT_EQ(row.characterAt(13_pos), rangeOf(11, 14));
  EXPECT_EQ(row.characterAt(14_pos), rangeOf(14, 15));
  EXPECT_TRUE(row.characterAt(15_pos).empty());
  EXPECT_TRUE(row.characterAt(9_pos).empty());
}

TEST(RowContent, KeepsTheTextOfItsPieces) {
  RowContent row;
  row.addText(0_col, "ab", {});
  row.addBlank({.begin = 2_col, .end = 4_col}, {.background = qRgb(1, 2, 3)});
  row.addCluster({.begin = 4_col, .end = 6_col}, "\u6F22", {.blinks = true});
  EXPECT_EQ(row.text, "ab  \u6F22");
  ASSERT_EQ(row.pieces.size(), 3U);
  EXPECT_EQ(row.textOf(row.pieces[2]), "\u6F22");
  EXPECT_EQ(row.pieces[1].range(), (ColumnRange{.begin = 2_col, .end = 4_col}));
  EXPECT_TRUE(row.pieces[2].isCluster);
  EXPECT_FALSE(row.pieces[1].isCluster);
  EXPECT_TRUE(row.blinks);
}

TEST(RowContent, BlinksWithAnyOfItsText) {
  RowContent row;
  row.addText(0_col, "ab", {});
  EXPECT_FALSE(row.blinks);
  row.addText(2_col, "cd", {.blinks = true});
  row.addText(4_col, "ef", {});
  row.addCluster({.begin = 6_col, .end = 8_col}, "\u6F22", {});
  EXPECT_TRUE(row.blinks);
}

TEST(RowContent, NeverPointsBehindItsLastColumn) {
  RowContent ending;
  ending.range = rangeOf(10, 14);
  ending.end = 2_col;
  ending.steps = {{.position = 10_pos, .column = 0_col}};
  EXPECT_EQ(ending.columnOf(13_pos), 2_col);
  RowContent wide = withAWideCharacter();
  wide.steps.pop_back();
  wide.range.end = 14_pos;
  wide.end = 3_col;
  EXPECT_EQ(wide.columnOf(14_pos), 3_col);
}

TEST(RowContent, IsEmptyWithoutSteps) {
  EXPECT_EQ(RowContent().columnOf(0_pos), 0_col);
  EXPECT_EQ(RowContent().positionAt(5_col), 0_pos);
}

}  // namespace
}  // namespace zolt
