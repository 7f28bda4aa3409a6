#pragma once

#include "vt/cells/Position.h"

namespace zolt::vt {

/// The rows [begin, end) of the screen, from 0; `end` is not included.
struct RowRange {
  int begin = 0;
  int end = 0;

  int size() const { return end - begin; }
  int last() const { return end - 1; }
  bool isEmpty() const { return begin >= end; }
  bool contains(Position position) const { return position.row >= begin && position.row < end; }

  friend bool operator==(const RowRange&, const RowRange&) = default;
};

/// The columns [begin, end) of the screen, from 0; `end` is not included.
struct ColumnRange {
  int begin = 0;
  int end = 0;

  int size() const { return end - begin; }
  int last() const { return end - 1; }
  bool isEmpty() const { return begin >= end; }
  bool contains(Position position) const { return position.column >= begin && position.column < end; }

  friend bool operator==(const ColumnRange&, const ColumnRange&) = default;
};

/// A part of the screen.
struct Rectangle {
  RowRange rows;
  ColumnRange columns;

  bool isEmpty() const { return rows.isEmpty() || columns.isEmpty(); }
  bool contains(Position position) const { return rows.contains(position) && columns.contains(position); }

  friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

}  // namespace zolt::vt
