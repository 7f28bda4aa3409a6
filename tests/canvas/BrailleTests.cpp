// Braille patterns: eight equal dots, evenly spaced over neighbouring cells.
#include <gtest/gtest.h>

#include <string_view>

#include "canvas/SymbolPictures.h"

namespace zolt {
namespace {

class BrailleTest : public SymbolTest {
 protected:
  // By the bits of the code point: dots 1, 2, 3, 4, 5, 6, 7, 8.
  static constexpr std::u32string_view kDots = U"⠁⠂⠄⠈⠐⠠⡀⢀";

  // The pixels that a row or column covers at all.
  std::vector<int> across(const SymbolPicture& picture) const {
    std::vector<int> sums;
    for (int x = 0; x < size.width; ++x)
      sums.push_back(std::ranges::max(picture.column(x)));
    return sums;
  }
  std::vector<int> down(const SymbolPicture& picture) const {
    std::vector<int> sums;
    for (int y = 0; y < size.height; ++y)
      sums.push_back(std::ranges::max(picture.row(y)));
    return sums;
  }
  static std::ptrdiff_t firstCovered(const std::vector<int>& pixels) {
    return std::ranges::find_if(pixels, [](int pixel) { return pixel != 0; }) - pixels.begin();
  }
};

TEST_P(BrailleTest, IsTheUnionOfItsDots) {
  for (unsigned pattern = 0; pattern < 256; ++pattern) {
    SymbolPicture dots = flat(size, 0);
    for (std::size_t i = 0; i < kDots.size(); ++i) {
      if ((pattern >> i & 1) != 0) dots = dots + drawn(kDots[i]);
    }
    EXPECT_EQ(drawn(0x2800 + pattern), dots);
  }
}

TEST_P(BrailleTest, HasDotsOfOneSizeThatFillTwoColumnsOfFour) {
  std::vector<std::pair<std::ptrdiff_t, std::ptrdiff_t>> corners;
  for (char32_t dot : kDots) {
    const SymbolPicture picture = drawn(dot);
    EXPECT_EQ(picture.area(), drawn(kDots.front()).area());
    corners.emplace_back(firstCovered(across(picture)), firstCovered(down(picture)));
  }
  // Dots 1, 2, 3 and 7 from the top on the left, 4, 5, 6 and 8 on the right.
  for (const auto& [one, below] : {std::pair{0, 1}, {1, 2}, {2, 6}, {3, 4}, {4, 5}, {5, 7}}) {
    EXPECT_EQ(corners[one].first, corners[below].first);
    EXPECT_LT(corners[one].second, corners[below].second);
  }
  for (const auto& [left, right] : {std::pair{0, 3}, {1, 4}, {2, 5}, {6, 7}}) {
    EXPECT_LT(corners[left].first, corners[right].first);
    EXPECT_EQ(corners[left].second, corners[right].second);
  }
}

TEST_P(BrailleTest, SpacesDotsEvenlyAndApartOverNeighbouringCells) {
  const SymbolPicture all = drawn(U'⣿');
  const Runs columns = runsOf(across(all));
  const Runs rows = runsOf(down(all));
  EXPECT_EQ(columns.covered.size(), 2U);
  EXPECT_EQ(rows.covered.size(), 4U);
  EXPECT_EQ(columns.gaps.size(), 2U);
  EXPECT_EQ(rows.gaps.size(), 4U);
  EXPECT_LE(unevenness(columns.gaps), 1);
  EXPECT_LE(unevenness(rows.gaps), 1);
  EXPECT_EQ(columns.covered.front(), rows.covered.front());
}

TEST_P(BrailleTest, HasRoundDotsWhereThereIsRoom) {
  const SymbolPicture dot = drawn(U'⠁');
  const int diameter = runsOf(across(dot)).covered.front();
  const auto left = static_cast<int>(firstCovered(across(dot)));
  const auto top = static_cast<int>(firstCovered(down(dot)));
  EXPECT_EQ(dot.at(left + diameter / 2, top + diameter / 2), 255);
  EXPECT_EQ(dot.at(left, top) < 200, diameter >= 3) << dot;
  EXPECT_GE(diameter, std::min(size.width / 2, size.height / 4) / 2);
}

INSTANTIATE_TEST_SUITE_P(Sizes, BrailleTest, kCellSizes, nameOfSize);

}  // namespace
}  // namespace zolt
