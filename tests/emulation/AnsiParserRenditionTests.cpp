#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "emulation/StyledRuns.h"

namespace zolt {
namespace {

constexpr Color kRed{0.8, 0.0, 0.0, 1.0};
constexpr Color kBlue{0.0, 0.0, 0.8, 1.0};

// The plain style, changed.
TextAttributes plainBut(const std::function<void(TextAttributes&)>& change) {
  TextAttributes style = plainStyle();
  change(style);
  return style;
}

struct FlagRow {
  const char* on;
  const char* off;
  std::function<void(TextAttributes&)> look;
};

const std::vector<FlagRow>& flagRows() {
  static const std::vector<FlagRow> rows{
      {"1", "22", [](TextAttributes& a) { a.font.weight = FontWeight::Bold; }},
      {"2", "22", [](TextAttributes& a) { a.foreground.alpha = 0.5; }},
      {"3", "23", [](TextAttributes& a) { a.font.slant = FontSlant::Italic; }},
      {"4", "24", [](TextAttributes& a) { a.underline = Line::Single; }},
      {"7", "27",
       [](TextAttributes& a) {
         a.foreground = Color::clear;
         a.background = Color::white;
       }},
      {"8", "28", [](TextAttributes& a) { a.foreground = Color::clear; }},
      {"9", "29", [](TextAttributes& a) { a.strikethrough = Line::Single; }},
  };
  return rows;
}

TEST(SgrFlags, SetAStyleAndTheirCounterpartsResetIt) {
  for (const FlagRow& row : flagRows()) {
    const std::string on = row.on;
    EXPECT_EQ(styleAfter(on), plainBut(row.look)) << on;
    EXPECT_EQ(styleAfter(on + ";" + row.off), plainStyle()) << on;
    EXPECT_EQ(styleAfter(on + ";0"), plainStyle()) << on;
  }
}

TEST(SgrFlags, AreSwitchedOffByTheirOwnCounterpartOnly) {
  for (const FlagRow& row : flagRows()) {
    for (const char* other : {"22", "23", "24", "27", "28", "29"}) {
      if (other == std::string(row.off)) continue;
      EXPECT_EQ(styleAfter(row.on + std::string(";") + other), plainBut(row.look)) << row.on << ' ' << other;
    }
  }
}

TEST(SgrFlags, BoldAndDimAreSwitchedOffTogether) {
  EXPECT_EQ(styleAfter("1;2;22"), plainStyle());
}

TEST(SgrFlags, LeaveTheColoursAlone) {
  EXPECT_EQ(styleAfter("31;44;1;3;4;9;22;23;24;29"), plainBut([](TextAttributes& a) {
              a.foreground = kRed;
              a.background = kBlue;
            }));
}

TEST(SgrFlags, CombineInOneStyle) {
  EXPECT_EQ(styleAfter("1;3;4;9"), plainBut([](TextAttributes& a) {
              a.font.weight = FontWeight::Bold;
              a.font.slant = FontSlant::Italic;
              a.underline = a.strikethrough = Line::Single;
            }));
}

TEST(SgrReset, RestoresTheInitialRendition) {
  EXPECT_EQ(styleAfter("1;2;3;4;7;8;9;31;44;0"), plainStyle());
  EXPECT_EQ(parsed("\x1B[1;2;3;4;7;8;9;31;44m\x1B[mx"), (StyledRuns{{"x", plainStyle()}}));
}

TEST(SgrReset, TakesEffectInTheMiddleOfASequence) {
  EXPECT_EQ(styleAfter("1;4;0;3"), plainBut([](TextAttributes& a) { a.font.slant = FontSlant::Italic; }));
}

TEST(SgrReset, EndsARunAndBeginsAPlainOne) {
  const TextAttributes boldRed = plainBut([](TextAttributes& a) {
    a.font.weight = FontWeight::Bold;
    a.foreground = kRed;
  });
  EXPECT_EQ(parsed("\x1B[1;31mx\x1B[0my"), (StyledRuns{{"x", boldRed}, {"y", plainStyle()}}));
}

TEST(SgrReverse, SwapsTheColoursOfTheRun) {
  EXPECT_EQ(styleAfter("31;44;7"), plainBut([](TextAttributes& a) {
              a.foreground = kBlue;
              a.background = kRed;
            }));
}

TEST(SgrReverse, OfTheDefaultColoursIsClearTextOnWhite) {
  EXPECT_EQ(parsed("\x1B[7mx"), (StyledRuns{{"x", plainBut([](TextAttributes& a) {
                                               a.foreground = Color::clear;
                                               a.background = Color::white;
                                             })}}));
}

TEST(SgrReverse, SwapsWhateverTheColoursBecomeLater) {
  EXPECT_EQ(styleAfter("7;31"), plainBut([](TextAttributes& a) {
              a.foreground = Color::clear;
              a.background = kRed;
            }));
}

TEST(SgrDim, HalvesTheOpacityOfTheForeground) {
  EXPECT_EQ(styleAfter("31;2"), plainBut([](TextAttributes& a) { a.foreground = {0.8, 0.0, 0.0, 0.5}; }));
}

TEST(SgrDim, ComesAfterTheSwapOfReverse) {
  EXPECT_EQ(styleAfter("31;44;7;2"), plainBut([](TextAttributes& a) {
              a.foreground = {0.0, 0.0, 0.8, 0.5};
              a.background = kRed;
            }));
}

TEST(SgrHidden, GivesClearTextWhateverTheColours) {
  for (const char* colors : {"8", "31;8", "8;97", "2;31;8", "38;5;196;8"}) {
    EXPECT_EQ(styleAfter(colors).foreground, Color::clear) << colors;
  }
}

TEST(SgrHidden, KeepsTheBackgroundAndComesAfterTheSwapOfReverse) {
  EXPECT_EQ(styleAfter("31;44;7;8"), plainBut([](TextAttributes& a) {
              a.foreground = Color::clear;
              a.background = kRed;
            }));
}

TEST(SgrCodes, WithoutAMeaningAreIgnored) {
  const TextAttributes before = styleAfter("1;4;31;44");
  std::vector<int> meaningless{5, 6, 25, 26, 98, 99, 108, 109, 255, 1000, -1, -31, -38};
  for (int code = 10; code <= 21; ++code) {
    meaningless.push_back(code);
  }
  for (int code = 50; code <= 89; ++code) {
    meaningless.push_back(code);
  }
  for (const int code : meaningless) {
    EXPECT_EQ(styleAfter("1;4;31;44;" + std::to_string(code)), before) << code;
  }
}

TEST(SgrSequence, ThatIsOtherThanMChangesNothing) {
  EXPECT_EQ(parsed("\x1B[1;31Mx"), (StyledRuns{{"x", plainStyle()}}));
  EXPECT_EQ(parsed("\x1B[1;31nx"), (StyledRuns{{"x", plainStyle()}}));
}

}  // namespace
}  // namespace zolt
