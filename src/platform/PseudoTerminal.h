#pragma once

#include "base/Result.h"
#include "base/TerminalSize.h"
#include "platform/Descriptor.h"

namespace zolt {

struct PseudoTerminal {
  Descriptor master;
  Descriptor slave;
};

/// Opens a pair with openpty(3), with the system's own attributes and no window size. Neither end is inherited by
/// children.
Result<PseudoTerminal> openPseudoTerminal();

/// Sets the terminal's window size; the kernel then sends SIGWINCH. False if the descriptor is not a terminal.
bool setWindowSize(int terminal, const TerminalSize& size);

}  // namespace zolt
