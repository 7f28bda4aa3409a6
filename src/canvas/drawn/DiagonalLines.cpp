#include <algorithm>

#include "canvas/drawn/LatticePoint.h"
#include "canvas/drawn/SymbolFamilies.h"

namespace zolt {

namespace {

using enum LatticePoint;

enum class Ink { Lines, AllButLines };

struct DiagonalRow {
  char32_t symbol;
  LatticePath line;
  LatticePath other = {};
  Ink ink = Ink::Lines;
};

// By their names, in ascending order.
constexpr DiagonalRow kRows[] = {
    {0x2571, {UR, LL}},
    {0x2572, {UL, LR}},
    {0x2573, {UR, LL}, {UL, LR}},
    {0x1FBA0, {UC, ML}},
    {0x1FBA1, {UC, MR}},
    {0x1FBA2, {ML, LC}},
    {0x1FBA3, {MR, LC}},
    {0x1FBA4, {UC, ML, LC}},
    {0x1FBA5, {UC, MR, LC}},
    {0x1FBA6, {ML, LC, MR}},
    {0x1FBA7, {ML, UC, MR}},
    {0x1FBA8, {UC, ML}, {MR, LC}},
    {0x1FBA9, {UC, MR}, {ML, LC}},
    {0x1FBAA, {UC, MR, LC, ML}},
    {0x1FBAB, {UC, ML, LC, MR}},
    {0x1FBAC, {ML, UC, MR, LC}},
    {0x1FBAD, {MR, UC, ML, LC}},
    {0x1FBAE, {UC, MR, LC, ML, UC}},
    {0x1FBBD, {UR, LL}, {UL, LR}, Ink::AllButLines},
    {0x1FBBE, {MR, LC}, {}, Ink::AllButLines},
    {0x1FBBF, {UC, MR, LC, ML, UC}, {}, Ink::AllButLines},
    {0x1FBD0, {MR, LL}},
    {0x1FBD1, {UR, ML}},
    {0x1FBD2, {UL, MR}},
    {0x1FBD3, {ML, LR}},
    {0x1FBD4, {UL, LC}},
    {0x1FBD5, {UC, LR}},
    {0x1FBD6, {UR, LC}},
    {0x1FBD7, {UC, LL}},
    {0x1FBD8, {UL, MC, UR}},
    {0x1FBD9, {UR, MC, LR}},
    {0x1FBDA, {LL, MC, LR}},
    {0x1FBDB, {UL, MC, LL}},
    {0x1FBDC, {UL, LC, UR}},
    {0x1FBDD, {UR, ML, LR}},
    {0x1FBDE, {LL, UC, LR}},
    {0x1FBDF, {UL, MR, LL}},
};
static_assert(std::ranges::is_sorted(kRows, {}, &DiagonalRow::symbol));

}  // namespace

void drawDiagonalLines(char32_t symbol, CellPicture& picture) {
  const DiagonalRow& row = *std::ranges::lower_bound(kRows, symbol, {}, &DiagonalRow::symbol);
  picture.stroke(pathThrough(row.line, LatticeOf::Lines, picture));
  if (row.other.front() != None) picture.stroke(pathThrough(row.other, LatticeOf::Lines, picture));
  if (row.ink == Ink::AllButLines) picture.invert();
}

}  // namespace zolt
