#pragma once

#include <array>
#include <span>
#include <string_view>

#include "vt/parser/ControlSequence.h"
#include "vt/parser/Documented.h"
#include "vt/state/TerminalState.h"

namespace zolt::vt {

/// A row of the CSI tables: what a control sequence with this prefix, these intermediates and this final does.
struct CsiFunction {
  char prefix = 0;
  std::string_view intermediates;
  char final = 0;
  void (*run)(TerminalState&, const ControlSequence&) = nullptr;
  Documented documented;
};

std::span<const CsiFunction> csiCursor();
std::span<const CsiFunction> csiEditing();
std::span<const CsiFunction> csiRectangles();
std::span<const CsiFunction> csiReports();
std::span<const CsiFunction> csiSettings();
/// The five tables above, in that order.
std::array<std::span<const CsiFunction>, 5> csiTables();

/// The row for a sequence, or null.
const CsiFunction* findCsi(const ControlSequence& sequence);

/// SGR. Named apart from its row because it makes up half of all sequences, and is run without a look-up.
void selectRendition(TerminalState& state, const ControlSequence& sequence);

/// The answer to DA1.
std::string_view primaryAttributes();

/// Parameter `index` as a count: 1 if it is omitted or 0.
inline int countOf(const ControlSequence& sequence, std::size_t index = 0) {
  const int count = sequence.parameter(index, 1);
  return count == 0 ? 1 : count;
}

/// Runs a function of the screen with the first parameter as its count.
template <void (Screen::*function)(int)>
void withCount(TerminalState& state, const ControlSequence& sequence) {
  (state.screen.*function)(countOf(sequence));
}

/// Four parameters, from `first` on, as a rectangle: top, left, bottom, right, counted from 1 and relative to the
/// margins in origin mode. Clipped to the screen; empty if its edges cross.
Rectangle rectangleOf(const TerminalState& state, const ControlSequence& sequence, std::size_t first);

}  // namespace zolt::vt
