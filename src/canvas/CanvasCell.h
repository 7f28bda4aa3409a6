#pragma once

#include <compare>
#include <cstdint>

namespace zolt {

/// A row of the wrapped text, from 0 at the top of the text.
struct CanvasRow {
  std::int64_t value = 0;

  constexpr CanvasRow() = default;
  constexpr explicit CanvasRow(std::int64_t row) : value(row) {}

  friend constexpr auto operator<=>(const CanvasRow&, const CanvasRow&) = default;
  friend constexpr CanvasRow operator+(CanvasRow a, std::int64_t rows) { return CanvasRow(a.value + rows); }
  friend constexpr std::int64_t operator-(CanvasRow a, CanvasRow b) { return a.value - b.value; }
  constexpr CanvasRow& operator++() { return *this = *this + 1; }
};

/// A column of a row, from 0 at the left.
struct CanvasColumn {
  int value = 0;

  constexpr CanvasColumn() = default;
  constexpr explicit CanvasColumn(int column) : value(column) {}

  friend constexpr auto operator<=>(const CanvasColumn&, const CanvasColumn&) = default;
  friend constexpr CanvasColumn operator+(CanvasColumn a, int columns) { return CanvasColumn(a.value + columns); }
  friend constexpr int operator-(CanvasColumn a, CanvasColumn b) { return a.value - b.value; }
};

/// A range of columns; `end` is not included.
struct ColumnRange {
  CanvasColumn begin;
  CanvasColumn end;

  constexpr bool empty() const { return begin >= end; }
  friend constexpr bool operator==(const ColumnRange&, const ColumnRange&) = default;
};

}  // namespace zolt
