#include <gtest/gtest.h>

#include <string>

#include "emulation/ScreenPicture.h"
#include "emulation/TerminalScreenBuffer.h"

namespace zolt {
namespace {

TEST(ScreenBuffer, ReportsItsSizeBeforeItHasCells) {
  const TerminalScreenBuffer buffer;
  EXPECT_TRUE(buffer.cells().empty());
  EXPECT_TRUE(buffer.scrollbackBuffer().empty());
  EXPECT_EQ(buffer.rows(), 24);
  EXPECT_EQ(buffer.cols(), 80);
  EXPECT_EQ(buffer.cursorPosition, (Cursor{0, 0}));
  EXPECT_EQ(TerminalScreenBuffer::maxScrollbackLines, 10000);
}

TEST(ScreenBuffer, IsBlankAfterTheFirstResize) {
  const TerminalScreenBuffer buffer = screenOf(24, 80);
  ASSERT_EQ(buffer.cells().size(), 24u);
  for (const TerminalScreenBuffer::Row& row : buffer.cells()) {
    ASSERT_EQ(row.size(), 80u);
    for (const TerminalCell& cell : row) {
      ASSERT_EQ(cell, TerminalCell{});
    }
  }
  EXPECT_TRUE(buffer.scrollbackBuffer().empty());
  EXPECT_EQ(buffer.cursorPosition, (Cursor{0, 0}));
}

TEST(ScreenBuffer, WritesCharactersFromLeftToRightWithoutColours) {
  TerminalScreenBuffer buffer = screenOf(24, 80);
  buffer.parseAndRender("abc");
  const auto& row = buffer.cells()[0];
  EXPECT_EQ(row[0], plainCell("a"));
  EXPECT_EQ(row[1], plainCell("b"));
  EXPECT_EQ(row[2], plainCell("c"));
  EXPECT_EQ(row[3], TerminalCell{});
  EXPECT_EQ(buffer.cursorPosition, (Cursor{0, 3}));
}

TEST(ScreenBuffer, ContinuesAcrossCalls) {
  TerminalScreenBuffer buffer = screenOf(2, 4);
  buffer.parseAndRender("ab");
  buffer.parseAndRender("cde");
  EXPECT_EQ(pictureOf(buffer), "abcd|e");
}

TEST(ScreenBuffer, WrapsAfterTheLastColumn) {
  TerminalScreenBuffer buffer = screenOf(24, 80);
  buffer.parseAndRender(std::string(80, 'x'));
  EXPECT_EQ(buffer.cursorPosition, (Cursor{1, 0}));
  EXPECT_TRUE(buffer.scrollbackBuffer().empty());
}

TEST(ScreenBuffer, ScrollsWhenTheLastRowWraps) {
  TerminalScreenBuffer buffer = screenOf(24, 80);
  buffer.parseAndRender("top");
  buffer.cursorPosition = {23, 0};
  buffer.parseAndRender(std::string(80, 'x'));
  EXPECT_EQ(buffer.cursorPosition, (Cursor{23, 0}));
  ASSERT_EQ(buffer.scrollbackBuffer().size(), 1u);
  EXPECT_EQ(textOf(buffer.scrollbackBuffer()[0]), "top");
  EXPECT_EQ(textOf(buffer.cells()[22]), std::string(80, 'x'));
  EXPECT_EQ(buffer.cells()[23], TerminalScreenBuffer::Row(80));
  EXPECT_EQ(buffer.cells().size(), 24u);
}

TEST(ScreenBuffer, TabsToTheNextMultipleOfEight) {
  struct Step {
    std::int64_t from, to;
  };
  for (const Step step : {Step{0, 8}, Step{1, 8}, Step{7, 8}, Step{8, 16}, Step{71, 72}}) {
    TerminalScreenBuffer buffer = screenOf(24, 80);
    buffer.cursorPosition = {3, step.from};
    buffer.parseAndRender("\t");
    EXPECT_EQ(buffer.cursorPosition, (Cursor{3, step.to}));
  }
}

TEST(ScreenBuffer, TabsBeyondTheLastColumnToTheNextRowWithoutScrolling) {
  TerminalScreenBuffer buffer = screenOf(24, 80);
  buffer.cursorPosition = {3, 72};
  buffer.parseAndRender("\t");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{4, 0}));
  buffer.cursorPosition = {23, 72};
  buffer.parseAndRender("\t");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{24, 0}));
  EXPECT_TRUE(buffer.scrollbackBuffer().empty());
}

TEST(ScreenBuffer, DiscardsCharactersBelowTheGridUntilALineFeedScrolls) {
  TerminalScreenBuffer buffer = screenOf(2, 8);
  buffer.parseAndRender("top\nend\tlost\tlost\t");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{4, 0}));
  EXPECT_EQ(pictureOf(buffer), "top|end");
  buffer.parseAndRender("\nx");
  EXPECT_EQ(pictureOf(buffer), "end|x");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{1, 1}));
  EXPECT_EQ(buffer.scrollbackBuffer().size(), 1u);
}

