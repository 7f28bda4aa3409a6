#pragma once

#include <span>

#include "vt/parser/Documented.h"
#include "vt/state/TerminalState.h"

namespace zolt::vt {

/// A mode: ANSI (SM, RM) or DEC private (DECSET, DECRST).
struct Mode {
  int number = 0;
  bool isPrivate = true;
  bool (*isSet)(const TerminalState&) = nullptr;
  /// Null for a mode that is permanently set or reset.
  void (*set)(TerminalState&, bool value) = nullptr;
  Documented documented;
};

std::span<const Mode> modeTable();
/// The mode with this number, or null.
const Mode* findMode(bool isPrivate, int number);

/// The reply to DECRQM: 0 unknown, 1 set, 2 reset, 3 permanently set, 4 permanently reset.
int modeStatus(const TerminalState& state, bool isPrivate, int number);

void endSynchronizedUpdate(TerminalState& state);
/// Reports the size, if mode 2048 is set.
void reportSize(TerminalState& state);
/// Reports the colour scheme (DSR 996, mode 2031).
void reportColorScheme(TerminalState& state);

}  // namespace zolt::vt
