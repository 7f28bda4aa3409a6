#pragma once

#include <string_view>

namespace zolt {

/// Prints `line` and a newline on standard output, at once and without ever waiting for whoever reads it.
///
/// What the stream has no room for now is dropped, as are failures to write: diagnostics never disturb a terminal. Any
/// thread.
void printLine(std::string_view line);

/// The same on standard error.
void printErrorLine(std::string_view line);

}  // namespace zolt
