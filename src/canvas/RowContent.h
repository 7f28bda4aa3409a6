#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/CanvasCell.h"
#include "canvas/CellLook.h"
#include "text/TextPosition.h"

namespace zolt {

/// Text of a row in one look, from `column` on: either ASCII, a column for each byte, or what is shaped as one: a
/// grapheme cluster, or those of a syllable.
struct TextPiece {
  CanvasColumn column;
  int columns = 0;
  std::uint32_t begin = 0;  ///< of its text in RowContent::text; bytes
  std::uint32_t end = 0;    ///< not included
  bool isCluster = false;
  CellLook look;

  ColumnRange range() const { return {.begin = column, .end = column + columns}; }
};

/// Where some characters of a row stand: one column for each position up to the next step; or, as a unit, one character
/// that takes several positions or columns.
struct ColumnStep {
  TextPosition position;
  CanvasColumn column;
  bool isUnit = false;
};

/// Rows with equal stamps look the same. A row that moves, but does not change, keeps its `identity`.
struct RowStamp {
  std::uint64_t identity = 0;
  std::uint64_t extent = 0;
  std::uint64_t version = 0;

  friend bool operator==(const RowStamp&, const RowStamp&) = default;
};

/// One row with all that is needed to paint it and to find places in it.
struct RowContent {
  TextRange range;   ///< the characters in the row, a line end not included
  CanvasColumn end;  ///< the column after the last character
  RowStamp stamp;
  /// In order of both, the first at the start of the range; none: the row starts in column 0.
  std::vector<ColumnStep> steps;
  std::string text;               ///< of the pieces, in UTF-8 without tabs
  std::vector<TextPiece> pieces;  ///< in order; gaps are blank
  bool blinks = false;            ///< whether any piece does

  std::string_view textOf(const TextPiece& piece) const {
    return std::string_view(text).substr(piece.begin, piece.end - piece.begin);
  }
  /// Add text after the other. A cluster that continues a syllable in its look joins the last piece.
  void addText(CanvasColumn column, std::string_view ascii, const CellLook& look);
  void addBlank(ColumnRange columns, const CellLook& look);
  void addCluster(ColumnRange columns, std::string_view utf8, const CellLook& look);

  /// The column of `position`: 0 for one before the row, `end` for one past its last character.
  CanvasColumn columnOf(TextPosition position) const;
  /// Of the part of the row that is in `text`.
  ColumnRange columnsOf(TextRange part) const;
  /// The character at `position` or around it, a unit as a whole; empty outside the row.
  TextRange characterAt(TextPosition position) const;
  /// The position before the first character at `column` or after it; the end of the row when there is none.
  TextPosition positionAt(CanvasColumn column) const;
};

}  // namespace zolt
