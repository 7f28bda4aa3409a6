#include "vt/ControlFunctions.h"

namespace zolt::vt {

namespace {

using State = TerminalState;
using Sequence = ControlSequence;

// A position counts from 1; 0 is 1.
int placeOf(const Sequence& sequence, std::size_t index = 0) {
  return countOf(sequence, index) - 1;
}

void setVerticalMargins(State& state, const Sequence& sequence) {
  const int bottom = sequence.parameter(1, 0);
  state.screen.setVerticalMargins(placeOf(sequence), bottom == 0 ? state.screen.rows() : bottom);
}

void setHorizontalMarginsOrSave(State& state, const Sequence& sequence) {
  if (!state.screen.modes.leftRightMargins) {
    if (sequence.parameterCount == 0) state.screen.saveCursor();
    return;
  }
  const int right = sequence.parameter(1, 0);
  state.screen.setHorizontalMargins(placeOf(sequence), right == 0 ? state.screen.columns() : right);
}

void clearTabs(State& state, const Sequence& sequence) {
  switch (sequence.parameter(0, 0)) {
    case 0:
      state.screen.clearTabStop();
      break;
    case 3:
      state.screen.clearTabStops();
      break;
    default:
      break;
  }
}

constexpr ControlFunction kFunctions[] = {
    {0,
     "",
     'A',
     [](State& s, const Sequence& q) { s.screen.moveUp(countOf(q)); },
     {"CSI Ps A", "CUU", "ECMA-48", "Moves the cursor up, to the top margin at most."}},
    {0,
     "",
     'B',
     [](State& s, const Sequence& q) { s.screen.moveDown(countOf(q)); },
     {"CSI Ps B", "CUD", "ECMA-48", "Moves the cursor down, to the bottom margin at most."}},
    {0,
     "",
     'C',
     [](State& s, const Sequence& q) { s.screen.moveForward(countOf(q)); },
     {"CSI Ps C", "CUF", "ECMA-48", "Moves the cursor right, to the right margin at most."}},
    {0,
     "",
     'D',
     [](State& s, const Sequence& q) { s.screen.moveBack(countOf(q)); },
     {"CSI Ps D", "CUB", "ECMA-48", "Moves the cursor left, to the left margin at most."}},
    {0,
     "",
     'E',
     [](State& s, const Sequence& q) {
       s.screen.moveDown(countOf(q));
       s.screen.carriageReturn();
     },
     {"CSI Ps E", "CNL", "ECMA-48", "Moves the cursor to the beginning of a row below."}},
    {0,
     "",
     'F',
     [](State& s, const Sequence& q) {
       s.screen.moveUp(countOf(q));
       s.screen.carriageReturn();
     },
     {"CSI Ps F", "CPL", "ECMA-48", "Moves the cursor to the beginning of a row above."}},
    {0,
     "",
     'G',
     [](State& s, const Sequence& q) { s.screen.moveToColumn(placeOf(q)); },
     {"CSI Ps G", "CHA", "ECMA-48", "Moves the cursor to a column."}},
    {0,
     "",
     'H',
     [](State& s, const Sequence& q) { s.screen.moveTo(placeOf(q), placeOf(q, 1)); },
     {"CSI Ps ; Ps H", "CUP", "ECMA-48", "Moves the cursor to a row and a column."}},
    {0,
     "",
     'I',
     [](State& s, const Sequence& q) { s.screen.tab(countOf(q)); },
     {"CSI Ps I", "CHT", "ECMA-48", "Moves the cursor to a tab stop to the right."}},
    {0,
     "",
     'Z',
     [](State& s, const Sequence& q) { s.screen.backTab(countOf(q)); },
     {"CSI Ps Z", "CBT", "ECMA-48", "Moves the cursor to a tab stop to the left."}},
    {0,
     "",
     '`',
     [](State& s, const Sequence& q) { s.screen.moveToColumn(placeOf(q)); },
     {"CSI Ps `", "HPA", "ECMA-48", "Moves the cursor to a column."}},
    {0,
     "",
     'a',
     [](State& s, const Sequence& q) { s.screen.moveColumns(countOf(q)); },
     {"CSI Ps a", "HPR", "ECMA-48", "Moves the cursor right."}},
    {0,
     "",
     'd',
     [](State& s, const Sequence& q) { s.screen.moveToRow(placeOf(q)); },
     {"CSI Ps d", "VPA", "ECMA-48", "Moves the cursor to a row."}},
    {0,
     "",
     'e',
     [](State& s, const Sequence& q) { s.screen.moveRows(countOf(q)); },
     {"CSI Ps e", "VPR", "ECMA-48", "Moves the cursor down."}},
    {0,
     "",
     'f',
     [](State& s, const Sequence& q) { s.screen.moveTo(placeOf(q), placeOf(q, 1)); },
     {"CSI Ps ; Ps f", "HVP", "ECMA-48", "Moves the cursor to a row and a column."}},
    {0, "", 'g', clearTabs, {"CSI Ps g", "TBC", "ECMA-48", "Clears the tab stop here (0) or all of them (3)."}},
    {'?',
     "",
     'W',
     [](State& s, const Sequence& q) {
       if (q.parameter(0, 0) == 5) s.screen.resetTabStops();
     },
     {"CSI ? 5 W", "DECST8C", "VT510", "Sets a tab stop at every eighth column."}},
    {0, "", 'r', setVerticalMargins, {"CSI Ps ; Ps r", "DECSTBM", "VT100", "Sets the top and the bottom margin."}},
    {0,
     "",
     's',
     setHorizontalMarginsOrSave,
     {"CSI Ps ; Ps s", "DECSLRM", "VT420",
      "Sets the left and the right margin where mode 69 is set; else, without a number, saves the cursor (SCOSC)."}},
    {0,
     "",
     'u',
     [](State& s, const Sequence&) { s.screen.restoreCursor(); },
     {"CSI u", "SCORC", "SCO", "Restores the cursor."}},
};

}  // namespace

std::span<const ControlFunction> cursorFunctions() {
  return kFunctions;
}

}  // namespace zolt::vt
