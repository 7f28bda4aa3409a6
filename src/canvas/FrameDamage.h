#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "canvas/CanvasCell.h"
#include "canvas/CanvasCursor.h"
#include "canvas/CanvasLabel.h"
#include "canvas/CanvasPixels.h"
#include "canvas/RowContent.h"

namespace zolt {

/// What one row of a painted frame shows. Rows with equal keys look the same.
struct RowKey {
  RowStamp content;
  ColumnRange selected{};
  std::vector<ColumnRange> found{};  ///< search results, in order
  ColumnRange current{};             ///< the part of the current match in this row; not in `found`
  std::optional<CanvasCursor> cursor{};
  ColumnRange link{};  ///< underlined, because the pointer is on it
  std::vector<RowLabel> labels{};
  bool isBlinkedAway = false;  ///< blinking text is hidden just now
  bool isUnfinished = false;   ///< pictures are missing that there was no time to make

  friend bool operator==(const RowKey&, const RowKey&) = default;
};

/// The rows of a frame, top to bottom, the first `firstRowTop` below the top of the viewport, and `rowHeight` apart.
struct Frame {
  std::vector<RowKey> rows;
  DevicePixels firstRowTop;
  DevicePixels rowHeight{1};

  /// From the top of the viewport.
  DevicePixels topOf(std::size_t row) const { return firstRowTop + rowHeight * static_cast<std::int64_t>(row); }
};

/// How to get from one frame to the next with the least painting.
struct FrameDamage {
  /// How far the picture is moved first: downwards, or upwards if negative.
  DevicePixels shift;
  /// Rows of the new frame, by index, that must be painted after the move.
  std::vector<std::size_t> dirtyRows;
  /// Whether everything has to be painted; `shift` and `dirtyRows` mean nothing then.
  bool everything = false;
};

/// Compares two frames of a viewport `viewportHeight` high. Pure.
FrameDamage compareFrames(const Frame& before, const Frame& after, DevicePixels viewportHeight);

}  // namespace zolt
