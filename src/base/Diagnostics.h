#pragma once

#include <string_view>

namespace zolt {

/// Prints `line` and a newline on standard output and flushes, so that a reader on a pipe sees it at once.
///
/// Failures to write (a closed standard output) are ignored: diagnostics never disturb a terminal.
void printLine(std::string_view line);

}  // namespace zolt
