#pragma once

#include <string>

#include "vt/Terminal.h"

namespace zolt::vt::test {

/// The complete state of a terminal except its replies, for comparison with another's.
std::string everythingOf(const Terminal& terminal);

/// The logical lines of the scrollback and the primary screen, however they are wrapped.
std::string linesOf(const Screen& screen);

/// The first invariant that a screen violates, or empty. Invariants hold for any input.
std::string brokenRule(const Screen& screen);

}  // namespace zolt::vt::test
