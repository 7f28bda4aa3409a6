#include "vt/theme/Contrast.h"

#include <gtest/gtest.h>

#include <vector>

namespace zolt::vt {
namespace {

constexpr Rgb kBlack{};
constexpr Rgb kWhite{0xFF, 0xFF, 0xFF};

// Colours from all over the cube, its corners and greys included.
std::vector<Rgb> samples() {
  constexpr std::array<std::uint8_t, 6> kLevels{0, 1, 60, 119, 200, 255};
  std::vector<Rgb> colors;
  for (const std::uint8_t red : kLevels) {
    for (const std::uint8_t green : kLevels) {
      for (const std::uint8_t blue : kLevels) {
        colors.push_back({red, green, blue});
      }
    }
  }
  return colors;
}

TEST(Contrast, IsTheRatioThatWcagDefines) {
  EXPECT_DOUBLE_EQ(contrastRatio(kBlack, kWhite), 21.0);
  EXPECT_DOUBLE_EQ(contrastRatio(kWhite, kWhite), 1.0);
  EXPECT_NEAR(contrastRatio({0x76, 0x76, 0x76}, kWhite), 4.54, 0.005);
  EXPECT_NEAR(contrastRatio(kWhite, {0x77, 0x77, 0x77}), 4.48, 0.005);
  EXPECT_NEAR(contrastRatio({0xFF, 0x00, 0x00}, kWhite), 4.00, 0.005);
  EXPECT_NEAR(contrastRatio({0x00, 0x00, 0xFF}, kBlack), 2.44, 0.005);
  EXPECT_NEAR(contrastRatio({0x00, 0x05, 0x0B}, kBlack), 1.03, 0.005) << "the straight part of the curve";
}

TEST(Contrast, LeavesTextAloneThatHasEnough) {
  EXPECT_EQ(withContrast(kWhite, kBlack, 21), kWhite);
  EXPECT_EQ(withContrast({0x80, 0x10, 0x20}, {0x80, 0x10, 0x20}, 1), (Rgb{0x80, 0x10, 0x20}));
  EXPECT_EQ(withContrast({0x76, 0x76, 0x76}, kWhite, 4.5), (Rgb{0x76, 0x76, 0x76}));
}

TEST(Contrast, ReachesTheMinimumWhereverBlackOrWhiteWould) {
  for (const Rgb& background : samples()) {
    const double most = std::max(contrastRatio(kBlack, background), contrastRatio(kWhite, background));
    for (const Rgb& text : samples()) {
      for (const double minimum : {1.5, 3.0, 4.5, 7.0, 21.0}) {
        const double reached = contrastRatio(withContrast(text, background, minimum), background);
        ASSERT_GE(reached, std::min(minimum, most) - 1e-9) << colorReport(text) << " on " << colorReport(background);
      }
    }
  }
}

// A step of 8 bits is up to a few percent of a ratio.
TEST(Contrast, ChangesTextNoMoreThanNeeded) {
  for (const Rgb& background : samples()) {
    for (const Rgb& text : samples()) {
      for (const double minimum : {3.0, 4.5}) {
        const Rgb readable = withContrast(text, background, minimum);
        if (readable == text || readable == kBlack || readable == kWhite) continue;
        ASSERT_LE(contrastRatio(readable, background), minimum * 1.05)
            << colorReport(text) << " on " << colorReport(background);
      }
    }
  }
}

TEST(Contrast, KeepsTextOnItsSideOfTheBackgroundIfThatSideHasRoom) {
  constexpr Rgb kGrey{0x77, 0x77, 0x77};
  EXPECT_GT(withContrast({0x80, 0x80, 0x80}, kGrey, 3).red, 0x80);
  EXPECT_LT(withContrast({0x70, 0x70, 0x70}, kGrey, 3).red, 0x70);
  EXPECT_LT(withContrast({0xD0, 0xD0, 0xD0}, {0xC0, 0xC0, 0xC0}, 4.5).red, 0xC0) << "white would not be enough";
  EXPECT_GT(withContrast({0x20, 0x20, 0x20}, {0x30, 0x30, 0x30}, 4.5).red, 0x30) << "black would not be enough";
}

TEST(Contrast, MakesAGreyThatHasToChangeSidesBlackOrWhite) {
  EXPECT_EQ(withContrast({0xD5, 0xD9, 0xE1}, {0x53, 0x98, 0xF1}, 4.5), kBlack);
  EXPECT_EQ(withContrast({0x28, 0x2B, 0x33}, {0x02, 0x58, 0xB2}, 4.5), kWhite);
  const Rgb yellow = withContrast({0xFF, 0xFF, 0x00}, {0x53, 0x98, 0xF1}, 4.5);
  EXPECT_GT(yellow.red, yellow.blue) << "a hue is kept";
  EXPECT_EQ(withContrast({0x80, 0x80, 0x80}, kBlack, 7).red, 0x95) << "a grey that stays changes as little as it can";
}

TEST(Contrast, EndsAtBlackOrWhiteIfNothingIsEnough) {
  EXPECT_EQ(withContrast({0x60, 0x60, 0x60}, {0x60, 0x60, 0x60}, 21), kWhite);
  EXPECT_EQ(withContrast({0x90, 0x90, 0x90}, {0x90, 0x90, 0x90}, 21), kBlack);
}

TEST(Contrast, KeepsTheHue) {
  struct Case {
    Rgb text;
    Rgb background;
    double minimum;
    Rgb expected;
  };
  const Case cases[] = {
      // Brighter in its own hue, as far as that goes.
      {{0x60, 0x00, 0x00}, kBlack, 3, {0xB7, 0x00, 0x00}},
      // Paler from there on.
      {{0x00, 0x00, 0x80}, kBlack, 4.5, {0x5E, 0x5E, 0xFF}},
      // Darker in its own hue.
      {{0xFF, 0xA0, 0x00}, kWhite, 4.5, {0xA8, 0x68, 0x00}},
      // Without one.
      {kBlack, kBlack, 4.5, {0x75, 0x75, 0x75}},
      {{0xF8, 0xF8, 0xF8}, kWhite, 4.5, {0x76, 0x76, 0x76}},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(colorReport(withContrast(each.text, each.background, each.minimum)), colorReport(each.expected));
  }
}

}  // namespace
}  // namespace zolt::vt
