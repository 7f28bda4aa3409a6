#include <gtest/gtest.h>

#include <string>

#include "emulation/ANSIParser.h"
#include "emulation/StyledRuns.h"

namespace zolt {
namespace {

using namespace std::string_literals;

bool isRed(const TextAttributes& style) {
  return style.foreground == Color{0.8, 0.0, 0.0, 1.0};
}

// Whether the style of the last character of `chunk` is red.
bool endsRed(std::string_view chunk) {
  return isRed(parsed(chunk).back().attributes);
}

TEST(AnsiParser, ConsumesCursorEraseAndModeSequencesWithoutEffect) {
  for (const char* sequence : {"\x1B[2J", "\x1B[H", "\x1B[f", "\x1B[10;20H", "\x1B[K", "\x1B[A", "\x1B[?25l",
                               "\x1B[?1049h", "\x1B[>c", "\x1B[=1c", "\x1B[1 q", "\x1B[!p", "\x1B[@", "\x1B[~"}) {
    EXPECT_EQ(shown(sequence), "") << sequence;
    const StyledRuns runs = parsed("\x1B[31ma"s + sequence + "b");
    ASSERT_EQ(runs.size(), 2u) << sequence;
    EXPECT_EQ(runs[1].text, "b");
    EXPECT_TRUE(isRed(runs[1].attributes)) << sequence;
  }
}

TEST(AnsiParser, EndsAControlSequenceAtEveryCharacterFromAtSignToTilde) {
  for (int c = 0; c < 0x80; ++c) {
    const std::string text = "\x1B[5"s + static_cast<char>(c) + "zx";
    const bool isFinal = c >= 0x40 && c <= 0x7E;
    EXPECT_EQ(shown(text), isFinal ? "zx" : "x") << c;  // where it is none, the z is the final character
  }
}

TEST(AnsiParser, TreatsControlsInsideAControlSequenceAsParameters) {
  EXPECT_EQ(shown("\x1B[3\n1mx"), "x");
  EXPECT_EQ(shown("\x1B[\x1B[mx"), "mx");  // the second bracket is a final character
  EXPECT_FALSE(endsRed("\x1B[3\r\n1mx"));
}

TEST(AnsiParser, TreatsALetterWithAMarkAsFinalIfTheyDoNotCompose) {
  EXPECT_EQ(shown("\x1B[31m\u0308x"), "x");
  EXPECT_FALSE(endsRed("\x1B[31m\u0308x"));  // swallowed, but not the command "m"
  EXPECT_EQ(shown("\x1B[31@\u0301x"), "x");
}

TEST(AnsiParser, TreatsALetterThatComposesWithItsMarkAsAParameter) {
  EXPECT_EQ(shown("\x1B[1e\u0301mx"), "x");
  EXPECT_EQ(shown("\x1B[1e\u0301x"), "");  // the x is the final character
  EXPECT_EQ(shown("\x1B[1m\u0323zx"), "x");
  EXPECT_EQ(shown("\x1B[1m\u0308\u0323zx"), "x");  // the dot below composes across the diaeresis
}

TEST(AnsiParser, TreatsATildeWithAMarkAsAParameter) {
  EXPECT_EQ(shown("\x1B[1~x"), "x");
  EXPECT_EQ(shown("\x1B[1~\u0301zx"), "x");
}

TEST(AnsiParser, AcceptsCanonicalEquivalentsOfFinalCharacters) {
  EXPECT_EQ(shown("\x1B[1\u212Ax"), "x");   // KELVIN SIGN is K
  EXPECT_EQ(shown("\x1B[1\u1FEFx"), "x");   // GREEK VARIA is a grave accent
  EXPECT_EQ(shown("\x1B[1\u212Bzx"), "x");  // ANGSTROM SIGN is U+00C5: a parameter
}

TEST(AnsiParser, TreatsOtherNonAsciiCharactersAsParameters) {
  EXPECT_EQ(shown("\x1B[1\u2192\U0001F600mx"), "x");
  EXPECT_EQ(shown("\x1B[1\u0600mzx"), "x");  // the prepended mark and its m are one character
}

TEST(AnsiParser, ShowsTheRestOfATruncatedSequence) {
  EXPECT_EQ(shown("a\x1B[3"), "a[3");
  EXPECT_EQ(shown("\x1B"), "");
  EXPECT_EQ(shown("a\x1B"), "a");
  EXPECT_EQ(shown("\x1B["), "[");
  EXPECT_EQ(shown("\x1B[38;5;"), "[38;5;");
  EXPECT_EQ(parsed("a\x1B[3").size(), 2u);
}

TEST(AnsiParser, DoesNotContinueASequenceFromThePreviousChunk) {
  ANSIParser parser;
  EXPECT_EQ(parser.parse("\x1B[3").text(), "[3");
  const AttributedString second = parser.parse("1mx");
  EXPECT_EQ(second.text(), "1mx");
  EXPECT_FALSE(isRed(second.attributes(second.runs()[0])));
}

TEST(AnsiParser, CarriesTheRenditionOverToTheNextChunk) {
  ANSIParser parser;
  EXPECT_TRUE(parser.parse("\x1B[31m").empty());
  const AttributedString second = parser.parse("x");
  EXPECT_TRUE(isRed(second.attributes(second.runs()[0])));
  const StyledRuns third = runsOf(parser.parse("y\x1B[0mz"));
  EXPECT_TRUE(isRed(third.at(0).attributes));
  EXPECT_EQ(third.at(1).attributes, plainStyle());
}

TEST(AnsiParser, DiscardsAnOperatingSystemCommandUpToItsTerminator) {
  EXPECT_EQ(shown("a\x1B]0;title\x07"
                  "b"),
            "ab");
  EXPECT_EQ(shown("a\x1B]0;title\x1B\\b"), "ab");
  EXPECT_EQ(shown("\x1B]\x07x"), "x");
  EXPECT_EQ(shown("\x1B]8;;http://e\u0301\n\r\n\u2192\x07x"), "x");
}

TEST(AnsiParser, SkipsEscapesInsideAnOperatingSystemCommand) {
  EXPECT_EQ(shown("\x1B]0;a\x1B[31mb\x07x"), "x");
  EXPECT_FALSE(endsRed("\x1B]0;a\x1B[31mb\x07x"));
  EXPECT_EQ(shown("\x1B]0;a\x1B\x1B\\x"), "x");
  EXPECT_EQ(shown("\x1B]0;a\x1B\x07x"), "x");
  EXPECT_EQ(shown("\x1B]0;a\x1B\\\u0301"
                  "b\x07x"),
            "x");  // the backslash with a mark is another character
}

TEST(AnsiParser, SwallowsTheRestOfTheChunkAfterAnUnfinishedOperatingSystemCommand) {
  EXPECT_EQ(shown("a\x1B]0;title"), "a");
  EXPECT_EQ(shown("a\x1B]"), "a");
  EXPECT_EQ(shown("a\x1B]0;title\x1B"), "a");
  ANSIParser parser;
  EXPECT_EQ(parser.parse("\x1B]0;ti").text(), "");
  EXPECT_EQ(parser.parse("tle\x07x").text(), "tlex");
}

TEST(AnsiParser, ConsumesACharacterSetDesignationAndOneCharacterMore) {
  for (const char designation : {'(', ')', '*', '+'}) {
    EXPECT_EQ(shown("a\x1B"s + designation + "Bb"), "ab");
    EXPECT_EQ(shown("a\x1B"s + designation), "a");
    EXPECT_EQ(shown("a\x1B"s + designation + "e\u0301x"), "ax");
    EXPECT_EQ(shown("a\x1B"s + designation + "\r\nx"), "ax");
    EXPECT_EQ(shown("a\x1B"s + designation + "\x1B[31mx"), "a[31mx");
  }
}

TEST(AnsiParser, ConsumesAnyOtherEscapeAsTwoCharacters) {
  for (const char c : {'=', '>', '7', '8', 'c', 'M', '\\', 'P', '-', '#', ' ', '\x1B', '\x07', '\n'}) {
    EXPECT_EQ(shown("a\x1B"s + c + "b"), "ab") << c;
  }
  EXPECT_EQ(shown("\x1B\r\nx"), "x");
  EXPECT_EQ(shown("\x1B\u2192x"), "x");
  EXPECT_EQ(shown("\x1B\U0001F468\u200D\U0001F469x"), "x");
  EXPECT_EQ(shown("\x1B\x1B[31mx"), "[31mx");
}

TEST(AnsiParser, TreatsABracketWithAMarkAsAnotherCharacter) {
  EXPECT_EQ(shown("\x1B[\u0301"
                  "31mx"),
            "31mx");
  EXPECT_EQ(shown("\x1B]\u0301title\x07x"), "titlex");
  EXPECT_EQ(shown("\x1B(\u0301"
                  "Bx"),
            "Bx");
}

}  // namespace
}  // namespace zolt
