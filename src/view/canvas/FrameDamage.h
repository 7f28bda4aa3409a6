#pragma once

#include <cstddef>
#include <vector>

#include "view/canvas/CanvasMarks.h"
#include "view/canvas/RowSource.h"
#include "view/canvas/ScrollModel.h"

namespace zolt {

/// What one row of a painted frame shows. Rows with equal keys look the same.
struct RowKey {
  CanvasRange text;
  CanvasRange selected;  ///< the selected part of it
  RowMarks marks{};

  friend bool operator==(const RowKey&, const RowKey&) = default;
};

/// The rows of a frame, top to bottom, at `firstRowTop` pixels from the top of the viewport and `rowHeight` apart.
struct Frame {
  std::vector<RowKey> rows;
  Pixels firstRowTop = 0;
  Pixels rowHeight = 1;
};

/// How to get from one frame to the next with the least painting.
struct FrameDamage {
  /// Moves the picture first: pixels downwards, negative upwards.
  Pixels shift = 0;
  /// Rows of the new frame, by index, that must be painted after the move.
  std::vector<std::size_t> dirtyRows;
  /// Whether everything has to be painted; `shift` and `dirtyRows` mean nothing then.
  bool everything = false;
};

/// Compares two frames of a viewport `viewportHeight` pixels high. Pure.
FrameDamage compareFrames(const Frame& before, const Frame& after, Pixels viewportHeight);

}  // namespace zolt
