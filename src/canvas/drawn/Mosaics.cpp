#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <iterator>

#include "canvas/drawn/SymbolFamilies.h"

namespace zolt {

namespace {

// The blocks of a cell, bit 0 the upper left one, bit 1 that to its right, and so on row by row.
using Blocks = std::uint8_t;

// From U+2596.
constexpr Blocks kQuadrants[] = {0b0100, 0b1000, 0b0001, 0b1101, 0b1001, 0b0111, 0b1011, 0b0010, 0b0110, 0b1110};

constexpr Blocks quadrants(char32_t index) {
  return kQuadrants[index];
}

// All sets in order but for the empty one.
constexpr Blocks inOrder(char32_t index) {
  return static_cast<Blocks>(index + 1);
}

// In order but for what has been encoded before: nothing, the left half and the right half.
constexpr Blocks sextants(char32_t index) {
  constexpr char32_t kLeftHalf = 0b010101;
  constexpr char32_t kRightHalf = 0b101010;
  const char32_t skipped = 1 + (index + 1 >= kLeftHalf ? 1 : 0) + (index + 2 >= kRightHalf ? 1 : 0);
  return static_cast<Blocks>(index + skipped);
}

// Whether octants look like quadrants, or like other blocks that have been encoded before.
constexpr bool isOctantEncodedElsewhere(unsigned blocks) {
  const auto row = [&](unsigned index) { return blocks >> (2 * index) & 0b11; };
  if (row(0) == row(1) && row(2) == row(3)) return true;
  constexpr Blocks kOthers[] = {0b00000011, 0b00111111, 0b11000000, 0b11111100,  // one and three quarters
                                0b00000001, 0b00000010, 0b01000000, 0b10000000,  // in the corners
                                0b00010100, 0b00101000};                         // in the middle of a side
  return std::ranges::find(kOthers, blocks) != std::end(kOthers);
}

constexpr std::size_t kOctantCount = 0x1CDE5 - 0x1CD00 + 1;

constexpr auto kOctants = [] {
  std::array<Blocks, kOctantCount> octants{};
  std::size_t count = 0;
  for (unsigned blocks = 0; blocks < 256; ++blocks) {
    if (!isOctantEncodedElsewhere(blocks)) octants.at(count++) = static_cast<Blocks>(blocks);
  }
  if (count != kOctantCount) throw "the octants do not fill their range";
  return octants;
}();

constexpr Blocks octants(char32_t index) {
  return kOctants[index];
}

// From two thirds of the cell's width to one.
constexpr Blocks thirds(char32_t index) {
  return index == 0 ? 0b011 : 0b001;
}

enum class Blend { Joined, Separated };

struct Mosaic {
  char32_t first;
  Blocks (*blocks)(char32_t index);  ///< of the symbols from `first` on
  int columns;
  int rows;
  Blend blend = Blend::Joined;
};

// In ascending order; each reaches to the next.
constexpr Mosaic kMosaics[] = {
    {0x2596, quadrants, 2, 2}, {0x1CC21, inOrder, 2, 2, Blend::Separated},
    {0x1CD00, octants, 2, 4},  {0x1CE51, inOrder, 2, 3, Blend::Separated},
    {0x1FB00, sextants, 2, 3}, {0x1FBCE, thirds, 3, 1},
};

// The block without its share of the gaps around it, which are as wide as a light line.
Span separated(Span block, int gap) {
  const int begin = std::min(block.begin + gap / 2, block.end - 1);
  return {begin, std::max(block.end - (gap - gap / 2), begin + 1)};
}

}  // namespace

void drawMosaic(char32_t symbol, CellPicture& picture) {
  const Mosaic& mosaic = *std::prev(std::ranges::upper_bound(kMosaics, symbol, {}, &Mosaic::first));
  const int gap = mosaic.blend == Blend::Separated ? picture.thickness() : 0;
  for (unsigned blocks = mosaic.blocks(symbol - mosaic.first); blocks != 0; blocks &= blocks - 1) {
    const int index = std::countr_zero(blocks);
    const int column = index % mosaic.columns;
    const int row = index / mosaic.columns;
    picture.fill(separated(picture.columns().slice(column, column + 1, mosaic.columns), gap),
                 separated(picture.rows().slice(row, row + 1, mosaic.rows), gap));
  }
}

}  // namespace zolt
