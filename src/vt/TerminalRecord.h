#pragma once

#include <string>
#include <vector>

#include "history/BlockSequence.h"
#include "vt/history/ScrollbackView.h"

namespace zolt::vt {

/// A terminal at one moment, to be stored. Any thread.
struct TerminalRecord {
  std::string state;       ///< Terminal::saved()
  ScrollbackView history;  ///< the scrollback at the same moment
};

/// A terminal that was stored.
struct StoredTerminal {
  std::string state;
  std::vector<StoredBlock> history;
};

}  // namespace zolt::vt
