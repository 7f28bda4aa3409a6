// Which characters are drawn, and what all their pictures have in common.
#include "canvas/DrawnSymbols.h"

#include <gtest/gtest.h>

#include <string_view>

#include "canvas/SymbolPictures.h"

namespace zolt {
namespace {

using namespace std::string_view_literals;

constexpr char32_t kBlankBraille = 0x2800;

std::vector<char32_t> allSymbols() {
  std::vector<char32_t> symbols;
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (isDrawnSymbol(character)) symbols.push_back(character);
  }
  return symbols;
}

TEST(DrawnSymbols, AreBoxesBlocksBrailleSeparatorsAndLegacyMosaics) {
  struct Range {
    char32_t first;
    char32_t last;
  };
  // With a character that is none before and after each.
  constexpr Range kRanges[] = {{0x2500, 0x259F},   {0x2800, 0x28FF},   {0xE0B0, 0xE0BF},   {0xE0D2, 0xE0D2},
                               {0xE0D4, 0xE0D4},   {0x1CC21, 0x1CC2F}, {0x1CD00, 0x1CDE5}, {0x1CE51, 0x1CEAF},
                               {0x1FB00, 0x1FB92}, {0x1FB94, 0x1FBAF}, {0x1FBBD, 0x1FBBF}, {0x1FBCE, 0x1FBEF}};
  std::vector<char32_t> expected;
  for (const Range& range : kRanges) {
    for (char32_t symbol = range.first; symbol <= range.last; ++symbol)
      expected.push_back(symbol);
  }
  EXPECT_EQ(allSymbols(), expected);
}

TEST(DrawnSymbols, AreNotTextNorIdeographsNorEmojiNorGeometricShapes) {
  for (char32_t character : U"A~ \u00A0éαЖאกあ漢한★●■▲◆→⌘☺😀👨\u200D\uFE0F\U000E0041\U0010FFFF"sv) {
    EXPECT_FALSE(isDrawnSymbol(character)) << std::hex << static_cast<unsigned>(character);
    EXPECT_TRUE(drawSymbol(character, metricsOf({8, 17})).empty());
  }
}

class DrawnSymbolTest : public SymbolTest {};

TEST_P(DrawnSymbolTest, HasExactlyThePixelsOfItsCellAndCoversSome) {
  const CellMetrics cell = metricsOf(size);
  for (char32_t symbol : allSymbols()) {
    SCOPED_TRACE(testing::Message() << std::hex << "U+" << static_cast<unsigned>(symbol));
    const GlyphMask mask = drawSymbol(symbol, cell);
    ASSERT_EQ(mask.left, 0);
    ASSERT_EQ(mask.top, -cell.baseline.toInt());
    ASSERT_EQ(mask.width, size.width);
    ASSERT_EQ(mask.height, size.height);
    ASSERT_EQ(std::ssize(mask.coverage), mask.stride() * size.height);
    const bool covers = std::ranges::any_of(mask.coverage, [](QRgb pixel) { return pixel != 0; });
    EXPECT_EQ(covers, symbol != kBlankBraille);
    EXPECT_TRUE(std::ranges::all_of(mask.coverage, [](QRgb pixel) {
      return pixel == qRgba(qRed(pixel), qRed(pixel), qRed(pixel), qRed(pixel));
    })) << "coverage is the same for all components";
  }
}

TEST_P(DrawnSymbolTest, IsUnlikeEveryOtherOfItsBlock) {
  // Small cells have no room for all the differences: between five eighths and two thirds, say.
  if (size.width < 24) return;
  std::vector<SymbolPicture> seen;
  for (char32_t symbol : allSymbols()) {
    const bool isSeparator = symbol >= 0xE0B0 && symbol <= 0xE0D4;
    const bool isOctant = symbol == U'🮗';  // two of four rows, by its other name
    if (isSeparator || isOctant) continue;
    const SymbolPicture picture = drawn(symbol);
    EXPECT_EQ(std::ranges::count(seen, picture), 0) << std::hex << static_cast<unsigned>(symbol);
    seen.push_back(picture);
  }
}

TEST_P(DrawnSymbolTest, DependsOnTheSizeOfTheCellOnly) {
  CellMetrics cell = metricsOf(size);
  const GlyphMask before = drawSymbol(U'┼', cell);
  cell.lineThickness = DevicePixels(size.height / 2);
  cell.underlineTop = DevicePixels(1);
  cell.strikethroughTop = DevicePixels(2);
  EXPECT_EQ(drawSymbol(U'┼', cell).coverage, before.coverage);
}

TEST(DrawnSymbols, StayWithinTheTiniestCells) {
  for (CellSize size : {CellSize{1, 1}, CellSize{1, 3}, CellSize{2, 2}, CellSize{3, 1}, CellSize{4, 7}}) {
    for (char32_t symbol : allSymbols())
      drawn(symbol, size);
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, DrawnSymbolTest, kCellSizes, nameOfSize);

}  // namespace
}  // namespace zolt
