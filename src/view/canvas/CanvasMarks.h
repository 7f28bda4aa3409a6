#pragma once

#include <vector>

#include "view/canvas/RowSource.h"

namespace zolt {

/// What of a row stands out as found.
struct RowMarks {
  std::vector<CanvasRange> found;  ///< in order
  CanvasRange current;             ///< the part of the row that belongs to the match one is at; not in `found`

  friend bool operator==(const RowMarks&, const RowMarks&) = default;
};

/// Tells a canvas what to mark. Main thread.
class CanvasMarks {
 public:
  virtual ~CanvasMarks() = default;
  /// The marks in `row`, clipped to it.
  virtual RowMarks marksIn(CanvasRange row) = 0;
};

}  // namespace zolt
