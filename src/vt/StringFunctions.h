#pragma once

#include <span>
#include <string>
#include <string_view>

#include "vt/ControlSequence.h"
#include "vt/Documented.h"
#include "vt/TerminalState.h"

namespace zolt::vt {

/// An operating system command (ECMA-48 8.3.89): a number, and what follows the semicolon.
struct Command {
  int number = 0;
  void (*run)(TerminalState&, std::string_view text) = nullptr;
  Documented documented;
};

/// A device control string (ECMA-48 8.3.27).
struct DeviceControl {
  std::string_view intermediates;
  char final = 0;
  void (*run)(TerminalState&, const ControlSequence& head, std::string_view text) = nullptr;
  Documented documented;
};

std::span<const Command> commands();
std::span<const DeviceControl> deviceControls();

/// Carries out an operating system command, whole as it came; nothing happens where it is not known.
void runCommand(TerminalState& state, std::string_view text);
/// The answer to a program that asked what is in a clipboard.
std::string clipboardReport(ClipboardTarget target, std::string_view text);
void runDeviceControl(TerminalState& state, const ControlSequence& head, std::string_view text);

}  // namespace zolt::vt
