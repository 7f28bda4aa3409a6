#pragma once

#include <string>

#include "vt/Terminal.h"

namespace zolt::vt::test {

/// Takes a snapshot, and says how it differs from one made from scratch; empty if it does not.
std::string snapshotError(Terminal& terminal);

}  // namespace zolt::vt::test
