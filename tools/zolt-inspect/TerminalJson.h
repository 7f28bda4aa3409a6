#pragma once

#include <ostream>
#include <string_view>

#include "vt/Terminal.h"

namespace zolt::inspect {

/// Prints a terminal as one line of JSON, with everything that `full` asks for. `replies` are all that it has answered.
void printTerminal(const vt::Terminal& terminal, std::string_view replies, bool full, std::ostream& out);

}  // namespace zolt::inspect
