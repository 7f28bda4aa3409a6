#pragma once

#include <algorithm>

#include "canvas/CanvasPixels.h"

namespace zolt {

/// How a content of any height is moved through a window of a few hundred pixels by a scroll bar that counts in `int`.
/// Offsets are from the top of the content to the top of the window. A value; pure arithmetic.
struct ScrollModel {
  DevicePixels contentHeight;
  DevicePixels viewportHeight;

  /// The greatest offset, 0 when everything fits.
  DevicePixels maximum() const { return std::max(contentHeight - viewportHeight, DevicePixels(0)); }
  DevicePixels clamped(DevicePixels offset) const;

  /// Pixels to one step of the scroll bar: 1 until its range would overflow.
  DevicePixels pixelsPerStep() const;
  int barMaximum() const;
  int barPageStep() const;
  int barValue(DevicePixels offset) const;
  /// The offset for a value of the scroll bar; its maximum stands for the very end.
  DevicePixels offsetFor(int barValue) const;
};

}  // namespace zolt
