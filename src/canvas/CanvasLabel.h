#pragma once

#include <cstddef>
#include <string>

#include "canvas/CanvasCell.h"
#include "text/TextPosition.h"

namespace zolt {

/// A label on a part of the text: a few letters over its first characters. A canvas underlines the part.
struct CanvasLabel {
  TextRange on;
  std::string letters;    ///< ASCII, one column each; empty: nothing is shown
  std::size_t typed = 0;  ///< how many of them have been typed, which are shown fainter
};

/// What is seen of a label in one row.
struct RowLabel {
  ColumnRange on;
  CanvasColumn column;  ///< of the first letter
  std::string letters;  ///< empty in the rows after the first one
  std::size_t typed = 0;

  friend bool operator==(const RowLabel&, const RowLabel&) = default;
};

}  // namespace zolt
