// Blocks, shades and fills: what tiles on paper tiles to the pixel.
#include <gtest/gtest.h>

#include <string_view>
#include <utility>

#include "canvas/SymbolPictures.h"

namespace zolt {
namespace {

using namespace std::string_view_literals;

class BlockTest : public SymbolTest {
 protected:
  const SymbolPicture full = flat(size, 255);
};

TEST_P(BlockTest, CoversTheWholeCellWhenFull) {
  EXPECT_EQ(drawn(U'█'), full);
}

TEST_P(BlockTest, ComplementsItsOppositeExactly) {
  constexpr std::pair<char32_t, char32_t> kOpposites[] = {
      {U'▀', U'▄'},    {U'▔', U'▇'},    {U'🮂', U'▆'},   {U'🮃', U'▅'}, {U'🮄', U'▃'}, {U'🮅', U'▂'},
      {U'🮆', U'▁'}, {U'▌', U'▐'},    {U'▏', U'🮋'},   {U'▎', U'🮊'}, {U'▍', U'🮉'}, {U'▋', U'🮈'},
      {U'▊', U'🮇'}, {U'▉', U'▕'},    {U'▘', U'▟'},      {U'▝', U'▙'},    {U'▖', U'▜'},    {U'▗', U'▛'},
      {U'▚', U'▞'},    {U'▒', U'🮐'}, {U'🮕', U'🮖'}};
  for (const auto& [one, other] : kOpposites) {
    EXPECT_EQ(drawn(one) + drawn(other), full) << std::hex << static_cast<unsigned>(one);
  }
}

TEST_P(BlockTest, GrowsByEighths) {
  const auto rounded = [](int length, int eighths) { return (length * eighths + 4) / 8; };
  const std::u32string_view rising = U"▁▂▃▄▅▆▇█";
  const std::u32string_view widening = U"▏▎▍▌▋▊▉█";
  for (int eighths = 1; eighths <= 8; ++eighths) {
    const auto index = static_cast<std::size_t>(eighths - 1);
    const int height = size.height - rounded(size.height, 8 - eighths);
    EXPECT_EQ(drawn(rising[index]), SymbolPicture::of(size.width, size.height,
                                                      [&](int, int y) { return y >= size.height - height ? 255 : 0; }));
    EXPECT_EQ(drawn(widening[index]), SymbolPicture::of(size.width, size.height, [&](int x, int) {
                return x < rounded(size.width, eighths) ? 255 : 0;
              }));
  }
}

TEST_P(BlockTest, TilesTheCellWithItsEighths) {
  if (size.width < 8) return;  // some share a pixel
  SymbolPicture columns = drawn(U'▏') + drawn(U'▕');
  for (char32_t symbol : U"🭰🭱🭲🭳🭴🭵"sv)
    columns = columns + drawn(symbol);
  EXPECT_EQ(columns, full);
  SymbolPicture rows = drawn(U'▔') + drawn(U'▁');
  for (char32_t symbol : U"🭶🭷🭸🭹🭺🭻"sv)
    rows = rows + drawn(symbol);
  EXPECT_EQ(rows, full);
}

TEST_P(BlockTest, FramesTheCellInEighths) {
  EXPECT_EQ(drawn(U'🭼'), drawn(U'▏') | drawn(U'▁'));
  EXPECT_EQ(drawn(U'🭽'), drawn(U'▏') | drawn(U'▔'));
  EXPECT_EQ(drawn(U'🭾'), drawn(U'▕') | drawn(U'▔'));
  EXPECT_EQ(drawn(U'🭿'), drawn(U'▕') | drawn(U'▁'));
  EXPECT_EQ(drawn(U'🮀'), drawn(U'▔') | drawn(U'▁'));
  EXPECT_EQ(drawn(U'🮁'), drawn(U'▔') | drawn(U'🭷') | drawn(U'🭹') | drawn(U'▁'));
}

TEST_P(BlockTest, IsShadedEvenly) {
  EXPECT_EQ(drawn(U'░'), flat(size, 64));
  EXPECT_EQ(drawn(U'▒'), flat(size, 128));
  EXPECT_EQ(drawn(U'▓'), flat(size, 191));
  EXPECT_EQ(drawn(U'🮌') + drawn(U'🮍'), drawn(U'▒'));
  EXPECT_EQ(drawn(U'🮎') + drawn(U'🮏'), drawn(U'▒'));
  EXPECT_EQ(drawn(U'🮑'), drawn(U'▀') | drawn(U'🮐'));
  EXPECT_EQ(drawn(U'🮒'), drawn(U'▄') | drawn(U'🮐'));
  EXPECT_EQ(drawn(U'🮔'), drawn(U'▐') | drawn(U'🮐'));
}

TEST_P(BlockTest, TilesTheCellWithItsSixteenths) {
  SymbolPicture sum = flat(size, 0);
  for (char32_t symbol = 0x1CE90; symbol <= 0x1CE9F; ++symbol)
    sum = sum + drawn(symbol);
  EXPECT_EQ(sum, full);
}

TEST_P(BlockTest, IsAsWideAsTheThirdsOfMosaics) {
  EXPECT_EQ(runsOf(drawn(U'🯎').top()).covered, std::vector{(4 * size.width + 3) / 6});
  EXPECT_EQ(runsOf(drawn(U'🯏').top()).covered, std::vector{(2 * size.width + 3) / 6});
  EXPECT_EQ(drawn(U'🯏') | drawn(U'🯎'), drawn(U'🯎'));
}

TEST_P(BlockTest, ContinuesACheckerBoardInAllDirections) {
  const SymbolPicture board = drawn(U'🮕');
  EXPECT_EQ(board.at(0, 0), 255);
  for (int y = 0; y < size.height; ++y)
    EXPECT_NE(board.left()[y], board.right()[y]);
  for (int x = 0; x < size.width; ++x)
    EXPECT_NE(board.top()[x], board.bottom()[x]);
}

TEST_P(BlockTest, ContinuesStripesInAllDirections) {
  const auto step = [](const std::vector<int>& a, const std::vector<int>& b) {
    int largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
      largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
  };
  const SymbolPicture falling = drawn(U'🮘');
  EXPECT_TRUE(nearlyEqual(drawn(U'🮙'), falling.upsideDown()));
  EXPECT_NEAR(falling.area(), full.area() / 2, full.area() / 50);
  int withinTheCell = 0;
  for (int x = 1; x < size.width; ++x) {
    withinTheCell = std::max(withinTheCell, step(falling.column(x - 1), falling.column(x)));
  }
  EXPECT_LE(step(falling.right(), falling.left()), withinTheCell + 8);
  withinTheCell = 0;
  for (int y = 1; y < size.height; ++y)
    withinTheCell = std::max(withinTheCell, step(falling.row(y - 1), falling.row(y)));
  EXPECT_LE(step(falling.bottom(), falling.top()), withinTheCell + 8);
}

INSTANTIATE_TEST_SUITE_P(Sizes, BlockTest, kCellSizes, nameOfSize);

}  // namespace
}  // namespace zolt
