#include <QPainterPath>
#include <algorithm>

#include "canvas/drawn/SymbolFamilies.h"

namespace zolt {

namespace {

enum class Ink { Area, Outline };

// A circle as wide as the cell, of which the part within the cell is seen; its middle in widths and heights of the
// cell.
struct CircleRow {
  char32_t symbol;
  double x;
  double y;
  Ink ink;
};

// By their names, in ascending order.
constexpr CircleRow kRows[] = {
    {0x1FBE0, 0.5, 0, Ink::Outline}, {0x1FBE1, 1, 0.5, Ink::Outline}, {0x1FBE2, 0.5, 1, Ink::Outline},
    {0x1FBE3, 0, 0.5, Ink::Outline}, {0x1FBE8, 0.5, 0, Ink::Area},    {0x1FBE9, 1, 0.5, Ink::Area},
    {0x1FBEA, 0.5, 1, Ink::Area},    {0x1FBEB, 0, 0.5, Ink::Area},    {0x1FBEC, 1, 0, Ink::Area},
    {0x1FBED, 0, 1, Ink::Area},      {0x1FBEE, 1, 1, Ink::Area},      {0x1FBEF, 0, 0, Ink::Area},
};
static_assert(std::ranges::is_sorted(kRows, {}, &CircleRow::symbol));

}  // namespace

void drawCircle(char32_t symbol, CellPicture& picture) {
  const CircleRow& row = *std::ranges::lower_bound(kRows, symbol, {}, &CircleRow::symbol);
  const QPointF centre(row.x * picture.width(), row.y * picture.height());
  const double radius = std::min(picture.width(), picture.height()) / 2.0;
  const double hole = row.ink == Ink::Outline ? std::max(0.0, radius - picture.thickness()) : 0;
  QPainterPath circle;
  circle.addEllipse(centre, radius, radius);
  if (hole > 0) circle.addEllipse(centre, hole, hole);
  picture.fill(circle);
}

}  // namespace zolt
