#pragma once

#include <ostream>
#include <string_view>

#include "vt/Terminal.h"

namespace zolt::inspect {

/// Prints a terminal as one line of JSON; `full` adds all details. `replies` are all of its replies so far.
void printTerminal(const vt::Terminal& terminal, std::string_view replies, bool full, std::ostream& out);

}  // namespace zolt::inspect
