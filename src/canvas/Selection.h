#pragma once

#include <algorithm>

#include "canvas/CanvasCell.h"
#include "text/TextPosition.h"

namespace zolt {

/// What a drag selects by.
enum class SelectionUnit { Character, Word, Line, Rectangle };

/// Where one end of a selection is: a place, or a whole unit; for a rectangle also its column.
struct SelectionEnd {
  TextRange text;
  CanvasColumn column;
};

/// The selected range of text: an origin and where the pointer is, both widened to whole units. A value.
class Selection {
 public:
  bool empty() const { return isRectangle() ? columns().empty() : range().empty(); }
  /// From the first character to the last; of a rectangle, not all between them is selected.
  TextRange range() const {
    return {.begin = std::min(m_origin.text.begin, m_head.text.begin),
            .end = std::max(m_origin.text.end, m_head.text.end)};
  }
  SelectionUnit unit() const { return m_unit; }
  bool isRectangle() const { return m_unit == SelectionUnit::Rectangle; }
  /// The columns of a rectangle.
  ColumnRange columns() const {
    return {.begin = std::min(m_origin.column, m_head.column), .end = std::max(m_origin.column, m_head.column)};
  }

  void clear() { *this = Selection(); }
  /// Selects `origin`: empty at a place, or a whole unit around it.
  void begin(SelectionUnit unit, const SelectionEnd& origin) {
    m_unit = unit;
    m_origin = m_head = origin;
  }
  void begin(SelectionUnit unit, TextRange origin) { begin(unit, SelectionEnd{.text = origin, .column = {}}); }
  /// Moves the other end to `head`, a place or a whole unit.
  void extend(const SelectionEnd& head) { m_head = head; }
  void extend(TextRange head) { extend(SelectionEnd{.text = head, .column = {}}); }

  /// Follows the text: `moved` tells where a place is now.
  template <class Moved>
  void move(Moved moved) {
    for (TextRange* part : {&m_origin.text, &m_head.text}) {
      *part = {.begin = moved(part->begin), .end = moved(part->end)};
    }
  }

 private:
  SelectionUnit m_unit = SelectionUnit::Character;
  SelectionEnd m_origin;
  SelectionEnd m_head;
};

}  // namespace zolt
