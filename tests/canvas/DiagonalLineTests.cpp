// Slanting lines: they go on in the cells at the corners and beside the middles of edges.
#include <gtest/gtest.h>

#include <string_view>

#include "canvas/SymbolPictures.h"

namespace zolt {
namespace {

using namespace std::string_view_literals;

class DiagonalLineTest : public SymbolTest {};

TEST_P(DiagonalLineTest, RunsFromCornerToCorner) {
  const SymbolPicture rising = drawn(U'╱');
  constexpr int kVisible = 64;
  EXPECT_GE(rising.at(size.width - 1, 0), kVisible);
  EXPECT_GE(rising.at(0, size.height - 1), kVisible);
  EXPECT_EQ(rising.at(0, 0), 0);
  EXPECT_EQ(rising.at(size.width - 1, size.height - 1), 0);
  for (int y = 0; y < size.height; ++y)
    EXPECT_GE(std::ranges::max(rising.row(y)), kVisible);
}

TEST_P(DiagonalLineTest, IsTheSameFromBothEndsSoThatItContinuesInTheNextCell) {
  const SymbolPicture rising = drawn(U'╱');
  EXPECT_TRUE(nearlyEqual(rising, rising.mirrored().upsideDown())) << rising;
  EXPECT_TRUE(nearlyEqual(drawn(U'╲'), rising.mirrored()));
}

TEST_P(DiagonalLineTest, CrossesAnother) {
  const SymbolPicture cross = drawn(U'╳');
  const SymbolPicture either = drawn(U'╱') | drawn(U'╲');
  for (std::size_t i = 0; i < cross.pixels.size(); ++i)
    EXPECT_GE(cross.pixels[i], either.pixels[i]);
  EXPECT_LE(cross.area(), (drawn(U'╱') + drawn(U'╲')).area());
}

TEST_P(DiagonalLineTest, MeetsTheLightLinesInTheMiddleOfEdges) {
  const auto meets = [](const std::vector<int>& slanting, const std::vector<int>& straight) {
    for (std::size_t i = 0; i < straight.size(); ++i) {
      if (straight[i] != 0 && slanting[i] < 64) return false;
    }
    return true;
  };
  const std::vector<int> across = drawn(U'│').top();
  const std::vector<int> along = drawn(U'─').left();
  for (char32_t symbol : U"🮠🮡🮤🮥🮧🮨🮩🮪🮫🮬🮭🮮"sv) {
    EXPECT_TRUE(meets(drawn(symbol).top(), across)) << drawn(symbol);
  }
  for (char32_t symbol : U"🮢🮣🮤🮥🮦🮨🮩🮪🮫🮬🮭🮮"sv) {
    EXPECT_TRUE(meets(drawn(symbol).bottom(), across)) << drawn(symbol);
  }
  for (char32_t symbol : U"🮠🮢🮤🮦🮧🮨🮩🮪🮫🮬🮭🮮"sv) {
    EXPECT_TRUE(meets(drawn(symbol).left(), along)) << drawn(symbol);
  }
  for (char32_t symbol : U"🮡🮣🮥🮦🮧🮨🮩🮪🮫🮬🮭🮮"sv) {
    EXPECT_TRUE(meets(drawn(symbol).right(), along)) << drawn(symbol);
  }
}

TEST_P(DiagonalLineTest, IsLeftOutOfANegativeSymbol) {
  const SymbolPicture full = flat(size, 255);
  EXPECT_EQ(drawn(U'🮽') + drawn(U'╳'), full);
  EXPECT_EQ(drawn(U'🮾') + drawn(U'🮣'), full);
  EXPECT_EQ(drawn(U'🮿') + drawn(U'🮮'), full);
}

INSTANTIATE_TEST_SUITE_P(Sizes, DiagonalLineTest, kCellSizes, nameOfSize);

}  // namespace
}  // namespace zolt
