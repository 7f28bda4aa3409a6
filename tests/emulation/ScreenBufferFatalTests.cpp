#include <gtest/gtest.h>

#include <limits>

#include "emulation/ScreenPicture.h"
#include "emulation/TerminalScreenBuffer.h"

namespace zolt {
namespace {

constexpr std::int64_t kGreatest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();

void render(Cursor cursor, std::string_view text) {
  TerminalScreenBuffer buffer = screenOf(24, 80);
  buffer.cursorPosition = cursor;
  buffer.parseAndRender(text);
}

TEST(ScreenBufferDeathTest, StopsTheProgramForANegativeSize) {
  EXPECT_DEATH(screenOf(24, -1), "zolt: fatal: a screen buffer cannot have a negative number of columns");
  EXPECT_DEATH(screenOf(0, -1), "zolt: fatal: a screen buffer cannot have a negative number of columns");
  EXPECT_DEATH(screenOf(-1, 80), "zolt: fatal: a screen buffer cannot have a negative number of rows");
}

TEST(ScreenBufferDeathTest, StopsTheProgramWhenAGridWithoutRowsScrolls) {
  EXPECT_DEATH(screenOf(0, 80).parseAndRender("\n"), "zolt: fatal: a grid without rows cannot scroll");
}

TEST(ScreenBufferDeathTest, StopsTheProgramWhenItIsUsedBeforeTheFirstResize) {
  EXPECT_DEATH(TerminalScreenBuffer().parseAndRender("x"), "zolt: fatal: a screen buffer has no cells");
  EXPECT_DEATH(TerminalScreenBuffer().parseAndRender(std::string(24, '\n')),
               "zolt: fatal: a grid without rows cannot scroll");
}

TEST(ScreenBufferDeathTest, StopsTheProgramWhenTheCursorOverflows) {
  EXPECT_DEATH(render({kGreatest, 0}, "\n"), "zolt: fatal: arithmetic overflow");
  EXPECT_DEATH(render({0, kGreatest}, "\t"), "zolt: fatal: arithmetic overflow");
  EXPECT_DEATH(render({kGreatest, 79}, "\t"), "zolt: fatal: arithmetic overflow");
}

TEST(ScreenBufferDeathTest, StopsTheProgramWhenItWritesBeforeTheGrid) {
  EXPECT_DEATH(render({-1, 0}, "x"), "zolt: fatal: the cursor lies before the grid");
  EXPECT_DEATH(render({0, -1}, "x"), "zolt: fatal: the cursor lies before the grid");
  EXPECT_DEATH(render({0, kLeast}, "x"), "zolt: fatal: the cursor lies before the grid");
}

TEST(ScreenBuffer, DiscardsACharacterAtTheGreatestCursorWithoutAdvancingIt) {
  TerminalScreenBuffer buffer = screenOf(24, 80);
  buffer.cursorPosition = {kGreatest, kGreatest};
  buffer.parseAndRender("x\r");
  EXPECT_EQ(buffer.cursorPosition, (Cursor{kGreatest, 0}));
}

}  // namespace
}  // namespace zolt
