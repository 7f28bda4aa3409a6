#include <gtest/gtest.h>

#include <array>

#include "emulation/ANSIParser.h"
#include "emulation/ReferenceParser.h"
#include "emulation/StyledRuns.h"
#include "text/RandomText.h"

namespace zolt {
namespace {

// Parses the chunks in order with one parser of each kind and compares what they make of each.
testing::AssertionResult agreeOn(const std::vector<std::string_view>& chunks) {
  ReferenceParser reference;
  ANSIParser parser;
  std::string story;
  for (const std::string_view chunk : chunks) {
    story += (story.empty() ? "" : ", ") + escaped(chunk);
    const StyledRuns expected = reference.parse(chunk);
    if (reference.stopsTheProgram()) break;
    const StyledRuns actual = runsOf(parser.parse(chunk));
    if (actual != expected) {
      return testing::AssertionFailure() << "after the chunks " << story << "\n  expected "
                                         << testing::PrintToString(expected) << "\n  but got  "
                                         << testing::PrintToString(actual);
    }
  }
  return testing::AssertionSuccess();
}

void compareOnRandomTexts(std::uint64_t seed, std::span<const Piece> alphabet, int rounds, std::size_t pieces) {
  RandomText random(seed, alphabet);
  for (int round = 0; round < rounds; ++round) {
    const std::string text = random.text(pieces);
    ASSERT_TRUE(agreeOn({text}));
    ASSERT_TRUE(agreeOn(random.chunks(text)));
  }
}

TEST(AnsiParserAgainstTheRules, AgreesOnShortTexts) {
  compareOnRandomTexts(10, terminalAlphabet, 60000, 8);
}

TEST(AnsiParserAgainstTheRules, AgreesOnLongTexts) {
  compareOnRandomTexts(11, terminalAlphabet, 8000, 80);
}

TEST(AnsiParserAgainstTheRules, AgreesOnTextsFullOfRenditions) {
  compareOnRandomTexts(12, renditionAlphabet, 20000, 60);
}

// A colour as programs name it: mostly within range, now and then far out of it.
std::string randomColor(RandomText& random) {
  const auto component = [&] { return std::to_string(random.below(50) == 0 ? random.below(1000) : random.below(256)); };
  switch (random.below(4)) {
    case 0:
      return std::to_string(30 + random.below(8));
    case 1:
      return std::to_string(90 + random.below(8));
    case 2:
      return "38;5;" + component();
    default:
      return "38;2;" + component() + ";" + component() + ";" + component();
  }
}

TEST(AnsiParserAgainstTheRules, AgreesOnThousandsOfColours) {
  RandomText random(13);
  for (int round = 0; round < 4; ++round) {
    std::string text;
    for (int run = 0; run < 3000; ++run) {
      std::string color = randomColor(random);
      if (random.below(2) == 0) color[0] = color[0] == '3' ? '4' : color[0];  // the same as a background
      const char* const flag = std::array{"", ";1", ";7", ";22;27", ";2", ";8", ";0"}[random.below(20) % 7];
      text += "\x1B[" + color + flag + "m" + std::string(random.below(3), 'x');
    }
    ASSERT_TRUE(agreeOn({text}));
    ASSERT_TRUE(agreeOn(random.chunks(text)));
  }
}

TEST(AnsiParserAgainstTheRules, AgreesOnEveryPairOfPiecesInEveryState) {
  // What may stand before and after a pair: nothing, text, and every unfinished sequence.
  for (const std::string before : {"", "x", "\x1B", "\x1B[", "\x1B[1", "\x1B]", "\x1B]\x1B", "\x1B("}) {
    for (const Piece& first : terminalAlphabet) {
      for (const Piece& second : terminalAlphabet) {
        for (const std::string after : {"", "y", "my\x07z"}) {
          const std::string text = before + std::string(first.text) + std::string(second.text) + after;
          ASSERT_TRUE(agreeOn({text}));
        }
      }
    }
  }
}

}  // namespace
}  // namespace zolt
