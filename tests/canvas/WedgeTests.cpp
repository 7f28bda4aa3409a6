// Areas with slanting and round edges: both sides of an edge fill the cell.
#include <gtest/gtest.h>

#include <numbers>
#include <string_view>
#include <utility>

#include "canvas/SymbolPictures.h"

namespace zolt {
namespace {

using namespace std::string_view_literals;

class WedgeTest : public SymbolTest {
 protected:
  const SymbolPicture full = flat(size, 255);
};

TEST_P(WedgeTest, ComplementsTheOtherSideOfItsLine) {
  constexpr char32_t kToOtherSide = 22;
  for (char32_t symbol = 0x1FB3C; symbol <= 0x1FB51; ++symbol) {
    EXPECT_TRUE(nearlyEqual(drawn(symbol) + drawn(symbol + kToOtherSide), full)) << drawn(symbol);
  }
  constexpr char32_t kToQuarter = 4;
  for (char32_t symbol = 0x1FB68; symbol <= 0x1FB6B; ++symbol) {
    EXPECT_TRUE(nearlyEqual(drawn(symbol) + drawn(symbol + kToQuarter), full)) << drawn(symbol);
  }
  EXPECT_TRUE(nearlyEqual(drawn(U'🮚') + drawn(U'🮛'), full));
  EXPECT_TRUE(nearlyEqual(drawn(U'🮚'), drawn(U'🭭') + drawn(U'🭯')));
  EXPECT_TRUE(nearlyEqual(drawn(U'🮜') + drawn(U'🮞'), drawn(U'▒')));
  EXPECT_TRUE(nearlyEqual(drawn(U'🮝') + drawn(U'🮟'), drawn(U'▒')));
}

TEST_P(WedgeTest, CoversTheSideThatItIsNamedAfter) {
  const int right = size.width - 1;
  const int low = size.height - 1;
  const auto isCovered = [&](char32_t symbol, int x, int y) { return drawn(symbol).at(x, y) > 100; };
  for (char32_t symbol = 0x1FB3C; symbol <= 0x1FB67; ++symbol) {
    const bool lower = symbol <= 0x1FB51;
    const bool left =
        symbol <= 0x1FB40 || (symbol >= 0x1FB4C && symbol <= 0x1FB51) || (symbol >= 0x1FB57 && symbol <= 0x1FB61);
    EXPECT_TRUE(isCovered(symbol, left ? 0 : right, lower ? low : 0)) << drawn(symbol);
    EXPECT_FALSE(isCovered(symbol, left ? right : 0, lower ? 0 : low)) << drawn(symbol);
  }
}

TEST_P(WedgeTest, EndsWhereTheSextantsDo) {
  // The upright edges of a wedge are those of sextants beside it, but for the pixel at its tip.
  const auto covered = [](const std::vector<int>& edge) {
    return std::ranges::count_if(edge, [](int pixel) { return pixel > 0; });
  };
  EXPECT_EQ(covered(drawn(U'🭈').right()), covered(drawn(U'🬭').left()));  // a third
  EXPECT_EQ(covered(drawn(U'🭊').right()), covered(drawn(U'🬹').left()));  // two thirds
  EXPECT_EQ(covered(drawn(U'🬽').left()), covered(drawn(U'🬭').right()));
  EXPECT_EQ(covered(drawn(U'🬿').left()), covered(drawn(U'🬹').right()));
}

class CircleTest : public SymbolTest {};

TEST_P(CircleTest, IsAsWideAsTheCellAndSymmetrical) {
  const double radius = std::min(size.width, size.height) / 2.0;
  const double disc = std::numbers::pi * radius * radius;
  for (char32_t half : U"🯨🯩🯪🯫"sv)
    EXPECT_NEAR(drawn(half).area(), disc / 2, radius / 4);
  for (char32_t quarter : U"🯬🯭🯮🯯"sv)
    EXPECT_NEAR(drawn(quarter).area(), disc / 4, radius / 4);
  EXPECT_TRUE(nearlyEqual(drawn(U'🯨'), drawn(U'🯪').upsideDown()));
  EXPECT_TRUE(nearlyEqual(drawn(U'🯩'), drawn(U'🯫').mirrored()));
  EXPECT_TRUE(nearlyEqual(drawn(U'🯬'), drawn(U'🯯').mirrored()));
  EXPECT_TRUE(nearlyEqual(drawn(U'🯭'), drawn(U'🯮').mirrored()));
  EXPECT_TRUE(nearlyEqual(drawn(U'🯬'), drawn(U'🯮').upsideDown()));
}

TEST_P(CircleTest, IsOutlinedInsideItsDisc) {
  constexpr std::pair<char32_t, char32_t> kOutlines[] = {
      {U'🯠', U'🯨'}, {U'🯡', U'🯩'}, {U'🯢', U'🯪'}, {U'🯣', U'🯫'}};
  for (const auto& [outline, disc] : kOutlines) {
    EXPECT_TRUE(nearlyEqual(drawn(outline) | drawn(disc), drawn(disc)));
    EXPECT_LT(drawn(outline).area(), drawn(disc).area());
  }
  EXPECT_EQ(drawn(U'🯠').at(size.width / 2, 0), 0) << "the middle is open";
}

INSTANTIATE_TEST_SUITE_P(Sizes, WedgeTest, kCellSizes, nameOfSize);
INSTANTIATE_TEST_SUITE_P(Sizes, CircleTest, kCellSizes, nameOfSize);

}  // namespace
}  // namespace zolt
