#pragma once

#include <span>
#include <string_view>

#include "vt/parser/ControlSequence.h"
#include "vt/parser/Documented.h"
#include "vt/state/TerminalState.h"

namespace zolt::vt {

/// A row of the table of device control strings (ECMA-48 8.3.27).
struct DcsFunction {
  std::string_view intermediates;
  char final = 0;
  void (*run)(TerminalState&, std::string_view text) = nullptr;
  Documented documented;
};

std::span<const DcsFunction> dcsFunctions();

/// Runs a device control string. Unknown ones do nothing.
void runDcs(TerminalState& state, const ControlSequence& head, std::string_view text);

}  // namespace zolt::vt
