#include <gtest/gtest.h>

#include <string>

#include "emulation/ANSIParser.h"
#include "emulation/StyledRuns.h"

namespace zolt {
namespace {

using namespace std::string_literals;

TEST(AnsiParser, MakesOneRegularWhiteRunOfPlainText) {
  EXPECT_EQ(parsed("hello"), (StyledRuns{{"hello", plainStyle()}}));
}

TEST(AnsiParser, GivesNothingForAnEmptyChunk) {
  EXPECT_TRUE(ANSIParser().parse("").empty());
  EXPECT_TRUE(parsed("").empty());
  EXPECT_TRUE(parsed("\x1B[1m").empty());
}

TEST(AnsiParser, KeepsEveryAsciiCharacterFromSpaceToDelete) {
  std::string all;
  for (char c = 0x20; c < 0x7F; ++c) {
    all += c;
  }
  all += '\x7F';
  EXPECT_EQ(shown(all), all);
}

TEST(AnsiParser, KeepsALoneLineFeedCarriageReturnAndTab) {
  EXPECT_EQ(shown("a\nb"), "a\nb");
  EXPECT_EQ(shown("a\rb"), "a\rb");
  EXPECT_EQ(shown("a\tb"), "a\tb");
  EXPECT_EQ(shown("\n\n"), "\n\n");
  EXPECT_EQ(shown("\n\r"), "\n\r");
}

TEST(AnsiParser, DropsACarriageReturnLineFeedPair) {
  EXPECT_EQ(shown("a\r\nb"), "ab");
  EXPECT_EQ(shown("\r\r\n"), "\r");
  EXPECT_EQ(shown("\r\n\n"), "\n");
  EXPECT_EQ(shown("\r\n\r\n"), "");
}

TEST(AnsiParser, KeepsACarriageReturnAndALineFeedOfDifferentChunks) {
  ANSIParser parser;
  EXPECT_EQ(parser.parse("a\r").text(), "a\r");
  EXPECT_EQ(parser.parse("\nb").text(), "\nb");
}

TEST(AnsiParser, DropsEveryOtherControlCharacter) {
  for (char c = 0; c < 0x20; ++c) {
    if (c == '\n' || c == '\r' || c == '\t' || c == '\x1B') continue;
    EXPECT_EQ(shown("a"s + c + "b"), "ab") << static_cast<int>(c);
  }
}

TEST(AnsiParser, DropsEverythingThatIsNotAscii) {
  EXPECT_EQ(shown("caf\u00E9!"), "caf!");
  EXPECT_EQ(shown("a\u2192b"), "ab");
  EXPECT_EQ(shown("\u2500\u2502"), "");
  EXPECT_EQ(shown("x\U0001F600y"), "xy");
  EXPECT_EQ(shown("x\U0001F468\u200D\U0001F469\u200D\U0001F467y"), "xy");
  EXPECT_EQ(shown("a\u0085\u009B1mb"), "a1mb");  // C1 controls begin no sequence
}

TEST(AnsiParser, DropsAnAsciiLetterTogetherWithItsMarks) {
  EXPECT_EQ(shown("cafe\u0301!"), "caf!");
  EXPECT_EQ(shown("ab\u0301\u0308c"), "ac");
  EXPECT_EQ(shown("ab\u200Dc"), "ac");
  EXPECT_EQ(shown("1\uFE0F\u20E3 2"), " 2");  // a keycap
  EXPECT_EQ(shown("e\u0301"), "");
}

TEST(AnsiParser, DropsAnAsciiLetterTogetherWithAMarkPrependedToIt) {
  EXPECT_EQ(shown("x\u0600ab"), "xb");
  EXPECT_EQ(shown("x\u0600a\u0301b"), "xb");
  EXPECT_EQ(shown("\u0600\u0301b"), "b");
  EXPECT_EQ(shown("\u0600\nb"), "\nb");
}

TEST(AnsiParser, KeepsAControlBeforeAMark) {
  EXPECT_EQ(shown("\n\u0301a"), "\na");
  EXPECT_EQ(shown("\t\u0301a"), "\ta");
  EXPECT_EQ(shown("\r\u0301a"), "\ra");
  EXPECT_EQ(shown("\x7F\u0301"
                  "a"),
            "\x7F"
            "a");
}

TEST(AnsiParser, KeepsALetterWhoseMarkComesWithTheNextChunk) {
  ANSIParser parser;
  EXPECT_EQ(parser.parse("e").text(), "e");
  EXPECT_EQ(parser.parse("\u0301x").text(), "x");
}

TEST(AnsiParser, MakesARunForEachStretchBetweenSequences) {
  const StyledRuns runs = parsed("a\x1B[Hb\x1B[1m\x1B[0mc\x1B[m");
  EXPECT_EQ(runs, (StyledRuns{{"a", plainStyle()}, {"b", plainStyle()}, {"c", plainStyle()}}));
}

TEST(AnsiParser, MakesOneRunAcrossCharactersThatItDrops) {
  EXPECT_EQ(parsed("a\u2192b\r\nc\x07"
                   "d")
                .size(),
            1u);
}

TEST(AnsiParser, ReadsALongRunOfTextWithoutSequencesAsOneRun) {
  const std::string text(100000, 'x');
  EXPECT_EQ(parsed(text), (StyledRuns{{text, plainStyle()}}));
}

}  // namespace
}  // namespace zolt
