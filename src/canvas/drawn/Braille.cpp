#include <QPainterPath>
#include <algorithm>

#include "canvas/drawn/SymbolFamilies.h"

namespace zolt {

namespace {

constexpr char32_t kFirstPattern = 0x2800;
constexpr int kColumns = 2;
constexpr int kRows = 4;

struct Dot {
  int column;
  int row;
};

// By the bit of the code point: dots 1 to 8. The last row was added to six dots.
constexpr Dot kDots[] = {{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1}, {1, 2}, {0, 3}, {1, 3}};

// The first pixel of a dot in the middle of its part of the cell. Parts of neighbouring cells count on, so that all
// distances between dots are the same, but for one pixel.
int startOf(int part, int parts, int diameter, const CellAxis& axis) {
  return std::max(0, (2 * part + 1) * axis.size - parts * diameter) / (2 * parts);
}

// More than half of the distance between dots, and never all of it.
int diameterOf(const CellPicture& picture) {
  const int distance = std::min(picture.width() / kColumns, picture.height() / kRows);
  return std::max(1, std::min((distance * 5 + 4) / 8, distance - 1));
}

}  // namespace

void drawBraille(char32_t symbol, CellPicture& picture) {
  constexpr int kRoundFrom = 3;  // smaller dots would only look faint
  const int diameter = diameterOf(picture);
  QPainterPath dots;
  for (std::size_t bit = 0; bit < std::size(kDots); ++bit) {
    if (((symbol - kFirstPattern) >> bit & 1) == 0) continue;
    const int left = startOf(kDots[bit].column, kColumns, diameter, picture.columns());
    const int top = startOf(kDots[bit].row, kRows, diameter, picture.rows());
    if (diameter < kRoundFrom) {
      picture.fill(Span{left, left + diameter}, Span{top, top + diameter});
    } else {
      dots.addEllipse(left, top, diameter, diameter);
    }
  }
  picture.fill(dots);
}

}  // namespace zolt
