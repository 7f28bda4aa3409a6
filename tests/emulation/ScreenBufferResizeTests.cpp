#include <gtest/gtest.h>

#include <string>

#include "emulation/ScreenPicture.h"
#include "emulation/TerminalScreenBuffer.h"

namespace zolt {
namespace {

// "row 7....!", filled with dots.
std::string numberedRow(int row) {
  std::string text = "row ";
  text += std::to_string(row);
  text.append(60, '.');
  text += '!';
  return text;
}

// Twenty-four rows of eighty columns that begin with "row 0" to "row 23".
TerminalScreenBuffer numberedScreen() {
  TerminalScreenBuffer buffer = screenOf(24, 80);
  for (int row = 0; row < 24; ++row) {
    buffer.cursorPosition = {row, 0};
    buffer.parseAndRender(numberedRow(row));
  }
  return buffer;
}

TEST(ScreenBufferResize, MovesRowsFromTheTopIntoTheScrollbackWhenItShrinks) {
  TerminalScreenBuffer buffer = numberedScreen();
  buffer.resize(10, 40);
  EXPECT_EQ(buffer.rows(), 10);
  EXPECT_EQ(buffer.cols(), 40);
  ASSERT_EQ(buffer.scrollbackBuffer().size(), 14u);
  EXPECT_EQ(textOf(buffer.scrollbackBuffer()[0]), numberedRow(0));
  EXPECT_EQ(textOf(buffer.scrollbackBuffer()[13]), numberedRow(13));
  EXPECT_EQ(buffer.scrollbackBuffer()[13].size(), 80u);
  ASSERT_EQ(buffer.cells().size(), 10u);
  EXPECT_EQ(textOf(buffer.cells()[0]), numberedRow(14).substr(0, 40));
  EXPECT_EQ(textOf(buffer.cells()[9]), numberedRow(23).substr(0, 40));
  EXPECT_EQ(buffer.cells()[9].size(), 40u);
}

TEST(ScreenBufferResize, LeavesTheCursorWhereItWasAndDiscardsWhatIsWrittenOutside) {
  TerminalScreenBuffer buffer = numberedScreen();
  buffer.cursorPosition = {20, 5};
  buffer.resize(10, 40);
  EXPECT_EQ(buffer.cursorPosition, (Cursor{20, 5}));
  const std::string before = pictureOf(buffer);
  buffer.parseAndRender("x");
  EXPECT_EQ(pictureOf(buffer), before);
  EXPECT_EQ(buffer.cursorPosition, (Cursor{20, 5}));
  buffer.cursorPosition = {3, 60};
  buffer.parseAndRender("x");
  EXPECT_EQ(pictureOf(buffer), before);
  EXPECT_EQ(buffer.cursorPosition, (Cursor{3, 60}));
}

TEST(ScreenBufferResize, BringsACursorBelowTheGridBackWithOneLineFeed) {
  TerminalScreenBuffer buffer = numberedScreen();
  buffer.cursorPosition = {20, 5};
  buffer.resize(10, 40);
  buffer.parseAndRender("\nx");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{9, 1}));
  EXPECT_EQ(textOf(buffer.cells()[9]), "x");
  EXPECT_EQ(buffer.scrollbackBuffer().size(), 15u);
}

TEST(ScreenBufferResize, AddsBlankRowsAtTheBottomWithoutMovingTheContent) {
  TerminalScreenBuffer buffer = screenOf(2, 4);
  buffer.parseAndRender("a\nb\nc");
  buffer.resize(4, 4);
  EXPECT_EQ(pictureOf(buffer), "b|c||");
  EXPECT_EQ(buffer.scrollbackBuffer().size(), 1u);  // rows never come back from there
  EXPECT_EQ(buffer.cursorPosition, (Cursor{1, 1}));
}

TEST(ScreenBufferResize, PadsAndCropsRowsAtTheirRightEnd) {
  TerminalScreenBuffer buffer = screenOf(1, 4);
  buffer.parseAndRender("abc");
  buffer.resize(1, 6);
  EXPECT_EQ(buffer.cells()[0].size(), 6u);
  EXPECT_EQ(buffer.cells()[0][5], TerminalCell{});
  buffer.resize(1, 2);
  EXPECT_EQ(pictureOf(buffer), "ab");
  buffer.resize(1, 4);
  EXPECT_EQ(pictureOf(buffer), "ab");  // what was cropped is gone
}

TEST(ScreenBufferResize, TrimsTheScrollbackWhenItShrinks) {
  TerminalScreenBuffer buffer = screenOf(10003, 2);
  buffer.parseAndRender("a\nb\nc\nd");
  buffer.resize(1, 2);
  ASSERT_EQ(buffer.scrollbackBuffer().size(), 10000u);
  EXPECT_EQ(textOf(buffer.scrollbackBuffer()[0]), "c");
}

TEST(ScreenBufferResize, AllowsAGridWithoutRowsOrColumns) {
  TerminalScreenBuffer buffer = screenOf(2, 3);
  buffer.parseAndRender("abc");
  buffer.resize(0, 3);
  EXPECT_TRUE(buffer.cells().empty());
  EXPECT_EQ(buffer.scrollbackBuffer().size(), 2u);
  buffer.resize(2, 0);
  EXPECT_EQ(buffer.cells(), (std::deque<TerminalScreenBuffer::Row>(2)));
  buffer.cursorPosition = {0, 0};
  buffer.parseAndRender("discarded");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{0, 0}));
  buffer.parseAndRender("\n\n");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{1, 0}));
  EXPECT_EQ(buffer.scrollbackBuffer().size(), 3u);
}

}  // namespace
}  // namespace zolt