TEST(ScreenBuffer, ReturnsTheCarriageWithALineFeed) {
  TerminalScreenBuffer buffer = screenOf(3, 10);
  buffer.parseAndRender("ab\nc\nd");
  EXPECT_EQ(pictureOf(buffer), "ab|c|d");
}

TEST(ScreenBuffer, OverwritesTheRowAfterACarriageReturn) {
  TerminalScreenBuffer buffer = screenOf(2, 10);
  buffer.parseAndRender("abc\rX");
  EXPECT_EQ(pictureOf(buffer), "Xbc|");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{0, 1}));
}

TEST(ScreenBuffer, ScrollsTwiceForTwentyFiveLineFeeds) {
  TerminalScreenBuffer buffer = screenOf(24, 80);
  buffer.parseAndRender(std::string(23, '\n'));
  EXPECT_EQ(buffer.cursorPosition, (Cursor{23, 0}));
  EXPECT_TRUE(buffer.scrollbackBuffer().empty());
  buffer.parseAndRender("\n\n");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{23, 0}));
  EXPECT_EQ(buffer.scrollbackBuffer().size(), 2u);
}

TEST(ScreenBuffer, KeepsTenThousandScrolledRows) {
  TerminalScreenBuffer buffer = screenOf(1, 8);
  for (int line = 0; line < 10001; ++line) {
    buffer.parseAndRender(std::to_string(line) + '\n');
  }
  ASSERT_EQ(buffer.scrollbackBuffer().size(), 10000u);
  EXPECT_EQ(textOf(buffer.scrollbackBuffer().front()), "1");
  EXPECT_EQ(textOf(buffer.scrollbackBuffer().back()), "10000");
}

TEST(ScreenBuffer, SkipsAnEscapeAndWritesTheRestOfItsSequence) {
  TerminalScreenBuffer buffer = screenOf(2, 10);
  buffer.parseAndRender("\x1B[1m");
  EXPECT_EQ(pictureOf(buffer), "[1m|");
  EXPECT_EQ(buffer.cells()[0][2], plainCell("m"));
  EXPECT_EQ(buffer.cursorPosition, (Cursor{0, 3}));
}

TEST(ScreenBuffer, StoresACarriageReturnLineFeedPairInACell) {
  TerminalScreenBuffer buffer = screenOf(2, 10);
  buffer.parseAndRender("a\r\nb");
  EXPECT_EQ(buffer.cells()[0][1].character, "\r\n");
  EXPECT_EQ(buffer.cells()[0][2].character, "b");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{0, 3}));
}

TEST(ScreenBuffer, StoresOtherControlsLikePrintableCharacters) {
  TerminalScreenBuffer buffer = screenOf(1, 10);
  buffer.parseAndRender(std::string_view("\0\x07\x08\x7F", 4));
  EXPECT_EQ(buffer.cells()[0][0].character, std::string(1, '\0'));
  EXPECT_EQ(buffer.cells()[0][1].character, "\x07");
  EXPECT_EQ(buffer.cells()[0][2].character, "\x08");
  EXPECT_EQ(buffer.cells()[0][3].character, "\x7F");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{0, 4}));
}

TEST(ScreenBuffer, StoresAWholeClusterInOneCell) {
  TerminalScreenBuffer buffer = screenOf(1, 10);
  const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
  buffer.parseAndRender("e\u0301" + family + "\u4E16x");
  EXPECT_EQ(buffer.cells()[0][0].character, "e\u0301");
  EXPECT_EQ(buffer.cells()[0][1].character, family);
  EXPECT_EQ(buffer.cells()[0][2].character, "\u4E16");  // wide, and still one cell
  EXPECT_EQ(buffer.cells()[0][3].character, "x");
}

TEST(ScreenBuffer, BlanksTheGridAndHomesTheCursorButKeepsTheScrollback) {
  TerminalScreenBuffer buffer = screenOf(2, 4);
  buffer.parseAndRender("a\nb\nc");
  buffer.clear();
  EXPECT_EQ(buffer.cells(), (std::deque<TerminalScreenBuffer::Row>(2, TerminalScreenBuffer::Row(4))));
  EXPECT_EQ(buffer.cursorPosition, (Cursor{0, 0}));
  ASSERT_EQ(buffer.scrollbackBuffer().size(), 1u);
  EXPECT_EQ(textOf(buffer.scrollbackBuffer()[0]), "a");
  EXPECT_EQ(buffer.rows(), 2);
  EXPECT_EQ(buffer.cols(), 4);
}

TEST(ScreenBuffer, OnlyHomesTheCursorWhenAGridWithoutRowsIsCleared) {
  TerminalScreenBuffer buffer = screenOf(0, 4);
  buffer.cursorPosition = {5, 5};
  buffer.clear();
  EXPECT_TRUE(buffer.cells().empty());
  EXPECT_EQ(buffer.cursorPosition, (Cursor{0, 0}));
}

}  // namespace
}  // namespace zolt
