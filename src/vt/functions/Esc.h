#pragma once

#include <span>
#include <string_view>

#include "vt/parser/ControlSequence.h"
#include "vt/parser/Documented.h"
#include "vt/state/TerminalState.h"

namespace zolt::vt {

/// A row of the table of escape sequences.
struct EscFunction {
  std::string_view intermediates;  ///< all of them; only the first if `isDesignation`
  char final = 0;                  ///< any if `isDesignation`
  void (*run)(TerminalState&, const EscapeSequence&) = nullptr;
  Documented documented;
  bool isDesignation = false;  ///< SCS: the rest of the sequence names a character set
};

/// A row of the table of C0 controls. C1 controls are run as their two-byte escape sequences.
struct C0Control {
  char32_t character = 0;
  void (*run)(TerminalState&) = nullptr;
  Documented documented;
};

std::span<const EscFunction> escFunctions();
std::span<const C0Control> c0Controls();

/// The row for a sequence or a character, or null.
const EscFunction* findEsc(const EscapeSequence& sequence);
const C0Control* findC0(char32_t character);

}  // namespace zolt::vt
