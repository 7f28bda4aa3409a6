#pragma once

#include <span>

#include "vt/Documented.h"
#include "vt/TerminalState.h"

namespace zolt::vt {

/// A mode of SM, RM (ANSI) or DECSET, DECRST (DEC private).
struct Mode {
  int number = 0;
  bool isPrivate = true;
  bool (*isSet)(const TerminalState&) = nullptr;
  /// Nothing where the mode is what it is for good.
  void (*set)(TerminalState&, bool value) = nullptr;
  Documented documented;
};

/// All modes.
std::span<const Mode> modeTable();
/// The mode with a number; null where there is none.
const Mode* findMode(bool isPrivate, int number);

/// What DECRQM answers: 0 not known, 1 set, 2 reset, 3 set for good, 4 reset for good.
int modeStatus(const TerminalState& state, bool isPrivate, int number);

/// Ends a synchronized update.
void endSynchronizedUpdate(TerminalState& state);
/// Tells a program the size, where it asked for that (mode 2048).
void reportSize(TerminalState& state);
/// Tells a program the colour scheme (DSR 996, mode 2031).
void reportColorScheme(TerminalState& state);

}  // namespace zolt::vt
