#pragma once

#include <cstdint>
#include <string>

#include "canvas/CanvasCell.h"
#include "canvas/RowContent.h"
#include "text/TextPosition.h"

namespace zolt {

/// What a text canvas shows: wrapped rows of styled text, and how rows, columns and positions belong together.
///
/// Row numbers are as of the last `sync` or `setColumns`. Fetching rows may correct estimates and so move rows; then
/// `generation` changes. Main thread.
class RowSource {
 public:
  virtual ~RowSource() = default;

  /// Takes in text that was appended.
  virtual void sync() = 0;
  virtual int columns() const = 0;
  /// Wraps at `columns`, 1 or more.
  virtual void setColumns(int columns) = 0;
  /// At least 1.
  virtual std::int64_t rowCount() const = 0;
  /// Changes whenever row numbers from before it may be off.
  virtual std::uint64_t generation() const = 0;
  /// Improves row numbers in the background; false when there is nothing left to improve.
  virtual bool refine() = 0;

  /// `row` from 0 to rowCount() (not included).
  virtual RowContent content(CanvasRow row) = 0;
  /// The characters of a row, without the cost of its content.
  virtual TextRange rowRange(CanvasRow row) = 0;
  virtual CanvasRow rowAt(TextPosition position) = 0;
  /// An estimate of the row that shows `position`, without fetching any text.
  virtual CanvasRow roughRowAt(TextPosition position) const = 0;

  /// The end of the text.
  virtual TextPosition end() const = 0;
  /// The text of a range as a person copies it, lines ending in LF.
  virtual std::string text(TextRange range) const = 0;
  /// The word around `position`; a single character where there is no word.
  virtual TextRange wordAt(TextPosition position) const = 0;
  /// The line around `position`, with its line end.
  virtual TextRange lineAt(TextPosition position) const = 0;
};

}  // namespace zolt
