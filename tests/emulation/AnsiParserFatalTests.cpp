#include <gtest/gtest.h>

#include "emulation/ANSIParser.h"
#include "emulation/SGR.h"
#include "emulation/StyledRuns.h"

namespace zolt {
namespace {

void parse(const char* text) {
  static_cast<void>(ANSIParser().parse(text));
}

TEST(AnsiParserDeathTest, StopsTheProgramForANegativePaletteIndex) {
  EXPECT_DEATH(parse("\x1B[38;5;-1m"), "zolt: fatal: negative index into the 256-colour palette");
  EXPECT_DEATH(parse("\x1B[48;5;-9223372036854775808m"), "zolt: fatal: negative index");
}

TEST(AnsiParserDeathTest, StopsTheProgramForAGreyLevelThatOverflows) {
  EXPECT_DEATH(parse("\x1B[38;5;9223372036854775807m"), "zolt: fatal: arithmetic overflow in a multiplication");
  EXPECT_DEATH(parse("\x1B[48;5;922337203685477813m"), "zolt: fatal: arithmetic overflow");
  // 10 times this level still fits, the 8 on top of it does not.
  EXPECT_DEATH(parse("\x1B[38;5;922337203685477812m"), "zolt: fatal: arithmetic overflow in an addition");
}

TEST(AnsiParser, SurvivesTheGreatestPaletteIndexWhoseGreyLevelFits) {
  EXPECT_GT(styleAfter("38;5;922337203685477811").foreground.red, 1e15);
}

TEST(AnsiParser, SurvivesNegativeNumbersElsewhere) {
  EXPECT_EQ(styleAfter("-1;38;-5;-1"), plainStyle());
  EXPECT_EQ(styleAfter("38;2;-1;-2;-3").foreground, (Color{-1 / 255.0, -2 / 255.0, -3 / 255.0, 1.0}));
}

}  // namespace
}  // namespace zolt
