#pragma once

#include <algorithm>

namespace zolt {

/// Pixels of a cell along one axis, from its left or top; `end` is not included.
struct Span {
  int begin = 0;
  int end = 0;

  friend constexpr bool operator==(const Span&, const Span&) = default;
};

/// One axis of a cell, from left to right or from top to bottom: where its fractions and its lines are. Symbols join
/// because all of them take their pixels from here.
struct CellAxis {
  int size = 1;       ///< in pixels, at least 1
  int thickness = 1;  ///< of a light line, in pixels, at least 1; the same on both axes

  constexpr Span all() const { return {0, size}; }

  /// The pixel at which the first `part` of `parts` end, rounded: 0 for none, `size` for all.
  constexpr int boundary(int part, int parts) const { return (2 * size * part + parts) / (2 * parts); }

  /// From boundary to boundary; at least a pixel of the cell, so that a thin part does not vanish in a small cell.
  constexpr Span slice(int from, int to, int parts) const {
    const int begin = std::min(boundary(from, parts), size - 1);
    return {begin, std::max(boundary(to, parts), begin + 1)};
  }

  /// The lines in the middle of the cell that run across this axis. Those of a double line leave a gap between them
  /// where a light one would be.
  constexpr Span light() const { return centred(thickness); }
  constexpr Span heavy() const { return centred(2 * thickness); }
  constexpr Span lowOfDouble() const { return {light().begin - thickness, light().begin}; }
  constexpr Span highOfDouble() const { return {light().end, light().end + thickness}; }

  /// The middle of the light line; not always that of the cell.
  constexpr double lineCentre() const { return light().begin + thickness / 2.0; }

 private:
  constexpr Span centred(int pixels) const {
    const int begin = std::max(0, size - pixels) / 2;
    return {begin, begin + pixels};
  }
};

}  // namespace zolt
