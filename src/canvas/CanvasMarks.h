#pragma once

#include <vector>

#include "text/TextPosition.h"

namespace zolt {

/// The search results in a row.
struct RowMarks {
  std::vector<TextRange> found;  ///< in order
  TextRange current;             ///< the part of the current match in this row; not in `found`

  friend bool operator==(const RowMarks&, const RowMarks&) = default;
};

/// Tells a canvas which matches to highlight. Main thread.
class CanvasMarks {
 public:
  virtual ~CanvasMarks() = default;
  /// The marks in `row`, clipped to it.
  virtual RowMarks marksIn(TextRange row) = 0;
};

}  // namespace zolt
