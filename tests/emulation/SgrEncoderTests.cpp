#include "emulation/SGREncoder.h"

#include <gtest/gtest.h>

#include <array>

#include "emulation/StyledRuns.h"
#include "text/RandomText.h"

namespace zolt {
namespace {

std::string sequence(const TextAttributes& from, const TextAttributes& to) {
  std::string out;
  appendSGR(out, from, to);
  return out.empty() ? out : out.substr(2);  // without ESC [
}

// What is written for the style that these parameters make.
std::string rewritten(std::string_view params) {
  return sequence(plainStyle(), styleAfter(params));
}

// The style of text that follows the sequence, where it was `from` before.
TextAttributes readBack(const TextAttributes& from, const TextAttributes& to) {
  std::string text;
  appendSGR(text, plainStyle(), from);
  appendSGR(text, from, to);
  return parsed(text + "x").at(0).attributes;
}

// Parameters with a bit of everything: flags, palettes, direct colours inside and outside of their ranges.
std::string randomParams(RandomText& random) {
  static constexpr std::array kCodes{"0", "1", "2", "3", "4", "7", "8", "9", "22", "27", "28", "39", "49"};
  std::string params;
  const auto add = [&](std::string_view code) {
    if (!params.empty()) params += ';';
    params += code;
  };
  const auto number = [&](std::size_t limit) { return std::to_string(random.below(limit)); };
  for (std::size_t count = 1 + random.below(6); count > 0; --count) {
    const char* role = random.below(2) == 0 ? "38" : "48";
    switch (random.below(6)) {
      case 0:
        add(std::to_string(30 + random.below(78)));
        break;
      case 1:
        add(role);
        add("5;" + number(300));
        break;
      case 2:
        add(role);
        add("2;" + number(256) + ";" + number(256) + ";" + number(256));
        break;
      case 3:
        add(role);
        add("2;-" + number(100) + ";" + number(100000) + ";" + number(std::size_t{1} << 50));
        break;
      default:
        add(kCodes[random.below(kCodes.size())]);
    }
  }
  return params;
}

TEST(SgrEncoder, WritesNothingIfNothingChanges) {
  EXPECT_EQ(sequence(plainStyle(), plainStyle()), "");
  EXPECT_EQ(sequence(styleAfter("1;31"), styleAfter("31;1")), "");
}

TEST(SgrEncoder, WritesTheDefaultAsReset) {
  EXPECT_EQ(sequence(styleAfter("1;31"), plainStyle()), "0m");
}

TEST(SgrEncoder, BeginsWithAResetIfThereIsSomethingToReset) {
  EXPECT_EQ(sequence(plainStyle(), styleAfter("1;31")), "1;31m");
  EXPECT_EQ(sequence(styleAfter("4"), styleAfter("1;31")), "0;1;31m");
}

TEST(SgrEncoder, WritesEachFlag) {
  for (const std::string flag : {"1", "2", "3", "4", "7", "8", "9"}) {
    EXPECT_EQ(rewritten(flag), flag + "m");
  }
  EXPECT_EQ(rewritten("9;4;3;2;1"), "1;3;4;9;2m");
}

TEST(SgrEncoder, WritesTheNamedColoursByTheirNames) {
  for (int i = 0; i < 8; ++i) {
    for (const int first : {30, 40, 90, 100}) {
      const std::string code = std::to_string(first + i);
      const bool isDefault = code == "97";
      EXPECT_EQ(rewritten(code), isDefault ? "" : code + "m");
    }
  }
}

TEST(SgrEncoder, WritesThe256ColoursByTheirNumbersAndEachOnlyOnce) {
  for (int i = 16; i < 256; ++i) {
    for (const std::string role : {"3", "4"}) {
      const std::string params = role + "8;5;" + std::to_string(i);
      std::string expected = params + "m";
      if (i == 16) expected = role + "0m";                 // black has a name
      if (i == 231) expected = role == "3" ? "" : "107m";  // and so has white
      EXPECT_EQ(rewritten(params), expected) << params;
    }
  }
}

TEST(SgrEncoder, WritesOtherColoursByTheirComponents) {
  EXPECT_EQ(rewritten("38;2;10;20;30"), "38;2;10;20;30m");
  EXPECT_EQ(rewritten("48;2;1;2;3"), "48;2;1;2;3m");
  EXPECT_EQ(rewritten("38;2;55;95;135"), "38;2;55;95;135m") << "no level of the cube";
  EXPECT_EQ(rewritten("38;2;248;248;248"), "38;2;248;248;248m") << "a grey that would have the number 256";
  EXPECT_EQ(rewritten("38;2;300;-5;1000000"), "38;2;300;-5;1000000m");
  EXPECT_EQ(rewritten("38;5;300"), "38;2;688;688;688m") << "brighter than white";
}

TEST(SgrEncoder, WritesReverseForClearTextOnABackground) {
  EXPECT_EQ(rewritten("31;7"), "7;31m");
  EXPECT_EQ(rewritten("31;42;7"), "32;41m");
  EXPECT_EQ(rewritten("8;42"), "7;32m") << "hidden on a background looks the same";
}

TEST(SgrEncoder, IsReadBackByTheParserWhateverTheStyle) {
  RandomText random(40);
  TextAttributes from = plainStyle();
  for (int round = 0; round < 50000; ++round) {
    const std::string params = randomParams(random);
    const TextAttributes to = styleAfter(params);
    ASSERT_EQ(readBack(from, to), to) << params;
    from = to;
  }
}

TEST(SgrEncoder, WritesTheNearestStyleThatASequenceCanExpress) {
  const auto nearest = [](Color foreground, std::optional<Color> background = {}) {
    TextAttributes style;
    style.foreground = foreground;
    style.background = background;
    return sequence(plainStyle(), style);
  };
  EXPECT_EQ(nearest({0.1, 0.2, 0.3, 1}), "38;2;26;51;77m");
  EXPECT_EQ(nearest({0.8, 0, 0, 0.25}), "2;31m");
  EXPECT_EQ(nearest({0.8, 0, 0, 0}), "8m");
  EXPECT_EQ(nearest(Color::white, Color{0.8, 0, 0, 0.25}), "41m");
  EXPECT_EQ(nearest({1e300, -1e300, 0, 1}), "38;2;9007199254740992;-9007199254740992;0m");
  TextAttributes large;
  large.font.size = 20;
  EXPECT_EQ(readBack(styleAfter("31"), large), plainStyle());
}

}  // namespace
}  // namespace zolt
