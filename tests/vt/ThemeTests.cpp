#include "vt/theme/Theme.h"

#include <gtest/gtest.h>

#include <ostream>
#include <set>

#include "vt/theme/Contrast.h"

namespace zolt::vt {
namespace {

constexpr double kReadable = 4.5;

// A theme, and its one colour that is a shade of the background.
struct Subject {
  const Theme& theme;
  std::size_t shade;
};

void PrintTo(const Subject& subject, std::ostream* out) {
  *out << subject.theme.name;
}

class Themes : public testing::TestWithParam<Subject> {
 protected:
  const Theme& theme = GetParam().theme;
  const std::size_t shade = GetParam().shade;
};

TEST_P(Themes, EveryColourButTheBackgroundsShadeIsReadable) {
  EXPECT_GE(contrastRatio(theme.foreground, theme.background), 7.0);
  EXPECT_GE(contrastRatio(theme.cursor, theme.background), kReadable);
  for (std::size_t i = 0; i < theme.ansi.size(); ++i) {
    if (i == shade) continue;
    EXPECT_GE(contrastRatio(theme.ansi[i], theme.background), kReadable) << i;
  }
}

TEST_P(Themes, TheBackgroundsShadeCanBeToldFromIt) {
  const double contrast = contrastRatio(theme.ansi[shade], theme.background);
  EXPECT_GE(contrast, 1.3);
  EXPECT_LT(contrast, 2.0);
}

TEST_P(Themes, TheSelectionIsVisibleAndWhatIsSelectedReadable) {
  EXPECT_GE(contrastRatio(theme.selectionBackground, theme.background), 1.3);
  EXPECT_EQ(theme.selectionText, std::nullopt);
  EXPECT_GE(contrastRatio(theme.foreground, theme.selectionBackground), kReadable);
  for (std::size_t i = 0; i < theme.ansi.size(); ++i) {
    if (i == shade) continue;
    EXPECT_GE(contrastRatio(theme.ansi[i], theme.selectionBackground), 3.0) << i;
  }
}

TEST_P(Themes, ColoursAreOfTheHueThatTheyAreNamedAfter) {
  // Red, green, yellow, blue, magenta, cyan: which components are strong.
  constexpr std::array<std::array<bool, 3>, 6> kStrong{{{true, false, false},
                                                        {false, true, false},
                                                        {true, true, false},
                                                        {false, false, true},
                                                        {true, false, true},
                                                        {false, true, true}}};
  for (const std::size_t first : {1U, 9U}) {
    for (std::size_t hue = 0; hue < kStrong.size(); ++hue) {
      const Rgb& color = theme.ansi[first + hue];
      const std::array<std::uint8_t, 3> parts{color.red, color.green, color.blue};
      for (std::size_t one = 0; one < 3; ++one) {
        for (std::size_t other = 0; other < 3; ++other) {
          if (!kStrong[hue][one] || kStrong[hue][other]) continue;
          EXPECT_GT(parts[one], parts[other]) << first + hue;
        }
      }
    }
  }
}

TEST_P(Themes, ColoursOfEqualRankAreBalanced) {
  for (const std::size_t first : {1U, 9U}) {
    double least = 21;
    double most = 1;
    for (std::size_t i = first; i < first + 6; ++i) {
      const double contrast = contrastRatio(theme.ansi[i], theme.background);
      least = std::min(least, contrast);
      most = std::max(most, contrast);
    }
    EXPECT_LT(most / least, 1.5) << first;
  }
}

TEST_P(Themes, NoTwoColoursAreAlike) {
  std::set<std::string> seen;
  for (const Rgb& color : theme.ansi) {
    seen.insert(colorReport(color));
  }
  EXPECT_EQ(seen.size(), theme.ansi.size());
}

INSTANTIATE_TEST_SUITE_P(Ours, Themes, testing::Values(Subject{darkTheme(), 0}, Subject{lightTheme(), 15}),
                         [](const auto& each) { return std::string(each.param.theme.name); });

TEST(Theme, BecomesThePalettesDefaults) {
  Palette palette;
  applyTheme(palette, lightTheme());
  EXPECT_EQ(palette.role(Palette::Role::Foreground), lightTheme().foreground);
  EXPECT_EQ(palette.role(Palette::Role::Background), lightTheme().background);
  EXPECT_EQ(palette.role(Palette::Role::Cursor), lightTheme().cursor);
  EXPECT_EQ(palette.indexed(0), lightTheme().ansi[0]);
  EXPECT_EQ(palette.indexed(15), lightTheme().ansi[15]);
  EXPECT_EQ(palette.indexed(16), Rgb{}) << "the cube is the same in all themes";
}

TEST(Theme, LeavesColoursAloneThatAProgramHasChanged) {
  constexpr Rgb kOwn{1, 2, 3};
  Palette palette;
  applyTheme(palette, darkTheme());
  palette.setIndexed(4, kOwn);
  palette.setRole(Palette::Role::Background, kOwn);
  palette.setRole(Palette::Role::Cursor, kOwn);
  applyTheme(palette, lightTheme());
  EXPECT_EQ(palette.indexed(4), kOwn);
  EXPECT_EQ(palette.role(Palette::Role::Background), kOwn);
  EXPECT_EQ(palette.role(Palette::Role::Cursor), kOwn);
  EXPECT_EQ(palette.indexed(5), lightTheme().ansi[5]);
  palette.reset();
  EXPECT_EQ(palette.indexed(4), lightTheme().ansi[4]);
  EXPECT_EQ(palette.role(Palette::Role::Background), lightTheme().background);
  EXPECT_EQ(palette.role(Palette::Role::Cursor), lightTheme().cursor);
}

}  // namespace
}  // namespace zolt::vt
