#include <QPolygonF>
#include <algorithm>

#include "canvas/drawn/LatticePoint.h"
#include "canvas/drawn/SymbolFamilies.h"

namespace zolt {

namespace {

using enum LatticePoint;

// The part of the cell on one side of a line: the side of a corner.
struct HalfRow {
  LatticePoint from;
  LatticePoint to;
  LatticePoint corner;
};

constexpr char32_t kFirstHalf = 0x1FB3C;

// U+1FB3C to U+1FB67, by their names.
// clang-format off
constexpr HalfRow kHalves[] = {
    {LML, LC, LL}, {LML, LR, LL}, {UML, LC, LL}, {UML, LR, LL}, {UL, LC, LL}, {UML, UC, LR},
    {UML, UR, LR}, {LML, UC, LR}, {LML, UR, LR}, {LL, UC, LR}, {LML, UMR, LR}, {LC, LMR, LR},
    {LL, LMR, LR}, {LC, UMR, LR}, {LL, UMR, LR}, {LC, UR, LR}, {UC, UMR, LL}, {UL, UMR, LL},
    {UC, LMR, LL}, {UL, LMR, LL}, {UC, LR, LL}, {UML, LMR, LL}, {LML, LC, UR}, {LML, LR, UR},
    {UML, LC, UR}, {UML, LR, UR}, {UL, LC, UR}, {UML, UC, UL}, {UML, UR, UL}, {LML, UC, UL},
    {LML, UR, UL}, {LL, UC, UL}, {LML, UMR, UL}, {LC, LMR, UL}, {LL, LMR, UL}, {LC, UMR, UL},
    {LL, UMR, UL}, {LC, UR, UL}, {UC, UMR, UR}, {UL, UMR, UR}, {UC, LMR, UR}, {UL, LMR, UR},
    {UC, LR, UR}, {UML, LMR, UR},
};
// clang-format on

struct AreaRow {
  char32_t symbol;
  LatticePath area;
  LatticePath other = {};
  int coverage = kWholly;
};

// By their names, in ascending order.
constexpr AreaRow kAreas[] = {
    {0x1FB68, {UL, UR, LR, LL, MC}},
    {0x1FB69, {UL, MC, UR, LR, LL}},
    {0x1FB6A, {UL, UR, MC, LR, LL}},
    {0x1FB6B, {UL, UR, LR, MC, LL}},
    {0x1FB6C, {UL, MC, LL}},
    {0x1FB6D, {UL, UR, MC}},
    {0x1FB6E, {UR, LR, MC}},
    {0x1FB6F, {LL, MC, LR}},
    {0x1FB9A, {UL, UR, MC}, {LL, MC, LR}},
    {0x1FB9B, {UL, MC, LL}, {UR, LR, MC}},
    {0x1FB9C, {UL, UR, LL}, {}, kHalf},
    {0x1FB9D, {UL, UR, LR}, {}, kHalf},
    {0x1FB9E, {UR, LR, LL}, {}, kHalf},
    {0x1FB9F, {UL, LR, LL}, {}, kHalf},
};
static_assert(std::ranges::is_sorted(kAreas, {}, &AreaRow::symbol));

QPainterPath halfOf(const HalfRow& row, const CellPicture& picture) {
  const auto at = [&](LatticePoint point) { return positionOf(point, LatticeOf::Areas, picture); };
  const QPointF from = at(row.from);
  const QPointF along = at(row.to) - from;
  // The distance from the line, times its length; positive on one side of it.
  const auto side = [&](QPointF point) { return along.x() * (point - from).y() - along.y() * (point - from).x(); };
  const double wanted = side(at(row.corner)) > 0 ? 1 : -1;
  const QPolygonF corners({at(UL), at(UR), at(LR), at(LL)});
  QPolygonF area;
  for (int i = 0; i < 4; ++i) {
    const QPointF a = corners[i];
    const QPointF b = corners[(i + 1) % 4];
    const double sideOfA = wanted * side(a);
    const double sideOfB = wanted * side(b);
    if (sideOfA >= 0) area << a;
    if (sideOfA * sideOfB < 0) area << a + (b - a) * (sideOfA / (sideOfA - sideOfB));
  }
  QPainterPath path;
  path.addPolygon(area);
  return path;
}

}  // namespace

void drawWedge(char32_t symbol, CellPicture& picture) {
  if (symbol < kAreas[0].symbol) return picture.fill(halfOf(kHalves[symbol - kFirstHalf], picture));
  const AreaRow& row = *std::ranges::lower_bound(kAreas, symbol, {}, &AreaRow::symbol);
  QPainterPath area = pathThrough(row.area, LatticeOf::Areas, picture);
  if (row.other.front() != None) area.addPath(pathThrough(row.other, LatticeOf::Areas, picture));
  picture.fill(area, row.coverage);
}

}  // namespace zolt
