#include <QPainterPath>

#include "canvas/drawn/SymbolFamilies.h"

namespace zolt {

namespace {

// Even numbers of periods, so that a pattern runs on in the neighbouring cells; a cell is about twice as high as wide.
constexpr int kCheckerColumns = 4;
constexpr int kCheckerRows = 8;
constexpr int kStripesAcross = 2;
constexpr int kStripesDown = 4;

constexpr char32_t kChecker = 0x1FB95;         // begins with a covered square; U+1FB96 is its inverse
constexpr char32_t kFallingStripes = 0x1FB98;  // from the upper left to the lower right; those of U+1FB99 rise

}  // namespace

void drawChecker(char32_t symbol, CellPicture& picture) {
  const int first = symbol == kChecker ? 0 : 1;
  for (int row = 0; row < kCheckerRows; ++row) {
    const CellAxis& rows = picture.rows();
    const Span height{rows.boundary(row, kCheckerRows), rows.boundary(row + 1, kCheckerRows)};
    for (int column = (row + first) % 2; column < kCheckerColumns; column += 2) {
      const CellAxis& columns = picture.columns();
      picture.fill({columns.boundary(column, kCheckerColumns), columns.boundary(column + 1, kCheckerColumns)}, height);
    }
  }
}

void drawStripes(char32_t symbol, CellPicture& picture) {
  const double period = static_cast<double>(picture.width()) / kStripesAcross;
  const double top = symbol == kFallingStripes ? 0 : picture.height();
  const double bottom = picture.height() - top;
  QPainterPath stripes;
  // Half of each period is covered. One that begins to the left of the cell enters it further down.
  for (int stripe = -kStripesDown; stripe <= kStripesAcross; ++stripe) {
    const double left = (stripe - 0.25) * period;
    const double right = left + period / 2;
    const double shift = kStripesDown * period;
    stripes.moveTo(left, top);
    stripes.lineTo(right, top);
    stripes.lineTo(right + shift, bottom);
    stripes.lineTo(left + shift, bottom);
    stripes.closeSubpath();
  }
  picture.fill(stripes);
}

}  // namespace zolt
