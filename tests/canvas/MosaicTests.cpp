// Mosaics: every set of blocks, each made of the same parts.
#include <gtest/gtest.h>

#include <set>
#include <span>
#include <string_view>

#include "canvas/SymbolPictures.h"

namespace zolt {
namespace {

class MosaicTest : public SymbolTest {
 protected:
  // Which blocks of a mosaic with two columns are covered in their middle: bit 0 the upper left one, then row by row.
  unsigned blocksOf(const SymbolPicture& picture, int rows) const {
    unsigned blocks = 0;
    for (int block = 0; block < 2 * rows; ++block) {
      const int x = (2 * (block % 2) + 1) * size.width / 4;
      const int y = (2 * (block / 2) + 1) * size.height / (2 * rows);
      if (picture.at(x, y) != 0) blocks |= 1U << block;
    }
    return blocks;
  }
};

constexpr std::u32string_view kOctantsOfOldBlocks =
    U"⠀▘▝▀▖▌▞▛▗▚▐▜▄▙▟█▂▆🮂🮅🯦🯧𜺠𜺣𜺨𜺫";

TEST_P(MosaicTest, HasEachSetOfSextantsInOrderButForNothingTheHalvesAndTheWhole) {
  std::vector<unsigned> sets;
  for (char32_t symbol = 0x1FB00; symbol <= 0x1FB3B; ++symbol)
    sets.push_back(blocksOf(drawn(symbol), 3));
  std::vector<unsigned> expected;
  for (unsigned set = 1; set < 0b111111; ++set) {
    if (set != 0b010101 && set != 0b101010) expected.push_back(set);
  }
  EXPECT_EQ(sets, expected);
  EXPECT_EQ(blocksOf(drawn(U'▌'), 3), 0b010101U);
  EXPECT_EQ(blocksOf(drawn(U'▐'), 3), 0b101010U);
}

TEST_P(MosaicTest, HasEachSetOfOctantsInOrderButForThoseOfOldBlocks) {
  std::set<unsigned> old;
  for (char32_t symbol : kOctantsOfOldBlocks)
    old.insert(blocksOf(drawn(symbol), 4));
  EXPECT_EQ(old.size(), kOctantsOfOldBlocks.size());
  std::vector<unsigned> expected;
  for (unsigned set = 0; set < 256; ++set) {
    if (!old.contains(set)) expected.push_back(set);
  }
  std::vector<unsigned> sets;
  for (char32_t symbol = 0x1CD00; symbol <= 0x1CDE5; ++symbol)
    sets.push_back(blocksOf(drawn(symbol), 4));
  EXPECT_EQ(sets, expected);
}

TEST_P(MosaicTest, IsTheUnionOfItsParts) {
  const char32_t sextants[] = {U'🬀', U'🬁', U'🬃', U'🬇', U'🬏', U'🬞'};
  const char32_t octants[] = {0x1CEA8, 0x1CEAB, 0x1CD00, 0x1CD03, 0x1CD09, 0x1CD18, 0x1CEA3, 0x1CEA0};
  const auto unionOf = [&](unsigned blocks, std::span<const char32_t> parts) {
    SymbolPicture picture = flat(size, 0);
    for (std::size_t i = 0; i < parts.size(); ++i) {
      if ((blocks >> i & 1) != 0) picture = picture | drawn(parts[i]);
    }
    return picture;
  };
  for (char32_t symbol = 0x1FB00; symbol <= 0x1FB3B; ++symbol) {
    EXPECT_EQ(drawn(symbol), unionOf(blocksOf(drawn(symbol), 3), sextants));
  }
  EXPECT_EQ(unionOf(0b111111, sextants), drawn(U'█'));
  for (char32_t symbol = 0x1CD00; symbol <= 0x1CDE5; ++symbol) {
    EXPECT_EQ(drawn(symbol), unionOf(blocksOf(drawn(symbol), 4), octants));
  }
  for (char32_t symbol : kOctantsOfOldBlocks) {
    EXPECT_EQ(drawn(symbol), unionOf(blocksOf(drawn(symbol), 4), octants));
  }
}

TEST_P(MosaicTest, HasGapsAsWideAsALightLineWhenSeparated) {
  struct Case {
    char32_t first;
    int rows;
    char32_t last;
  };
  for (const Case& one : {Case{0x1CC21, 2, 0x1CC2F}, Case{0x1CE51, 3, 0x1CE8F}}) {
    for (char32_t symbol = one.first; symbol <= one.last; ++symbol) {
      EXPECT_EQ(blocksOf(drawn(symbol), one.rows), symbol - one.first + 1);
    }
    const SymbolPicture all = drawn(one.last);
    const auto [covered, gaps] = runsOf(all.row(size.height / (2 * one.rows)));
    EXPECT_EQ(gaps, (std::vector{thickness, thickness}));
    EXPECT_LE(unevenness(covered), 1);
    const Runs down = runsOf(all.column(size.width / 4));
    EXPECT_EQ(down.gaps, std::vector<int>(static_cast<std::size_t>(one.rows), thickness));
    EXPECT_LE(unevenness(down.covered), 1);
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, MosaicTest, kCellSizes, nameOfSize);

}  // namespace
}  // namespace zolt
