#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "vt/parser/Documented.h"
#include "vt/state/TerminalState.h"

namespace zolt::vt {

/// A row of the table of operating system commands (ECMA-48 8.3.89).
struct OscCommand {
  int number = 0;
  /// `text` is what follows the number and its semicolon.
  void (*run)(TerminalState&, std::string_view text) = nullptr;
  Documented documented;
};

std::span<const OscCommand> oscCommands();

/// Runs a command, given all of its text. Unknown commands do nothing.
void runOsc(TerminalState& state, std::string_view text);

/// The reply to an OSC 52 query.
std::string clipboardReport(ClipboardTarget target, std::string_view text);

}  // namespace zolt::vt
