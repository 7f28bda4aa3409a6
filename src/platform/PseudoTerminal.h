#pragma once

#include "base/Result.h"
#include "platform/Descriptor.h"

namespace zolt {

struct PseudoTerminal {
  Descriptor master;
  Descriptor slave;
};

/// A size in characters and in pixels; pixels are 0 where unknown.
struct WindowSize {
  int rows = 0;
  int cols = 0;
  int pixelWidth = 0;
  int pixelHeight = 0;

  friend bool operator==(const WindowSize&, const WindowSize&) = default;
};

/// Opens a pair with openpty(3), with the system's own attributes and no window size. Neither end reaches a child.
Result<PseudoTerminal> openPseudoTerminal();

/// Tells the terminal its size; the kernel tells the programs (SIGWINCH). False when the descriptor is no terminal.
bool setWindowSize(int terminal, const WindowSize& size);

}  // namespace zolt
