#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "canvas/CanvasCell.h"
#include "canvas/CanvasCursor.h"
#include "canvas/RowContent.h"
#include "text/TextPosition.h"

namespace zolt {

/// A link in the text, and where it leads.
struct CanvasLink {
  TextRange range;
  std::string target;  ///< a URI
};

/// What a text canvas shows: wrapped rows of styled text, and how rows, columns and positions belong together.
///
/// Positions are ordered, and those in a row follow each other; only the source knows what lies between two rows. Row
/// numbers are as of the last `sync` or `setColumns`. Fetching rows may correct estimates and so move rows; then
/// `generation` changes. Main thread.
class RowSource {
 public:
  virtual ~RowSource() = default;

  /// Takes in what has changed.
  virtual void sync() = 0;
  virtual int columns() const = 0;
  /// Wraps at `columns`, 1 or more; a source whose rows are wrapped elsewhere need not.
  virtual void setColumns(int columns) = 0;
  /// At least 1.
  virtual std::int64_t rowCount() const = 0;
  /// How many of the last rows belong together as a screen: a view at the end shows them from the first one on if they
  /// fit. 0: there is no screen, and the last row stands at the bottom of a view that is full.
  virtual int screenRows() const { return 0; }
  /// Changes whenever row numbers from before it may be off.
  virtual std::uint64_t generation() const = 0;
  /// Improves row numbers in the background; false when there is nothing left to improve.
  virtual bool refine() = 0;

  /// `row` from 0 to rowCount() (not included). Never null.
  virtual std::shared_ptr<const RowContent> content(CanvasRow row) = 0;
  /// The characters of a row, without the cost of its content.
  virtual TextRange rowRange(CanvasRow row) = 0;
  virtual CanvasRow rowAt(TextPosition position) = 0;
  /// An estimate of the row that shows `position`, without fetching any text.
  virtual CanvasRow roughRowAt(TextPosition position) const = 0;
  /// The cursor, if the text has one.
  virtual std::optional<CanvasCursor> cursor() const { return std::nullopt; }
  /// Where a place that was held before the last `sync` is now.
  virtual TextPosition moved(TextPosition position) const { return position; }

  /// The first place of the text, and the end of it.
  virtual TextPosition begin() const { return {}; }
  virtual TextPosition end() const = 0;
  /// The text of a range, lines ending in LF.
  virtual std::string text(TextRange range) const = 0;
  /// The same as a person copies it: also without the blanks at the end of the last line, where the range reaches it.
  virtual std::string copiedText(TextRange range) const { return text(range); }
  /// An estimate of how much text a range has, in bytes, without fetching it.
  virtual std::uint64_t roughSize(TextRange range) const { return range.length(); }
  /// The word around `position`; a single character where there is no word.
  virtual TextRange wordAt(TextPosition position) const = 0;
  /// The line around `position`, with its line end.
  virtual TextRange lineAt(TextPosition position) const = 0;
  /// The character around `position` begins here; one before it, if `position` is at its beginning.
  virtual TextPosition characterBefore(TextPosition position) const = 0;
  virtual std::optional<CanvasLink> linkAt(TextPosition) const { return std::nullopt; }
};

}  // namespace zolt
