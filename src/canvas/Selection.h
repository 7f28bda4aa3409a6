#pragma once

#include <algorithm>

#include "text/TextPosition.h"

namespace zolt {

/// What a drag selects by.
enum class SelectionUnit { Character, Word, Line };

/// The selected range of text: an origin and where the pointer is, both widened to whole units. A value.
class Selection {
 public:
  bool empty() const { return range().empty(); }
  TextRange range() const {
    return {.begin = std::min(m_origin.begin, m_head.begin), .end = std::max(m_origin.end, m_head.end)};
  }
  SelectionUnit unit() const { return m_unit; }

  void clear() { *this = Selection(); }
  /// Selects `origin`: empty at a place, or a whole unit around it.
  void begin(SelectionUnit unit, TextRange origin) {
    m_unit = unit;
    m_origin = m_head = origin;
  }
  /// Moves the other end to `head`, a place or a whole unit.
  void extend(TextRange head) { m_head = head; }

 private:
  SelectionUnit m_unit = SelectionUnit::Character;
  TextRange m_origin;
  TextRange m_head;
};

}  // namespace zolt
