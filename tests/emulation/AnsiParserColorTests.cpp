#include <gtest/gtest.h>

#include <array>
#include <string>

#include "emulation/SGR.h"
#include "emulation/StyledRuns.h"

namespace zolt {
namespace {

constexpr std::array<Color, 8> kStandard{{
    {0.0, 0.0, 0.0, 1.0},
    {0.8, 0.0, 0.0, 1.0},
    {0.0, 0.8, 0.0, 1.0},
    {0.8, 0.8, 0.0, 1.0},
    {0.0, 0.0, 0.8, 1.0},
    {0.8, 0.0, 0.8, 1.0},
    {0.0, 0.8, 0.8, 1.0},
    {0.75, 0.75, 0.75, 1.0},
}};

constexpr std::array<Color, 8> kBright{{
    {0.5, 0.5, 0.5, 1.0},
    {1.0, 0.33, 0.33, 1.0},
    {0.33, 1.0, 0.33, 1.0},
    {1.0, 1.0, 0.33, 1.0},
    {0.33, 0.33, 1.0, 1.0},
    {1.0, 0.33, 1.0, 1.0},
    {0.33, 1.0, 1.0, 1.0},
    {1.0, 1.0, 1.0, 1.0},
}};

Color foregroundAfter(const std::string& params) {
  return styleAfter(params).foreground;
}

std::optional<Color> backgroundAfter(const std::string& params) {
  return styleAfter(params).background;
}

TEST(SgrColors, NameEightStandardAndEightBrightOnes) {
  for (int i = 0; i < 8; ++i) {
    const auto index = static_cast<std::size_t>(i);
    EXPECT_EQ(foregroundAfter(std::to_string(30 + i)), kStandard[index]);
    EXPECT_EQ(backgroundAfter(std::to_string(40 + i)), kStandard[index]);
    EXPECT_EQ(foregroundAfter(std::to_string(90 + i)), kBright[index]);
    EXPECT_EQ(backgroundAfter(std::to_string(100 + i)), kBright[index]);
  }
}

TEST(SgrColors, ChangeOneRoleOnly) {
  EXPECT_EQ(backgroundAfter("31"), std::nullopt);
  EXPECT_EQ(backgroundAfter("91"), std::nullopt);
  EXPECT_EQ(foregroundAfter("41"), Color::white);
  EXPECT_EQ(foregroundAfter("101"), Color::white);
}

TEST(SgrColors, ReturnToTheDefaultOfTheirRole) {
  EXPECT_EQ(foregroundAfter("31;44;39"), Color::white);
  EXPECT_EQ(backgroundAfter("31;44;39"), kStandard[4]);
  EXPECT_EQ(backgroundAfter("31;44;49"), std::nullopt);
  EXPECT_EQ(foregroundAfter("31;44;49"), kStandard[1]);
}

TEST(SgrColors, OfTheDefaultForegroundAreBrighterThanPaletteWhite) {
  EXPECT_NE(foregroundAfter("37"), foregroundAfter("39"));
  EXPECT_EQ(foregroundAfter("97"), foregroundAfter("39"));
}

TEST(SgrPalette, BeginsWithTheNamedColors) {
  for (int i = 0; i < 16; ++i) {
    const auto index = static_cast<std::size_t>(i % 8);
    const Color expected = i < 8 ? kStandard[index] : kBright[index];
    EXPECT_EQ(foregroundAfter("38;5;" + std::to_string(i)), expected) << i;
    EXPECT_EQ(backgroundAfter("48;5;" + std::to_string(i)), expected) << i;
  }
}

TEST(SgrPalette, ContinuesWithACubeOfSixLevels) {
  constexpr std::array kLevels{0.0, 95 / 255.0, 135 / 255.0, 175 / 255.0, 215 / 255.0, 255 / 255.0};
  std::int64_t n = 16;
  for (const double red : kLevels) {
    for (const double green : kLevels) {
      for (const double blue : kLevels) {
        EXPECT_EQ(color256(n), (Color{red, green, blue, 1.0})) << n;
        ++n;
      }
    }
  }
  EXPECT_EQ(n, 232);
  EXPECT_EQ(foregroundAfter("38;5;196"), (Color{1.0, 0.0, 0.0, 1.0}));
  EXPECT_EQ(backgroundAfter("48;5;21"), (Color{0.0, 0.0, 1.0, 1.0}));
}

TEST(SgrPalette, EndsWithGreysThatMayBeBrighterThanWhite) {
  for (int n = 232; n <= 300; ++n) {
    const double level = ((n - 232) * 10 + 8) / 255.0;
    EXPECT_EQ(foregroundAfter("38;5;" + std::to_string(n)), (Color{level, level, level, 1.0})) << n;
  }
  EXPECT_EQ(foregroundAfter("38;5;244"), Color::gray(128 / 255.0));
  EXPECT_GT(foregroundAfter("38;5;257").red, 1.0);
  EXPECT_EQ(foregroundAfter("38;5;1000000000"), Color::gray(9999997688.0 / 255.0));
}

TEST(SgrDirectColors, AreFractionsOf255) {
  EXPECT_EQ(foregroundAfter("38;2;10;20;30"), (Color{10 / 255.0, 20 / 255.0, 30 / 255.0, 1.0}));
  EXPECT_EQ(backgroundAfter("48;2;255;0;128"), (Color{1.0, 0.0, 128 / 255.0, 1.0}));
}

TEST(SgrDirectColors, AreNotClamped) {
  EXPECT_EQ(foregroundAfter("38;2;510;1000;-255"), (Color{2.0, 1000 / 255.0, -1.0, 1.0}));
}

TEST(SgrDirectColors, OfBlackAreABackgroundUnlikeClear) {
  EXPECT_EQ(backgroundAfter("48;2;0;0;0"), Color::black);
  EXPECT_EQ(backgroundAfter("40"), Color::black);
}

TEST(SgrExtendedColors, AreFollowedByOrdinaryCodes) {
  const TextAttributes style = styleAfter("38;5;196;1;48;2;0;0;255;4");
  EXPECT_EQ(style.foreground, (Color{1.0, 0.0, 0.0, 1.0}));
  EXPECT_EQ(style.background, (Color{0.0, 0.0, 1.0, 1.0}));
  EXPECT_EQ(style.font.weight, FontWeight::Bold);
  EXPECT_EQ(style.underline, Line::Single);
}

TEST(SgrExtendedColors, ThatAreIncompleteAreIgnoredAlone) {
  EXPECT_EQ(styleAfter("38"), plainStyle());
  EXPECT_EQ(styleAfter("48"), plainStyle());
  EXPECT_EQ(styleAfter("38;5"), plainStyle());
  EXPECT_EQ(styleAfter("48;5"), plainStyle());
  EXPECT_EQ(styleAfter("1;38"), styleAfter("1"));
}

TEST(SgrExtendedColors, ThatLackComponentsTurnOnDimAndWhateverFollows) {
  EXPECT_EQ(styleAfter("38;2;255"), styleAfter("2"));
  EXPECT_EQ(styleAfter("38;2;1;4"), styleAfter("2;1;4"));
  EXPECT_EQ(styleAfter("48;2;31;9"), styleAfter("2;31;9"));
}

TEST(SgrExtendedColors, OfAnUnknownKindAreIgnoredAlone) {
  EXPECT_EQ(styleAfter("38;1"), styleAfter("1"));
  EXPECT_EQ(styleAfter("38;3;31"), styleAfter("3;31"));
  EXPECT_EQ(styleAfter("48;0;1"), styleAfter("1"));
  EXPECT_EQ(styleAfter("38;48;5;196"), styleAfter("48;5;196"));
}

TEST(SgrExtendedColors, SkipEmptyFields) {
  EXPECT_EQ(styleAfter("38;2;;10;20;30"), styleAfter("38;2;10;20;30"));
  EXPECT_EQ(styleAfter("38;;5;;196"), styleAfter("38;5;196"));
}

}  // namespace
}  // namespace zolt
