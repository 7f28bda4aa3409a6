#include "vt/parser/Parser.h"

#include <gtest/gtest.h>

#include "vt/RecordedEvents.h"

namespace zolt::vt {
namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;

TEST(VtParser, PrintsTextInAnyScript) {
  EXPECT_EQ(eventsOf("plain"), Lines{"print plain"});
  EXPECT_EQ(eventsOf("a\u00e9\u65e5\U0001F600z"), Lines{"print a\u00e9\u65e5\U0001F600z"});
}

TEST(VtParser, PrintsReplacementCharactersForInvalidUtf8) {
  EXPECT_EQ(eventsOf("a\xFFz"), Lines{"print a\uFFFDz"});
  EXPECT_EQ(eventsOf("a\xE6\x97z"), Lines{"print a\uFFFDz"});
  EXPECT_EQ(eventsOf("\x80\x9B"), Lines{"print \uFFFD\uFFFD"});
  EXPECT_EQ(eventsOf("\xE6\x97\x1B[m"), (Lines{"print \uFFFD", "control  m"}));
}

TEST(VtParser, ExecutesControls) {
  EXPECT_EQ(eventsOf("a\r\n\x07\0b"s),
            (Lines{"print a", "execute 13", "execute 10", "execute 7", "execute 0", "print b"}));
  EXPECT_EQ(eventsOf("\x7F"), Lines{});
  EXPECT_EQ(eventsOf("\xC2\x84\xC2\x85"), (Lines{"execute 132", "execute 133"}));
}

TEST(VtParser, ExecutesControlsInTheMiddleOfASequence) {
  EXPECT_EQ(eventsOf("\x1B[1\n;2H"), (Lines{"execute 10", "control 1;2 H"}));
  EXPECT_EQ(eventsOf("\x1B\n7"), (Lines{"execute 10", "escape 7"}));
  EXPECT_EQ(eventsOf("\x1B[1\x7F;2H"), Lines{"control 1;2 H"});
}

TEST(VtParser, ReportsEscapeSequences) {
  EXPECT_EQ(eventsOf("\x1B"
                     "7\x1B(0\x1B#8\x1B%G\x1B c"),
            (Lines{"escape 7", "escape (0", "escape #8", "escape %G", "escape  c"}));
}

TEST(VtParser, ReportsControlSequencesWithAllTheirParts) {
  EXPECT_EQ(eventsOf("\x1B[H\x1B[5A\x1B[1;2H\x1B[;5H\x1B[3;H"),
            (Lines{"control  H", "control 5 A", "control 1;2 H", "control ;5 H", "control 3; H"}));
  EXPECT_EQ(eventsOf("\x1B[?1049h\x1B[>4;2m\x1B[=1;1u\x1B[<u"),
            (Lines{"control ?1049 h", "control >4;2 m", "control =1;1 u", "control < u"}));
  EXPECT_EQ(eventsOf("\x1B[2 q\x1B[!p\x1B[?25$p\x1B[1;2;3;4;5$r"),
            (Lines{"control 2  q", "control  !p", "control ?25 $p", "control 1;2;3;4;5 $r"}));
  EXPECT_EQ(eventsOf("\x1B[4:3;38:2::10:20:30m"), Lines{"control 4:3;38:2::10:20:30 m"});
}

TEST(VtParser, AcceptsTheC1FormsOfSequences) {
  EXPECT_EQ(eventsOf("\xC2\x9B"
                     "5A"),
            Lines{"control 5 A"});
  EXPECT_EQ(eventsOf("\xC2\x9D"
                     "0;t\xC2\x9C"),
            Lines{"command 0;t"});
  EXPECT_EQ(eventsOf("\xC2\x90$qm\xC2\x9C"), Lines{"device  $q m"});
}

TEST(VtParser, IgnoresMalformedSequences) {
  EXPECT_EQ(eventsOf("\x1B[1?5hx"), Lines{"print x"});
  EXPECT_EQ(eventsOf("\x1B[ 1qx"), Lines{"print x"});
  EXPECT_EQ(eventsOf("\x1B[!!!px\x1B(((0y"), Lines{"print xy"});
  EXPECT_EQ(eventsOf("\x1BP1?2qdata\x1B\\x"), Lines{"print x"});
}

TEST(VtParser, SaturatesLargeParameters) {
  EXPECT_EQ(eventsOf("\x1B[2147483647A\x1B[2147483648A\x1B[99999999999999999999;7A"),
            (Lines{"control 2147483647 A", "control 2147483647 A", "control 2147483647;7 A"}));
  EXPECT_EQ(eventsOf("\x1B[0000000000000000000012A"), Lines{"control 12 A"});
}

TEST(VtParser, DropsParametersAfterTheThirtySecond) {
  std::string sequence = "\x1B[1";
  std::string expected = "control 1";
  for (int i = 2; i <= 40; ++i) {
    sequence += ';' + std::to_string(i);
    if (i <= 32) expected += ';' + std::to_string(i);
  }
  EXPECT_EQ(eventsOf(sequence + "m"), Lines{expected + " m"});
}

TEST(VtParser, CancelsASequenceOnCanSubAndANewSequence) {
  EXPECT_EQ(eventsOf("\x1B[1\x18"
                     "2Ax"),
            (Lines{"execute 24", "print 2Ax"}));
  EXPECT_EQ(eventsOf("\x1B]0;t\x1A"
                     "x\x07"),
            (Lines{"execute 26", "print x", "execute 7"}));
  EXPECT_EQ(eventsOf("\x1B[1\x1B[2A"), Lines{"control 2 A"});
}

TEST(VtParser, PrintsACharacterThatAbortsASequence) {
  EXPECT_EQ(eventsOf("\x1B[1\u00e9x"), Lines{"print \u00e9x"});
  EXPECT_EQ(eventsOf("\x1B\u65e5"), Lines{"print \u65e5"});
}

TEST(VtParser, ReportsCommandsTerminatedByBelOrSt) {
  EXPECT_EQ(eventsOf("\x1B]0;title\x07\x1B]2;\u65e5\u672c\x1B\\"),
            (Lines{"command by bell 0;title", "command 2;\u65e5\u672c"}));
  EXPECT_EQ(eventsOf("\x1B]\x07"), Lines{"command by bell "});
  EXPECT_EQ(eventsOf("\x1B]0;a\nb\x07"), Lines{"command by bell 0;ab"});
}

TEST(VtParser, DoesNotMistakeAByteOfACharacterForATerminator) {
  EXPECT_EQ(eventsOf("\x1B]0;\u271c\x07"), Lines{"command by bell 0;\u271c"});
  EXPECT_EQ(eventsOf("\x1B]0;\x9C\x07"), Lines{"command by bell 0;\uFFFD"});
}

TEST(VtParser, DropsUnterminatedStrings) {
  EXPECT_EQ(eventsOf("\x1B]0;t\x1B[5A"), Lines{"control 5 A"});
  EXPECT_EQ(eventsOf("\x1BP$qm\x1B"
                     "7x"),
            (Lines{"escape 7", "print x"}));
  EXPECT_EQ(eventsOf("\x1BP$qm\x1B(B"), Lines{"escape (B"});
  EXPECT_EQ(eventsOf("\x1B]0;t\x1B]2;u\x07"), Lines{"command by bell 2;u"});
  EXPECT_EQ(eventsOf("\x1B\\"), Lines{"escape \\"});
}

TEST(VtParser, ReportsDeviceControlStringsWithTheirParameters) {
  EXPECT_EQ(eventsOf("\x1BP$qm\x1B\\"), Lines{"device  $q m"});
  EXPECT_EQ(eventsOf("\x1BP+q544e\x1B\\"), Lines{"device  +q 544e"});
  EXPECT_EQ(eventsOf("\x1BP>|1;2q\x07"
                     "a\nb\x1B\\"),
            Lines{"device > | 1;2q\x07"
                  "a\nb"});
}

TEST(VtParser, IgnoresSosPmAndApcStrings) {
  EXPECT_EQ(eventsOf("\x1B_Gpayload\x1B\\x\x1B^private\x1B\\y\x1BXstart\x1B\\z"), Lines{"print xyz"});
  EXPECT_EQ(eventsOf("\x1B_a\x07"
                     "b\x1B\\x"),
            Lines{"print x"});
}

TEST(VtParser, DropsStringsThatAreTooLong) {
  const auto command = [](std::size_t size) { return "0;" + std::string(size - 2, 't'); };
  EXPECT_EQ(eventsOf("\x1B]" + command(Parser::maxCommandBytes) + "\x07"),
            Lines{"command by bell " + command(Parser::maxCommandBytes)});
  EXPECT_EQ(eventsOf("\x1B]" + command(Parser::maxCommandBytes + 1) + "\x07x"), Lines{"print x"});
  const auto payload = [](std::size_t size) { return "52;" + std::string(size - 3, 'A'); };
  EXPECT_EQ(eventsOf("\x1B]" + payload(Parser::maxPayloadBytes) + "\x07").size(), 1U);
  EXPECT_EQ(eventsOf("\x1B]" + payload(Parser::maxPayloadBytes + 1) + "\x07"), Lines{});
  EXPECT_EQ(eventsOf("\x1BPq" + std::string(Parser::maxDeviceControlBytes, 'x') + "\x1B\\").size(), 1U);
  EXPECT_EQ(eventsOf("\x1BPq" + std::string(Parser::maxDeviceControlBytes + 1, 'x') + "\x1B\\y"), Lines{"print y"});
}

}  // namespace
}  // namespace zolt::vt
