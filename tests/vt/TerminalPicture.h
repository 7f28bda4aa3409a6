#pragma once

#include <string>

#include "vt/Terminal.h"

namespace zolt::vt::test {

/// Everything that can be told of a terminal but what it has answered, to be compared with that of another.
std::string everythingOf(const Terminal& terminal);

/// The text of the scrollback and the primary screen, a line at a line end: how rows are wrapped makes no difference.
std::string linesOf(const Screen& screen);

/// The first rule that a screen breaks, which holds whatever was fed; empty where it keeps all of them.
std::string brokenRule(const Screen& screen);

}  // namespace zolt::vt::test
