#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "canvas/CanvasCell.h"
#include "text/TextAttributes.h"
#include "text/TextPosition.h"

namespace zolt {

/// Text in one style whose characters take one column each, from `column` of its row on.
struct StyledPiece {
  CanvasColumn column;
  std::string text;
  TextAttributes attributes;
};

/// Where some characters of a row stand: one column each, the one at `position` in `column`.
struct ColumnStep {
  TextPosition position;
  CanvasColumn column;
};

/// One row with all that is needed to paint it and to find places in it.
struct RowContent {
  TextRange range;          ///< the characters in the row, a line end not included
  CanvasColumn end;         ///< the column after the last character
  std::uint64_t stamp = 0;  ///< rows with the same range and stamp look the same
  /// In order of both, the first at the start of the range; none: the row starts in column 0.
  std::vector<ColumnStep> steps;
  /// In order, without tabs; gaps are blank.
  std::vector<StyledPiece> pieces;

  /// The column of `position`: 0 for one before the row, `end` for one past its last character.
  CanvasColumn columnOf(TextPosition position) const;
  /// Of the part of the row that is in `text`.
  ColumnRange columnsOf(TextRange text) const;
  /// The position before the first character at `column` or after it; the end of the row when there is none.
  TextPosition positionAt(CanvasColumn column) const;
};

}  // namespace zolt
