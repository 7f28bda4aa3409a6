#include <QPainterPath>
#include <algorithm>

#include "canvas/drawn/BoxTable.h"
#include "canvas/drawn/SymbolFamilies.h"

namespace zolt {

namespace {

// What runs from the middle to one edge, what runs on beyond the middle, and what crosses there: towards the start of
// the other axis and towards its end.
struct Arm {
  Stroke stroke;
  Stroke opposite;
  Stroke low;
  Stroke high;
};

// One line of an arm: its pixels across the arm; whether it begins at the nearer line of a double one that crosses.
struct ArmLine {
  Span across;
  bool near = false;
};

enum class Towards { Start, End };

// The pixels in the middle that a line covers as well, so that it joins what crosses it.
Span crossing(const CellAxis& along, const Arm& arm, Towards edge, bool near) {
  if (arm.low == Stroke::Double || arm.high == Stroke::Double) {
    if (near) return edge == Towards::End ? along.highOfDouble() : along.lowOfDouble();
    return {along.lowOfDouble().begin, along.highOfDouble().end};
  }
  return arm.low == Stroke::Heavy || arm.high == Stroke::Heavy ? along.heavy() : along.light();
}

template <class Fill>
void drawArm(const CellAxis& along, const CellAxis& across, const Arm& arm, Towards edge, Fill fill) {
  const auto draw = [&](ArmLine line) {
    const Span middle = crossing(along, arm, edge, line.near);
    fill(edge == Towards::End ? Span{middle.begin, along.size} : Span{0, middle.end}, line.across);
  };
  // A single line does not enter a double one that passes it by.
  const bool passedBy = arm.low == Stroke::Double && arm.high == Stroke::Double && arm.opposite == Stroke::None;
  switch (arm.stroke) {
    case Stroke::None:
      break;
    case Stroke::Light:
      draw({across.light(), passedBy});
      break;
    case Stroke::Heavy:
      draw({across.heavy(), passedBy});
      break;
    case Stroke::Double:
      // Each line turns into that of a double arm on its own side.
      draw({across.lowOfDouble(), arm.low == Stroke::Double});
      draw({across.highOfDouble(), arm.high == Stroke::Double});
      break;
  }
}

void drawSolid(const BoxLines& lines, CellPicture& picture) {
  const CellAxis& columns = picture.columns();
  const CellAxis& rows = picture.rows();
  const auto horizontal = [&](Span along, Span across) { picture.fill(along, across); };
  const auto vertical = [&](Span along, Span across) { picture.fill(across, along); };
  drawArm(columns, rows, {lines.left, lines.right, lines.up, lines.down}, Towards::Start, horizontal);
  drawArm(columns, rows, {lines.right, lines.left, lines.up, lines.down}, Towards::End, horizontal);
  drawArm(rows, columns, {lines.up, lines.down, lines.left, lines.right}, Towards::Start, vertical);
  drawArm(rows, columns, {lines.down, lines.up, lines.left, lines.right}, Towards::End, vertical);
}

// Dashes of about one length, the gap between those of neighbouring cells included; fewer if the cell has not two
// pixels for each.
template <class Fill>
void drawDashes(const CellAxis& along, int dashes, Fill fill) {
  const int count = std::clamp(along.size / 2, 1, dashes);
  const int gap = std::max(1, along.size / (3 * count));
  for (int i = 0; i < count; ++i) {
    fill(Span{along.boundary(i, count) + gap / 2, along.boundary(i + 1, count) - (gap - gap / 2)});
  }
}

void drawDashed(const BoxLines& lines, int dashes, CellPicture& picture) {
  const auto across = [](const CellAxis& axis, Stroke stroke) {
    return stroke == Stroke::Heavy ? axis.heavy() : axis.light();
  };
  if (lines.left != Stroke::None) {
    const Span rows = across(picture.rows(), lines.left);
    drawDashes(picture.columns(), dashes, [&](Span columns) { picture.fill(columns, rows); });
  } else {
    const Span columns = across(picture.columns(), lines.up);
    drawDashes(picture.rows(), dashes, [&](Span rows) { picture.fill(columns, rows); });
  }
}

// A quarter of a circle, and straight lines from its ends to the edges.
void drawArc(const BoxLines& lines, CellPicture& picture) {
  constexpr double kHandle = 0.5523;  // of a cubic curve that is nearly a quarter of a circle, in radii
  const double x = picture.columns().lineCentre();
  const double y = picture.rows().lineCentre();
  // At least a pixel at each edge is straight, as in the cell next to it.
  const double radius =
      std::max(picture.thickness() / 2.0, std::min({x, picture.width() - x, y, picture.height() - y}) - 1);
  const bool right = lines.right != Stroke::None;
  const bool down = lines.down != Stroke::None;
  const double dx = right ? radius : -radius;
  const double dy = down ? radius : -radius;
  QPainterPath path(QPointF(right ? picture.width() : 0, y));
  path.lineTo(x + dx, y);
  path.cubicTo(x + dx * (1 - kHandle), y, x, y + dy * (1 - kHandle), x, y + dy);
  path.lineTo(x, down ? picture.height() : 0);
  picture.stroke(path);
}

}  // namespace

void drawBoxLines(char32_t symbol, CellPicture& picture) {
  const BoxLines& lines = box_table::kRows[symbol - kFirstBoxSymbol];
  switch (lines.style) {
    case BoxStyle::Solid:
      return drawSolid(lines, picture);
    case BoxStyle::TwoDashes:
      return drawDashed(lines, 2, picture);
    case BoxStyle::ThreeDashes:
      return drawDashed(lines, 3, picture);
    case BoxStyle::FourDashes:
      return drawDashed(lines, 4, picture);
    case BoxStyle::Arc:
      return drawArc(lines, picture);
  }
}

void drawStruckLine(char32_t, CellPicture& picture) {
  const CellAxis& rows = picture.rows();
  const int reach = picture.height() / 6;
  picture.fill(picture.columns().all(), rows.light());
  picture.fill(picture.columns().light(), {rows.light().begin - reach, rows.light().end + reach});
}

}  // namespace zolt
