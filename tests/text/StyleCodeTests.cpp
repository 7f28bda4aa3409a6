#include "text/StyleCode.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <set>

namespace zolt {
namespace {

// The components that programs can name: 255ths, and those of the named colours.
std::vector<double> namedComponents() {
  std::vector<double> components{0.33, 0.5, 0.75, 0.8};
  for (int i = 0; i <= 255; ++i) {
    components.push_back(i / 255.0);
  }
  return components;
}

TEST(CompactColor, GivesBackEveryComponentThatCanBeNamedExactly) {
  for (const double component : namedComponents()) {
    for (const Color& color : {Color{component, 0, 1, 1}, Color{1, component, 0, 1}, Color{0, 1, component, 1}}) {
      const auto compact = CompactColor::of(color);
      ASSERT_TRUE(compact) << component;
      EXPECT_EQ(compact->color(), color) << component;
      EXPECT_EQ(CompactColor::fromBits(compact->bits()), *compact);
    }
  }
}

TEST(CompactColor, IsNothingForAComponentThatItCannotHold) {
  for (const double component : {-1.0 / 255, 256 / 255.0, 1.0001, 0.1234, 1e300, -1e300, std::nan(""),
                                 std::numeric_limits<double>::infinity()}) {
    EXPECT_FALSE(CompactColor::of({component, 0, 0, 1})) << component;
    EXPECT_FALSE(CompactColor::of({0, component, 0, 1})) << component;
    EXPECT_FALSE(CompactColor::of({0, 0, component, 1})) << component;
  }
}

// Every combination of what a style is made of.
std::vector<TextAttributes> packable() {
  std::vector<TextAttributes> all;
  for (int bits = 0; bits < 16; ++bits) {
    for (const double alpha : {0.0, 0.5, 1.0}) {
      for (const auto& background : {std::optional<Color>(), std::optional(Color::black), std::optional(Color::white),
                                     std::optional(Color{0.33, 0.5, 0.75, 1})}) {
        TextAttributes style;
        style.foreground = Color{1, 0.33, 7 / 255.0, alpha};
        style.background = background;
        if ((bits & 1) != 0) style.font.weight = FontWeight::Bold;
        if ((bits & 2) != 0) style.font.slant = FontSlant::Italic;
        if ((bits & 4) != 0) style.underline = Line::Single;
        if ((bits & 8) != 0) style.strikethrough = Line::Single;
        all.push_back(style);
      }
    }
  }
  return all;
}

TEST(StyleCode, GivesBackEveryStyleThatItPacks) {
  std::set<std::uint64_t> codes;
  for (const TextAttributes& style : packable()) {
    const auto code = StyleCode::of(style);
    ASSERT_TRUE(code);
    EXPECT_FALSE(code->isListed());
    EXPECT_EQ(code->attributes(), style);
    EXPECT_EQ(StyleCode::fromBits(code->bits()), *code);
    codes.insert(code->bits());
  }
  EXPECT_EQ(codes.size(), packable().size());
}

TEST(StyleCode, OfNothingSaidIsThePlainStyle) {
  EXPECT_EQ(StyleCode().attributes(), TextAttributes());
  EXPECT_EQ(StyleCode::of(TextAttributes()), StyleCode());
}

TEST(StyleCode, PacksNothingThatWouldComeBackDifferent) {
  const auto packs = [](auto change) {
    TextAttributes style;
    change(style);
    return StyleCode::of(style).has_value();
  };
  EXPECT_FALSE(packs([](TextAttributes& style) { style.font.size = 15; }));
  EXPECT_FALSE(packs([](TextAttributes& style) { style.foreground.alpha = 0.25; }));
  EXPECT_FALSE(packs([](TextAttributes& style) { style.foreground.green = 1.5; }));
  EXPECT_FALSE(packs([](TextAttributes& style) { style.background = Color::clear; }));
  EXPECT_FALSE(packs([](TextAttributes& style) { style.background = Color{2, 0, 0, 1}; }));
  EXPECT_TRUE(packs([](TextAttributes&) {}));
}

TEST(StyleCode, NamesAPlaceInAList) {
  for (const std::size_t index : {std::size_t{0}, std::size_t{1}, std::size_t{65280}}) {
    EXPECT_TRUE(StyleCode::listed(index).isListed());
    EXPECT_EQ(StyleCode::listed(index).listIndex(), index);
  }
}

}  // namespace
}  // namespace zolt
