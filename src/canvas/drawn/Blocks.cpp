#include <algorithm>

#include "canvas/drawn/SymbolFamilies.h"

namespace zolt {

namespace {

constexpr int kQuarter = 64;
constexpr int kThreeQuarters = 191;
constexpr int kInverseHalf = kWholly - kHalf;

// In eighths of the cell, from its left or top; the end is not included.
struct Eighths {
  int from;
  int to;
};

constexpr Eighths kAll{0, 8};
constexpr Eighths kFirstHalf{0, 4};   // left or upper
constexpr Eighths kSecondHalf{4, 8};  // right or lower

// A rectangle of a symbol.
struct Block {
  char32_t symbol;
  Eighths columns;
  Eighths rows;
  int coverage = kWholly;
};

// By the symbols' names, in ascending order.
// clang-format off
constexpr Block kBlocks[] = {
    {0x2580, kAll, kFirstHalf}, {0x2581, kAll, {7, 8}}, {0x2582, kAll, {6, 8}}, {0x2583, kAll, {5, 8}},
    {0x2584, kAll, kSecondHalf}, {0x2585, kAll, {3, 8}}, {0x2586, kAll, {2, 8}}, {0x2587, kAll, {1, 8}},
    {0x2588, kAll, kAll}, {0x2589, {0, 7}, kAll}, {0x258A, {0, 6}, kAll}, {0x258B, {0, 5}, kAll},
    {0x258C, kFirstHalf, kAll}, {0x258D, {0, 3}, kAll}, {0x258E, {0, 2}, kAll}, {0x258F, {0, 1}, kAll},
    {0x2590, kSecondHalf, kAll}, {0x2591, kAll, kAll, kQuarter}, {0x2592, kAll, kAll, kHalf},
    {0x2593, kAll, kAll, kThreeQuarters}, {0x2594, kAll, {0, 1}}, {0x2595, {7, 8}, kAll},
    {0x1CE90, {0, 2}, {0, 2}}, {0x1CE91, {2, 4}, {0, 2}}, {0x1CE92, {4, 6}, {0, 2}}, {0x1CE93, {6, 8}, {0, 2}},
    {0x1CE94, {0, 2}, {2, 4}}, {0x1CE95, {2, 4}, {2, 4}}, {0x1CE96, {4, 6}, {2, 4}}, {0x1CE97, {6, 8}, {2, 4}},
    {0x1CE98, {0, 2}, {4, 6}}, {0x1CE99, {2, 4}, {4, 6}}, {0x1CE9A, {4, 6}, {4, 6}}, {0x1CE9B, {6, 8}, {4, 6}},
    {0x1CE9C, {0, 2}, {6, 8}}, {0x1CE9D, {2, 4}, {6, 8}}, {0x1CE9E, {4, 6}, {6, 8}}, {0x1CE9F, {6, 8}, {6, 8}},
    {0x1CEA0, kSecondHalf, {6, 8}}, {0x1CEA1, {2, 8}, {6, 8}}, {0x1CEA2, {0, 6}, {6, 8}},
    {0x1CEA3, kFirstHalf, {6, 8}}, {0x1CEA4, {0, 2}, kSecondHalf}, {0x1CEA5, {0, 2}, {2, 8}},
    {0x1CEA6, {0, 2}, {0, 6}}, {0x1CEA7, {0, 2}, kFirstHalf}, {0x1CEA8, kFirstHalf, {0, 2}},
    {0x1CEA9, {0, 6}, {0, 2}}, {0x1CEAA, {2, 8}, {0, 2}}, {0x1CEAB, kSecondHalf, {0, 2}},
    {0x1CEAC, {6, 8}, kFirstHalf}, {0x1CEAD, {6, 8}, {0, 6}}, {0x1CEAE, {6, 8}, {2, 8}},
    {0x1CEAF, {6, 8}, kSecondHalf}, {0x1FB70, {1, 2}, kAll}, {0x1FB71, {2, 3}, kAll}, {0x1FB72, {3, 4}, kAll},
    {0x1FB73, {4, 5}, kAll}, {0x1FB74, {5, 6}, kAll}, {0x1FB75, {6, 7}, kAll}, {0x1FB76, kAll, {1, 2}},
    {0x1FB77, kAll, {2, 3}}, {0x1FB78, kAll, {3, 4}}, {0x1FB79, kAll, {4, 5}}, {0x1FB7A, kAll, {5, 6}},
    {0x1FB7B, kAll, {6, 7}}, {0x1FB7C, {0, 1}, kAll}, {0x1FB7C, kAll, {7, 8}}, {0x1FB7D, {0, 1}, kAll},
    {0x1FB7D, kAll, {0, 1}}, {0x1FB7E, {7, 8}, kAll}, {0x1FB7E, kAll, {0, 1}}, {0x1FB7F, {7, 8}, kAll},
    {0x1FB7F, kAll, {7, 8}}, {0x1FB80, kAll, {0, 1}}, {0x1FB80, kAll, {7, 8}}, {0x1FB81, kAll, {0, 1}},
    {0x1FB81, kAll, {2, 3}}, {0x1FB81, kAll, {4, 5}}, {0x1FB81, kAll, {7, 8}}, {0x1FB82, kAll, {0, 2}},
    {0x1FB83, kAll, {0, 3}}, {0x1FB84, kAll, {0, 5}}, {0x1FB85, kAll, {0, 6}}, {0x1FB86, kAll, {0, 7}},
    {0x1FB87, {6, 8}, kAll}, {0x1FB88, {5, 8}, kAll}, {0x1FB89, {3, 8}, kAll}, {0x1FB8A, {2, 8}, kAll},
    {0x1FB8B, {1, 8}, kAll}, {0x1FB8C, kFirstHalf, kAll, kHalf}, {0x1FB8D, kSecondHalf, kAll, kHalf},
    {0x1FB8E, kAll, kFirstHalf, kHalf}, {0x1FB8F, kAll, kSecondHalf, kHalf},
    {0x1FB90, kAll, kAll, kInverseHalf}, {0x1FB91, kAll, kFirstHalf},
    {0x1FB91, kAll, kSecondHalf, kInverseHalf}, {0x1FB92, kAll, kFirstHalf, kInverseHalf},
    {0x1FB92, kAll, kSecondHalf}, {0x1FB94, kFirstHalf, kAll, kInverseHalf}, {0x1FB94, kSecondHalf, kAll},
    {0x1FB97, kAll, {2, 4}}, {0x1FB97, kAll, {6, 8}}, {0x1FBE4, {2, 6}, kFirstHalf},
    {0x1FBE5, {2, 6}, kSecondHalf}, {0x1FBE6, kFirstHalf, {2, 6}}, {0x1FBE7, kSecondHalf, {2, 6}},
};
// clang-format on
static_assert(std::ranges::is_sorted(kBlocks, {}, &Block::symbol));

}  // namespace

void drawBlocks(char32_t symbol, CellPicture& picture) {
  for (const Block& block : std::ranges::equal_range(kBlocks, symbol, {}, &Block::symbol)) {
    picture.fill(picture.columns().slice(block.columns.from, block.columns.to, 8),
                 picture.rows().slice(block.rows.from, block.rows.to, 8), block.coverage);
  }
}

}  // namespace zolt
