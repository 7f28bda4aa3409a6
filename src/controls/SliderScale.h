#pragma once

namespace zolt {

/// The values of a slider: multiples of a fraction of 1, from first to last.
///
/// Each value is the double nearest to its decimal fraction, so that 0.3 is exactly the double 0.3.
struct SliderScale {
  int partsOfOne;  ///< 10: tenths
  int first;       ///< in parts
  int last;        ///< in parts, included
  int keyStep;     ///< the step of an arrow key, in parts

  /// The value at a position, given in parts.
  double valueAt(int position) const { return static_cast<double>(position) / partsOfOne; }
  /// The position nearest to a value; the nearer end for a value out of range, the first for NaN.
  int positionOf(double value) const;
};

}  // namespace zolt
