#include "vt/theme/Theme.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ostream>
#include <set>
#include <vector>

#include "vt/theme/Contrast.h"

namespace zolt::vt {
namespace {

constexpr double kReadable = 4.5;

// A theme, and its two colours that are shades of the background.
struct Subject {
  const Theme& theme;
  std::array<std::size_t, 2> shades;
};

void PrintTo(const Subject& subject, std::ostream* out) {
  *out << subject.theme.name;
}

class Themes : public testing::TestWithParam<Subject> {
 protected:
  const Theme& theme = GetParam().theme;
  const std::array<std::size_t, 2> shades = GetParam().shades;

  bool isShade(std::size_t color) const { return std::ranges::find(shades, color) != shades.end(); }
};

TEST_P(Themes, EveryColourButTheBackgroundsShadesIsReadable) {
  EXPECT_GE(contrastRatio(theme.foreground, theme.background), 7.0);
  EXPECT_GE(contrastRatio(theme.cursor, theme.background), kReadable);
  for (std::size_t i = 0; i < theme.ansi.size(); ++i) {
    if (isShade(i)) continue;
    EXPECT_GE(contrastRatio(theme.ansi[i], theme.background), kReadable) << i;
  }
}

TEST_P(Themes, TheBackgroundsShadesCanBeToldFromItAndFromEachOther) {
  for (const std::size_t shade : shades) {
    EXPECT_GE(contrastRatio(theme.ansi[shade], theme.background), 1.3) << shade;
    EXPECT_LT(contrastRatio(theme.ansi[shade], theme.background), 3.0) << shade;
  }
  EXPECT_GE(contrastRatio(theme.ansi[shades[0]], theme.ansi[shades[1]]), 1.15);
}

TEST_P(Themes, TextOfEveryColourIsReadableAtTheUsualMinimumContrastWhateverItsBackground) {
  std::vector<Rgb> grounds(theme.ansi.begin(), theme.ansi.end());
  grounds.push_back(theme.background);
  std::vector<Rgb> texts(theme.ansi.begin(), theme.ansi.end());
  texts.push_back(theme.foreground);
  texts.push_back({0x00, 0x00, 0x00});
  texts.push_back({0xFF, 0xFF, 0xFF});
  for (const Rgb& ground : grounds) {
    for (const Rgb& text : texts) {
      EXPECT_GE(contrastRatio(withContrast(text, ground, kReadable), ground), kReadable)
          << colorReport(text) << " on " << colorReport(ground);
    }
  }
}

TEST_P(Themes, ColouredBackgroundsAreReadWithPlainTextInBlackOrWhite) {
  constexpr Rgb kBlack{};
  constexpr Rgb kWhite{0xFF, 0xFF, 0xFF};
  const Rgb& best = contrastRatio(theme.background, kBlack) < contrastRatio(theme.background, kWhite) ? kBlack : kWhite;
  for (std::size_t hue = 1; hue < 7; ++hue) {
    const Rgb& ground = theme.ansi[hue];
    EXPECT_GE(contrastRatio(best, ground), 5.5) << hue;
    EXPECT_EQ(withContrast(theme.foreground, ground, kReadable), best) << hue;
  }
}

TEST_P(Themes, TheSelectionIsVisibleAndWhatIsSelectedReadable) {
  EXPECT_GE(contrastRatio(theme.selectionBackground, theme.background), 1.3);
  EXPECT_EQ(theme.selectionText, std::nullopt);
  EXPECT_GE(contrastRatio(theme.foreground, theme.selectionBackground), kReadable);
  for (std::size_t i = 0; i < theme.ansi.size(); ++i) {
    if (isShade(i)) continue;
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

INSTANTIATE_TEST_SUITE_P(Ours, Themes, testing::Values(Subject{darkTheme(), {0, 8}}, Subject{lightTheme(), {7, 15}}),
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
