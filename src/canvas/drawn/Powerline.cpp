#include <QPainterPath>
#include <QTransform>
#include <algorithm>
#include <cmath>

#include "canvas/drawn/LatticePoint.h"
#include "canvas/drawn/SymbolFamilies.h"

namespace zolt {

namespace {

using enum LatticePoint;

// The shapes as they point to the right.

QPainterPath arrow(const CellPicture& picture) {
  QPainterPath path;
  path.lineTo(picture.width(), picture.height() / 2.0);
  path.lineTo(0, picture.height());
  path.closeSubpath();
  return path;
}

// The two slanting edges of the arrow, as thick as a light line.
QPainterPath arrowOutline(const CellPicture& picture) {
  const double width = picture.width();
  const double half = picture.height() / 2.0;
  const double across = std::min(width, picture.thickness() * std::hypot(width, half) / half);
  const double along = across * half / width;
  QPainterPath path;
  path.lineTo(width, half);
  path.lineTo(0, 2 * half);
  path.lineTo(0, 2 * half - along);
  path.lineTo(width - across, half);
  path.lineTo(0, along);
  path.closeSubpath();
  return path;
}

QPainterPath bulge(const CellPicture& picture) {
  const double half = picture.height() / 2.0;
  QPainterPath path;
  path.addEllipse(QPointF(0, half), picture.width(), half);
  return path;
}

QPainterPath bulgeOutline(const CellPicture& picture) {
  const double half = picture.height() / 2.0;
  QPainterPath path = bulge(picture);
  path.addEllipse(QPointF(0, half), std::max(0, picture.width() - picture.thickness()),
                  std::max(0.0, half - picture.thickness()));
  return path;
}

// Two areas with slanting ends, above and below the light line in the middle.
QPainterPath jaws(const CellPicture& picture) {
  const double width = picture.width();
  const Span gap = picture.rows().light();
  QPainterPath path;
  path.lineTo(width, 0);
  path.lineTo(width / 2, gap.begin);
  path.lineTo(0, gap.begin);
  path.closeSubpath();
  path.moveTo(0, picture.height());
  path.lineTo(width, picture.height());
  path.lineTo(width / 2, gap.end);
  path.lineTo(0, gap.end);
  path.closeSubpath();
  return path;
}

enum class Points { Right, Left };

struct ShapeRow {
  char32_t symbol;
  QPainterPath (*shape)(const CellPicture& picture);
  Points points;
};

constexpr ShapeRow kShapes[] = {
    {0xE0B0, arrow, Points::Right},       {0xE0B1, arrowOutline, Points::Right}, {0xE0B2, arrow, Points::Left},
    {0xE0B3, arrowOutline, Points::Left}, {0xE0B4, bulge, Points::Right},        {0xE0B5, bulgeOutline, Points::Right},
    {0xE0B6, bulge, Points::Left},        {0xE0B7, bulgeOutline, Points::Left},  {0xE0D2, jaws, Points::Right},
    {0xE0D4, jaws, Points::Left},
};

// Each of the triangles in a corner has its long side as a line of its own.
struct CornerRow {
  char32_t triangle;  ///< the next character is the line
  LatticePath area;
  LatticePath line;
};

constexpr CornerRow kCorners[] = {
    {0xE0B8, {UL, LR, LL}, {UL, LR}},
    {0xE0BA, {UR, LR, LL}, {UR, LL}},
    {0xE0BC, {UL, UR, LL}, {UR, LL}},
    {0xE0BE, {UL, UR, LR}, {UL, LR}},
};

}  // namespace

void drawPowerline(char32_t symbol, CellPicture& picture) {
  for (const CornerRow& row : kCorners) {
    if (symbol == row.triangle) return picture.fill(pathThrough(row.area, LatticeOf::Areas, picture));
    if (symbol == row.triangle + 1) return picture.stroke(pathThrough(row.line, LatticeOf::Lines, picture));
  }
  const ShapeRow& row = *std::ranges::find(kShapes, symbol, &ShapeRow::symbol);
  const QTransform mirror(-1, 0, 0, 1, picture.width(), 0);
  const QPainterPath shape = row.shape(picture);
  picture.fill(row.points == Points::Right ? shape : mirror.map(shape));
}

}  // namespace zolt
