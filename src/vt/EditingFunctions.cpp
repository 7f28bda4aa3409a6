#include <optional>

#include "vt/ControlFunctions.h"

namespace zolt::vt {

namespace {

using State = TerminalState;
using Sequence = ControlSequence;

std::optional<Screen::Part> partOf(const Sequence& sequence) {
  switch (sequence.parameter(0, 0)) {
    case 0:
      return Screen::Part::ToEnd;
    case 1:
      return Screen::Part::ToBegin;
    case 2:
      return Screen::Part::All;
    default:
      return std::nullopt;
  }
}

// What ED and EL leave alone: cells protected by SPA, as ECMA-48 has it.
Protection keptByErasing(const State& state) {
  return state.screen.protection == Protection::Iso ? Protection::Iso : Protection::None;
}

// What the selective ones leave alone: cells protected by DECSCA.
Protection keptBySelecting(const State& state) {
  return state.screen.protection == Protection::Dec ? Protection::Dec : Protection::None;
}

void eraseInDisplay(State& state, const Sequence& sequence) {
  if (sequence.parameter(0, 0) == 3) return state.screen.eraseScrollback();
  if (const auto part = partOf(sequence)) state.screen.eraseInDisplay(*part, keptByErasing(state));
}

void eraseInLine(State& state, const Sequence& sequence) {
  if (const auto part = partOf(sequence)) state.screen.eraseInLine(*part, keptByErasing(state));
}

void eraseInDisplaySelectively(State& state, const Sequence& sequence) {
  if (const auto part = partOf(sequence)) state.screen.eraseInDisplay(*part, keptBySelecting(state));
}

void eraseInLineSelectively(State& state, const Sequence& sequence) {
  if (const auto part = partOf(sequence)) state.screen.eraseInLine(*part, keptBySelecting(state));
}

void setProtection(State& state, const Sequence& sequence) {
  const int kind = sequence.parameter(0, 0);
  if (kind > 2) return;
  state.screen.setProtected(kind == 1);
  if (kind == 1) state.screen.protection = Protection::Dec;
}

// One number scrolls; five are mouse highlighting of old, which nobody has.
void scrollDown(State& state, const Sequence& sequence) {
  if (sequence.parameterCount <= 1) state.screen.scrollDown(countOf(sequence));
}

constexpr ControlFunction kFunctions[] = {
    {0,
     "",
     'J',
     eraseInDisplay,
     {"CSI Ps J", "ED", "ECMA-48",
      "Erases from the cursor (0), up to it (1), the whole screen (2), what scrolled off (3)."}},
    {0,
     "",
     'K',
     eraseInLine,
     {"CSI Ps K", "EL", "ECMA-48", "Erases in the row from the cursor (0), up to it (1), all of it (2)."}},
    {'?',
     "",
     'J',
     eraseInDisplaySelectively,
     {"CSI ? Ps J", "DECSED", "VT220", "As ED, but what DECSCA protects stays."}},
    {'?', "", 'K', eraseInLineSelectively, {"CSI ? Ps K", "DECSEL", "VT220", "As EL, but what DECSCA protects stays."}},
    {0,
     "",
     'X',
     [](State& s, const Sequence& q) { s.screen.eraseCharacters(countOf(q)); },
     {"CSI Ps X", "ECH", "ECMA-48", "Erases characters from the cursor on."}},
    {0,
     "",
     '@',
     [](State& s, const Sequence& q) { s.screen.insertCharacters(countOf(q)); },
     {"CSI Ps @", "ICH", "ECMA-48", "Inserts blanks at the cursor."}},
    {0,
     "",
     'P',
     [](State& s, const Sequence& q) { s.screen.deleteCharacters(countOf(q)); },
     {"CSI Ps P", "DCH", "ECMA-48", "Deletes characters at the cursor."}},
    {0,
     "",
     'L',
     [](State& s, const Sequence& q) { s.screen.insertLines(countOf(q)); },
     {"CSI Ps L", "IL", "ECMA-48", "Inserts rows at the cursor's."}},
    {0,
     "",
     'M',
     [](State& s, const Sequence& q) { s.screen.deleteLines(countOf(q)); },
     {"CSI Ps M", "DL", "ECMA-48", "Deletes rows from the cursor's on."}},
    {0,
     "",
     'S',
     [](State& s, const Sequence& q) { s.screen.scrollUp(countOf(q)); },
     {"CSI Ps S", "SU", "ECMA-48", "Scrolls up within the margins."}},
    {0, "", 'T', scrollDown, {"CSI Ps T", "SD", "ECMA-48", "Scrolls down within the margins."}},
    {0, "", '^', scrollDown, {"CSI Ps ^", "SD ^", "ECMA-48", "As SD."}},
    {0,
     " ",
     '@',
     [](State& s, const Sequence& q) { s.screen.scrollLeft(countOf(q)); },
     {"CSI Ps SP @", "SL", "ECMA-48", "Moves what is within the margins to the left."}},
    {0,
     " ",
     'A',
     [](State& s, const Sequence& q) { s.screen.scrollRight(countOf(q)); },
     {"CSI Ps SP A", "SR", "ECMA-48", "Moves what is within the margins to the right."}},
    {0,
     "'",
     '}',
     [](State& s, const Sequence& q) { s.screen.insertColumns(countOf(q)); },
     {"CSI Ps ' }", "DECIC", "VT420", "Inserts columns at the cursor's."}},
    {0,
     "'",
     '~',
     [](State& s, const Sequence& q) { s.screen.deleteColumns(countOf(q)); },
     {"CSI Ps ' ~", "DECDC", "VT420", "Deletes columns from the cursor's on."}},
    {0,
     "",
     'b',
     [](State& s, const Sequence& q) { s.screen.repeat(countOf(q)); },
     {"CSI Ps b", "REP", "ECMA-48", "Prints the last character again."}},
    {0,
     "\"",
     'q',
     setProtection,
     {"CSI Ps \" q", "DECSCA", "VT220", "Protects what is printed from selective erasing."}},
};

}  // namespace

std::span<const ControlFunction> editingFunctions() {
  return kFunctions;
}

}  // namespace zolt::vt
