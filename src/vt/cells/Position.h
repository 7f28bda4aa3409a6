#pragma once

namespace zolt::vt {

/// A cell of the screen by row and column, both from 0.
struct Position {
  int row = 0;
  int column = 0;

  friend bool operator==(const Position&, const Position&) = default;
};

}  // namespace zolt::vt
