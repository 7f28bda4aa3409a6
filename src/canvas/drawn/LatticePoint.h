#pragma once

#include <QPainterPath>
#include <QPointF>
#include <array>
#include <cstdint>

#include "canvas/drawn/CellPicture.h"

namespace zolt {

/// The points of a cell between which slanting symbols run: upper and lower, left, centre and right; middle is half-way
/// down, upper middle (UM) and lower middle (LM) are a third and two thirds down.
enum class LatticePoint : std::uint8_t { None, UL, UC, UR, UML, UMR, ML, MC, MR, LML, LMR, LL, LC, LR };

/// Points in order, as many as there are before `None`.
using LatticePath = std::array<LatticePoint, 5>;

/// What the inner points of the lattice are points of.
enum class LatticeOf {
  Areas,  ///< where blocks end
  Lines,  ///< the middle of light lines
};

/// In pixels from the top left.
QPointF positionOf(LatticePoint point, LatticeOf what, const CellPicture& picture);

/// The path through the points.
QPainterPath pathThrough(const LatticePath& points, LatticeOf what, const CellPicture& picture);

}  // namespace zolt
