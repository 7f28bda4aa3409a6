#pragma once

namespace zolt {

/// The values that a slider can take: whole multiples of one part of 1, from a first to a last one.
///
/// Each value is the double nearest to its decimal fraction, so that the ends and the steps are what they are called.
struct SliderScale {
  int partsOfOne;  ///< 10: tenths
  int first;       ///< in parts
  int last;        ///< in parts, included
  int keyStep;     ///< what an arrow key moves, in parts

  /// The value at a position, which is counted in parts.
  double valueAt(int position) const { return static_cast<double>(position) / partsOfOne; }
  /// The position nearest to any value; the ends for what lies outside, the first one for what is not a number.
  int positionOf(double value) const;
};

}  // namespace zolt
