#pragma once

#include <cstdint>

namespace zolt {

/// Device pixels, counted from the top of everything that a canvas could show.
using Pixels = std::int64_t;

/// A length in logical pixels, as Qt's widgets and events count; `TextCanvas::toDevice` makes device pixels of it.
struct LogicalPixels {
  double value = 0;
};

/// How a content of any height is moved through a window of a few hundred pixels by a scroll bar that counts in `int`.
/// A value; pure arithmetic.
struct ScrollModel {
  Pixels contentHeight = 0;
  Pixels viewportHeight = 0;

  /// The greatest offset, 0 when everything fits.
  Pixels maximum() const { return contentHeight > viewportHeight ? contentHeight - viewportHeight : 0; }
  Pixels clamped(Pixels offset) const;

  /// Pixels to one step of the scroll bar: 1 until its range would overflow.
  Pixels pixelsPerStep() const;
  int barMaximum() const;
  int barPageStep() const;
  int barValue(Pixels offset) const;
  /// The offset for a value of the scroll bar; its maximum stands for the very end.
  Pixels offsetFor(int barValue) const;
};

}  // namespace zolt
