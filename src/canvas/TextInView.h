#pragma once

#include <QStringList>
#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "canvas/RowContent.h"
#include "text/TextPosition.h"

namespace zolt {

/// A part of the text in view, in UTF-16 code units from its start; `end` is not included.
struct OffsetRange {
  int begin = 0;
  int end = 0;

  constexpr bool empty() const { return begin >= end; }
  friend constexpr bool operator==(const OffsetRange&, const OffsetRange&) = default;
};

/// A place in a row. Where one row wraps to the next, the end of the one and the start of the other are one position.
struct RowPlace {
  std::size_t row = 0;  ///< of the rows in view
  TextPosition position;
};

/// The rows of a frame as one text, with an LF between two rows, for screen readers.
///
/// Its offsets count UTF-16 code units; an offset within a character means the character. A value.
class TextInView {
 public:
  using Rows = std::vector<std::shared_ptr<const RowContent>>;

  /// `textOf` gives the text of a range: of a row that has tabs, for example, which no cell shows.
  TextInView(Rows rows, const std::function<QString(TextRange)>& textOf);

  QString text() const { return m_texts.join(QLatin1Char('\n')); }
  const QStringList& rowTexts() const { return m_texts; }
  const RowContent& row(std::size_t index) const { return *m_rows[index]; }
  std::size_t rowCount() const { return m_rows.size(); }
  int length() const;

  /// Where the character at `offset` begins: the end of its row for a line end, the nearest place for one outside.
  /// There must be a row.
  RowPlace placeOf(int offset) const;
  int offsetOf(RowPlace place) const;
  /// The part in view of a range; empty, at the start or the end, for one that is above or below.
  OffsetRange offsetsOf(TextRange range) const;

  /// The character at `offset`, a cluster as a whole, or the line end; empty at the end of the text.
  OffsetRange characterAt(int offset) const;
  /// The row at `offset` with its line end.
  OffsetRange rowAt(int offset) const;

 private:
  Rows m_rows;
  QStringList m_texts;
  std::vector<int> m_starts;  // of the rows
};

}  // namespace zolt
