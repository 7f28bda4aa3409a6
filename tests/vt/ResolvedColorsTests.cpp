#include "vt/theme/ResolvedColors.h"

#include <gtest/gtest.h>

#include "vt/theme/Contrast.h"

namespace zolt::vt {
namespace {

constexpr Rgb kText{0xE0, 0xE0, 0xE0};
constexpr Rgb kGround{0x10, 0x10, 0x10};
constexpr Rgb kRed{0xC0, 0x20, 0x20};
constexpr Rgb kBrightRed{0xFF, 0x60, 0x60};
constexpr Rgb kCubeColor{0x5F, 0x87, 0xAF};  // 67: 16 + 36 + 2 * 6 + 3
constexpr Rgb kDirect{0x12, 0x34, 0x56};

Palette palette() {
  Palette colors;
  colors.setRole(Palette::Role::Foreground, kText);
  colors.setRole(Palette::Role::Background, kGround);
  colors.setIndexed(1, kRed);
  colors.setIndexed(9, kBrightRed);
  return colors;
}

constexpr CellColor red = CellColor::indexed(1);
constexpr CellColor cube = CellColor::indexed(67);
constexpr CellColor direct = CellColor::direct(0x12, 0x34, 0x56);

struct Case {
  const char* says;
  Style style;
  ResolveOptions options;
  Rgb foreground;
  std::optional<Rgb> background = std::nullopt;
  std::optional<Rgb> underline = std::nullopt;  // none: the foreground
};

const Case kCases[] = {
    {.says = "the default colours leave the ground as it is", .style = {}, .options = {}, .foreground = kText},
    {.says = "colours come from the palette",
     .style = {.foreground = red, .background = cube},
     .options = {},
     .foreground = kRed,
     .background = kCubeColor},
    {.says = "direct colours are taken as they are",
     .style = {.foreground = direct, .background = direct},
     .options = {},
     .foreground = kDirect,
     .background = kDirect},
    {.says = "an underline may have a colour of its own",
     .style = {.foreground = red, .underlineColor = direct},
     .options = {},
     .foreground = kRed,
     .underline = kDirect},
    {.says = "bold alone changes no colour",
     .style = {.foreground = red, .flags = kBold},
     .options = {},
     .foreground = kRed},
    {.says = "bold text is bright if that is wanted",
     .style = {.foreground = red, .background = red, .flags = kBold},
     .options = {.boldIsBright = true},
     .foreground = kBrightRed,
     .background = kRed},
    {.says = "bold default text is not",
     .style = {.flags = kBold},
     .options = {.boldIsBright = true},
     .foreground = kText},
    {.says = "nor is any colour beyond the first 8",
     .style = {.foreground = CellColor::indexed(9), .flags = kBold},
     .options = {.boldIsBright = true},
     .foreground = kBrightRed},
    {.says = "nor a direct one",
     .style = {.foreground = direct, .flags = kBold},
     .options = {.boldIsBright = true},
     .foreground = kDirect},
    {.says = "inverse exchanges colours",
     .style = {.foreground = red, .background = direct, .flags = kInverse},
     .options = {},
     .foreground = kDirect,
     .background = kRed},
    {.says = "inverse default text has the ground's colour on its own",
     .style = {.flags = kInverse},
     .options = {},
     .foreground = kGround,
     .background = kText},
    {.says = "inverse bold text has a bright background",
     .style = {.foreground = red, .flags = kInverse | kBold},
     .options = {.boldIsBright = true},
     .foreground = kGround,
     .background = kBrightRed},
    {.says = "inverse leaves an underline's own colour alone",
     .style = {.foreground = red, .underlineColor = direct, .flags = kInverse},
     .options = {},
     .foreground = kGround,
     .background = kRed,
     .underline = kDirect},
    {.says = "a reversed screen exchanges the default colours",
     .style = {},
     .options = {.reverseScreen = true},
     .foreground = kGround},
    {.says = "and no others",
     .style = {.foreground = red, .background = direct},
     .options = {.reverseScreen = true},
     .foreground = kRed,
     .background = kDirect},
    {.says = "inverse text in a reversed screen looks as usual",
     .style = {.flags = kInverse},
     .options = {.reverseScreen = true},
     .foreground = kText,
     .background = kGround},
    {.says = "hidden text cannot be seen",
     .style = {.foreground = red, .underlineColor = cube, .flags = kHidden},
     .options = {.minimumContrast = 7},
     .foreground = kGround,
     .underline = kGround},
    {.says = "even on a background",
     .style = {.foreground = red, .background = direct, .flags = kHidden},
     .options = {},
     .foreground = kDirect,
     .background = kDirect,
     .underline = kDirect},
    {.says = "hidden inverse text neither",
     .style = {.foreground = red, .flags = kHidden | kInverse},
     .options = {},
     .foreground = kRed,
     .background = kRed,
     .underline = kRed},
    {.says = "faint text is half as strong",
     .style = {.flags = kFaint},
     .options = {},
     .foreground = {0x78, 0x78, 0x78}},
    {.says = "in a reversed screen too",
     .style = {.flags = kFaint},
     .options = {.reverseScreen = true},
     .foreground = {0x78, 0x78, 0x78}},
    {.says = "faint text stands on its own background",
     .style = {.background = CellColor::direct(0, 0, 0), .flags = kFaint},
     .options = {},
     .foreground = {0x70, 0x70, 0x70},
     .background = Rgb{}},
    {.says = "faint text of its background's colour stays there",
     .style = {.foreground = direct, .background = direct, .flags = kFaint},
     .options = {},
     .foreground = kDirect,
     .background = kDirect},
    {.says = "a picture keeps its colours whatever the minimum is",
     .style = {.foreground = direct},
     .options = {.minimumContrast = 7, .isGraphic = true},
     .foreground = kDirect},
    {.says = "without a minimum so does text", .style = {.foreground = direct}, .options = {}, .foreground = kDirect},
};

TEST(ResolvedColors, FollowTheStyleThePaletteAndTheOptions) {
  for (const Case& each : kCases) {
    const ResolvedColors colors = resolve(each.style, palette(), each.options);
    EXPECT_EQ(colorReport(colors.foreground), colorReport(each.foreground)) << each.says;
    EXPECT_EQ(colors.background.has_value(), each.background.has_value()) << each.says;
    EXPECT_EQ(colorReport(colors.background.value_or(Rgb{})), colorReport(each.background.value_or(Rgb{})))
        << each.says;
    EXPECT_EQ(colorReport(colors.underline), colorReport(each.underline.value_or(each.foreground))) << each.says;
  }
}

TEST(ResolvedColors, TextHasTheMinimumContrastWithWhatIsBehindIt) {
  const Style styles[] = {{.foreground = direct},
                          {.foreground = direct, .background = direct},
                          {.foreground = red, .background = cube},
                          {.foreground = direct, .background = red, .flags = kInverse},
                          {.foreground = direct, .flags = kFaint}};
  for (const Style& style : styles) {
    for (const bool reverseScreen : {false, true}) {
      const ResolvedColors colors = resolve(style, palette(), {.reverseScreen = reverseScreen, .minimumContrast = 4.5});
      const Rgb behind = colors.background.value_or(groundColor(palette(), reverseScreen));
      EXPECT_GE(contrastRatio(colors.foreground, behind), 4.5) << reverseScreen;
      EXPECT_EQ(colors.underline, colors.foreground);
    }
  }
}

TEST(ResolvedColors, FaintTextStaysReadableIfItWas) {
  const ResolvedColors colors =
      resolve({.foreground = CellColor::direct(0x90, 0x90, 0x90), .flags = kFaint}, palette(), {});
  EXPECT_NEAR(contrastRatio(colors.foreground, kGround), 3.0, 0.1);
  const Rgb dim{0x40, 0x40, 0x40};
  const ResolvedColors dimmer =
      resolve({.foreground = CellColor::direct(0x40, 0x40, 0x40), .flags = kFaint}, palette(), {});
  EXPECT_NEAR(contrastRatio(dimmer.foreground, kGround), contrastRatio(dim, kGround), 0.05)
      << "no stronger than without";
}

TEST(ResolvedColors, TheGroundIsTheDefaultBackgroundOrInAReversedScreenTheForeground) {
  EXPECT_EQ(groundColor(palette(), false), kGround);
  EXPECT_EQ(groundColor(palette(), true), kText);
}

}  // namespace
}  // namespace zolt::vt
