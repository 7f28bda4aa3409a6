// Lines of boxes: those of neighbouring cells meet.
#include <gtest/gtest.h>

#include <deque>
#include <map>

#include "canvas/SymbolPictures.h"
#include "canvas/drawn/BoxTable.h"

namespace zolt {
namespace {

class BoxLineTest : public SymbolTest {
 protected:
  // The pixels at which a line of a cell ends that goes on in the next.
  std::vector<int> edgeAcrossRows(Stroke stroke) const { return drawn(horizontal.at(stroke)).left(); }
  std::vector<int> edgeAcrossColumns(Stroke stroke) const { return drawn(vertical.at(stroke)).top(); }

  const std::map<Stroke, char32_t> horizontal{
      {Stroke::None, U'⠀'}, {Stroke::Light, U'─'}, {Stroke::Heavy, U'━'}, {Stroke::Double, U'═'}};
  const std::map<Stroke, char32_t> vertical{
      {Stroke::None, U'⠀'}, {Stroke::Light, U'│'}, {Stroke::Heavy, U'┃'}, {Stroke::Double, U'║'}};
};

bool isDiagonal(char32_t symbol) {
  return symbol >= U'╱' && symbol <= U'╳';
}

bool isDashed(const BoxLines& lines) {
  return lines.style != BoxStyle::Solid && lines.style != BoxStyle::Arc;
}

TEST_P(BoxLineTest, LeavesTheCellExactlyWhereTheNextOneBegins) {
  for (char32_t symbol = 0x2500; symbol <= 0x257F; ++symbol) {
    const BoxLines& lines = box_table::kRows[symbol - kFirstBoxSymbol];
    if (isDiagonal(symbol) || isDashed(lines)) continue;
    SCOPED_TRACE(testing::Message() << std::hex << "U+" << static_cast<unsigned>(symbol));
    const SymbolPicture picture = drawn(symbol);
    EXPECT_EQ(picture.top(), edgeAcrossColumns(lines.up));
    EXPECT_EQ(picture.bottom(), edgeAcrossColumns(lines.down));
    EXPECT_EQ(picture.left(), edgeAcrossRows(lines.left));
    EXPECT_EQ(picture.right(), edgeAcrossRows(lines.right));
  }
}

TEST_P(BoxLineTest, IsAnEighthOfTheCellWideOrTwiceThatOrTwoWithAGap) {
  const auto widths = [](const std::vector<int>& edge) {
    EXPECT_TRUE(std::ranges::all_of(edge, [](int pixel) { return pixel == 0 || pixel == 255; }));
    return runsOf(edge).covered;
  };
  for (const std::vector<int>& edge : {edgeAcrossRows(Stroke::Light), edgeAcrossColumns(Stroke::Light)}) {
    EXPECT_EQ(widths(edge), std::vector{thickness});
  }
  for (const std::vector<int>& edge : {edgeAcrossRows(Stroke::Heavy), edgeAcrossColumns(Stroke::Heavy)}) {
    EXPECT_EQ(widths(edge), std::vector{2 * thickness});
  }
  for (const std::vector<int>& edge : {edgeAcrossRows(Stroke::Double), edgeAcrossColumns(Stroke::Double)}) {
    EXPECT_EQ(widths(edge), (std::vector{thickness, thickness}));
    EXPECT_TRUE(std::ranges::count(runsOf(edge).gaps, thickness) >= 1);
  }
}

TEST_P(BoxLineTest, IsInTheMiddleButForAPixel) {
  for (const std::vector<int>& edge :
       {edgeAcrossRows(Stroke::Light), edgeAcrossRows(Stroke::Heavy), edgeAcrossRows(Stroke::Double),
        edgeAcrossColumns(Stroke::Light), edgeAcrossColumns(Stroke::Heavy), edgeAcrossColumns(Stroke::Double)}) {
    const auto before = std::ranges::find(edge, 255) - edge.begin();
    const auto after = std::find(edge.rbegin(), edge.rend(), 255) - edge.rbegin();
    EXPECT_LE(std::abs(before - after), 1);
  }
}

// What can be reached from a covered pixel of the picture, all sides and corners counting as neighbours.
SymbolPicture connectedTo(const SymbolPicture& picture, int x, int y) {
  constexpr int kVisible = 40;
  SymbolPicture reached = flat({picture.width, picture.height}, 0);
  std::deque<std::pair<int, int>> ways{{x, y}};
  while (!ways.empty()) {
    const auto [column, row] = ways.front();
    ways.pop_front();
    if (column < 0 || row < 0 || column >= picture.width || row >= picture.height) continue;
    int& pixel = reached.pixels[static_cast<std::size_t>(row * picture.width + column)];
    if (pixel != 0 || picture.at(column, row) < kVisible) continue;
    pixel = picture.at(column, row);
    for (int dx : {-1, 0, 1}) {
      for (int dy : {-1, 0, 1})
        ways.emplace_back(column + dx, row + dy);
    }
  }
  return reached;
}

TEST_P(BoxLineTest, JoinsAllTheLightAndHeavyLinesOfItsCell) {
  for (char32_t symbol = 0x2500; symbol <= 0x257F; ++symbol) {
    const BoxLines& lines = box_table::kRows[symbol - kFirstBoxSymbol];
    const Stroke strokes[] = {lines.up, lines.right, lines.down, lines.left};
    if (isDiagonal(symbol) || isDashed(lines) || std::ranges::count(strokes, Stroke::Double) > 0) continue;
    SCOPED_TRACE(testing::Message() << std::hex << "U+" << static_cast<unsigned>(symbol));
    const SymbolPicture picture = drawn(symbol);
    const auto first = std::ranges::find(picture.pixels, 255) - picture.pixels.begin();
    const SymbolPicture reached =
        connectedTo(picture, static_cast<int>(first) % size.width, static_cast<int>(first) / size.width);
    EXPECT_EQ(reached.top(), picture.top());
    EXPECT_EQ(reached.bottom(), picture.bottom());
    EXPECT_EQ(reached.left(), picture.left());
    EXPECT_EQ(reached.right(), picture.right());
  }
}

TEST(BoxLines, OfADoubleKindTurnAndCrossAsOnPaper) {
  constexpr CellSize kSize{7, 7};
  struct Case {
    char32_t symbol;
    const char* rows;
  };
  constexpr Case kCases[] = {
      {U'╔', "....... ....... ..##### ..#.... ..#.### ..#.#.. ..#.#.. "},
      {U'╝', "..#.#.. ..#.#.. ###.#.. ....#.. #####.. ....... ....... "},
      {U'╬', "..#.#.. ..#.#.. ###.### ....... ###.### ..#.#.. ..#.#.. "},
      {U'╠', "..#.#.. ..#.#.. ..#.### ..#.... ..#.### ..#.#.. ..#.#.. "},
      {U'╩', "..#.#.. ..#.#.. ###.### ....... ####### ....... ....... "},
      {U'╒', "....... ....... ...#### ...#... ...#### ...#... ...#... "},
      {U'╓', "....... ....... ....... ..##### ..#.#.. ..#.#.. ..#.#.. "},
      {U'╙', "..#.#.. ..#.#.. ..#.#.. ..##### ....... ....... ....... "},
      {U'╡', "...#... ...#... ####... ...#... ####... ...#... ...#... "},
      {U'╟', "..#.#.. ..#.#.. ..#.#.. ..#.### ..#.#.. ..#.#.. ..#.#.. "},
      {U'╤', "....... ....... ####### ....... ####### ...#... ...#... "},
      {U'╥', "....... ....... ....... ####### ..#.#.. ..#.#.. ..#.#.. "},
      {U'╪', "...#... ...#... ####### ...#... ####### ...#... ...#... "},
      {U'╫', "..#.#.. ..#.#.. ..#.#.. ####### ..#.#.. ..#.#.. ..#.#.. "},
      {U'┢', "...#... ...#... ..##### ..##### ..##... ..##... ..##... "},
      {U'┹', "..##... ..##... ####... ####### ....... ....... ....... "},
  };
  for (const Case& one : kCases) {
    EXPECT_EQ(drawn(one.symbol, kSize), picture(one.rows)) << std::hex << static_cast<unsigned>(one.symbol);
  }
}

enum class Along { Rows, Columns };

TEST_P(BoxLineTest, IsDashedEvenlyOverCellsWithAsManyDashesAsFit) {
  struct Case {
    char32_t dashed;
    char32_t solid;
    int dashes;
    Along along;
  };
  constexpr Case kCases[] = {
      {U'╌', U'─', 2, Along::Rows},    {U'╍', U'━', 2, Along::Rows},    {U'┄', U'─', 3, Along::Rows},
      {U'┅', U'━', 3, Along::Rows},    {U'┈', U'─', 4, Along::Rows},    {U'┉', U'━', 4, Along::Rows},
      {U'╎', U'│', 2, Along::Columns}, {U'╏', U'┃', 2, Along::Columns}, {U'┆', U'│', 3, Along::Columns},
      {U'┇', U'┃', 3, Along::Columns}, {U'┊', U'│', 4, Along::Columns}, {U'┋', U'┃', 4, Along::Columns}};
  for (const Case& one : kCases) {
    SCOPED_TRACE(testing::Message() << std::hex << "U+" << static_cast<unsigned>(one.dashed));
    const SymbolPicture dashed = drawn(one.dashed);
    const SymbolPicture solid = drawn(one.solid);
    EXPECT_EQ(dashed | solid, solid);
    const auto lit = std::ranges::find(solid.pixels, 255) - solid.pixels.begin();
    const bool rows = one.along == Along::Rows;
    const Runs runs = runsOf(rows ? dashed.row(static_cast<int>(lit) / size.width)
                                  : dashed.column(static_cast<int>(lit) % size.width));
    EXPECT_EQ(std::ssize(runs.covered), std::min(one.dashes, (rows ? size.width : size.height) / 2));
    EXPECT_LE(unevenness(runs.covered), 1);
    EXPECT_EQ(unevenness(runs.gaps), 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, BoxLineTest, kCellSizes, nameOfSize);

}  // namespace
}  // namespace zolt
