#include "canvas/drawn/LatticePoint.h"

namespace zolt {

namespace {

enum class Place : std::uint8_t { Start, UpperThird, Half, LowerThird, End };

struct LatticePlace {
  Place column;
  Place row;
};

// By LatticePoint.
constexpr LatticePlace kPlaces[] = {
    {},
    {Place::Start, Place::Start},
    {Place::Half, Place::Start},
    {Place::End, Place::Start},
    {Place::Start, Place::UpperThird},
    {Place::End, Place::UpperThird},
    {Place::Start, Place::Half},
    {Place::Half, Place::Half},
    {Place::End, Place::Half},
    {Place::Start, Place::LowerThird},
    {Place::End, Place::LowerThird},
    {Place::Start, Place::End},
    {Place::Half, Place::End},
    {Place::End, Place::End},
};

double position(Place place, LatticeOf what, const CellAxis& axis) {
  switch (place) {
    case Place::Start:
      return 0;
    case Place::UpperThird:
      return axis.boundary(1, 3);
    case Place::Half:
      return what == LatticeOf::Lines ? axis.lineCentre() : axis.boundary(1, 2);
    case Place::LowerThird:
      return axis.boundary(2, 3);
    case Place::End:
      break;
  }
  return axis.size;
}

}  // namespace

QPointF positionOf(LatticePoint point, LatticeOf what, const CellPicture& picture) {
  const LatticePlace& place = kPlaces[static_cast<std::size_t>(point)];
  return {position(place.column, what, picture.columns()), position(place.row, what, picture.rows())};
}

QPainterPath pathThrough(const LatticePath& points, LatticeOf what, const CellPicture& picture) {
  QPainterPath path(positionOf(points.front(), what, picture));
  for (std::size_t i = 1; i < points.size() && points[i] != LatticePoint::None; ++i) {
    path.lineTo(positionOf(points[i], what, picture));
  }
  return path;
}

}  // namespace zolt
