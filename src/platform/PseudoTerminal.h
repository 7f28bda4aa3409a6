#pragma once

#include "base/Result.h"
#include "base/TerminalSize.h"
#include "platform/Descriptor.h"

namespace zolt {

struct PseudoTerminal {
  Descriptor master;
  Descriptor slave;
};

/// Opens a pair with openpty(3), with the system's own attributes and no window size. Neither end reaches a child.
Result<PseudoTerminal> openPseudoTerminal();

/// Tells the terminal its size; the kernel tells the programs (SIGWINCH). False when the descriptor is no terminal.
bool setWindowSize(int terminal, const TerminalSize& size);

}  // namespace zolt
