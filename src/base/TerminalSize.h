#pragma once

namespace zolt {

/// The size of a terminal, as the kernel's `winsize` has it: its grid in character cells, and the area of the text in
/// device pixels.
///
/// Rows and columns are 0 for a terminal whose size is not known yet; pixels are 0 where unknown. The area may be
/// larger than the cells that fit in it. Two sizes are equal when all four numbers are.
struct TerminalSize {
  int rows = 0;
  int columns = 0;
  int pixelWidth = 0;
  int pixelHeight = 0;

  friend bool operator==(const TerminalSize&, const TerminalSize&) = default;
};

}  // namespace zolt
