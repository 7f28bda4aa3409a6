#include "vt/functions/Csi.h"

namespace zolt::vt {

namespace {

using State = TerminalState;
using Sequence = ControlSequence;

// Positions count from 1, and 0 means 1.
int positionOf(const Sequence& sequence, std::size_t index = 0) {
  return countOf(sequence, index) - 1;
}

void nextLines(State& state, const Sequence& sequence) {
  state.screen.moveDown(countOf(sequence));
  state.screen.carriageReturn();
}

void previousLines(State& state, const Sequence& sequence) {
  state.screen.moveUp(countOf(sequence));
  state.screen.carriageReturn();
}

void toRow(State& state, const Sequence& sequence) {
  state.screen.moveToRow(positionOf(sequence));
}

void toColumn(State& state, const Sequence& sequence) {
  state.screen.moveToColumn(positionOf(sequence));
}

void toPosition(State& state, const Sequence& sequence) {
  state.screen.moveTo({.row = positionOf(sequence), .column = positionOf(sequence, 1)});
}

void setVerticalMargins(State& state, const Sequence& sequence) {
  const int bottom = sequence.parameter(1, 0);
  state.screen.setVerticalMargins({.begin = positionOf(sequence), .end = bottom == 0 ? state.screen.rows() : bottom});
}

void setHorizontalMarginsOrSave(State& state, const Sequence& sequence) {
  if (!state.screen.modes.leftRightMargins) {
    if (sequence.parameterCount == 0) state.screen.saveCursor();
    return;
  }
  const int right = sequence.parameter(1, 0);
  state.screen.setHorizontalMargins(
      {.begin = positionOf(sequence), .end = right == 0 ? state.screen.columns() : right});
}

void clearTabs(State& state, const Sequence& sequence) {
  const int which = sequence.parameter(0, 0);
  if (which == 0) state.screen.clearTabStop();
  if (which == 3) state.screen.clearTabStops();
}

void resetTabs(State& state, const Sequence& sequence) {
  if (sequence.parameter(0, 0) == 5) state.screen.resetTabStops();
}

void restoreCursor(State& state, const Sequence&) {
  state.screen.restoreCursor();
}

// clang-format off
constexpr CsiFunction kFunctions[] = {
    {0,   "", 'A', withCount<&Screen::moveUp>,      {"CSI Ps A",      "CUU",     "ECMA-48", "Moves the cursor up, stopping at the top margin."}},
    {0,   "", 'B', withCount<&Screen::moveDown>,    {"CSI Ps B",      "CUD",     "ECMA-48", "Moves the cursor down, stopping at the bottom margin."}},
    {0,   "", 'C', withCount<&Screen::moveForward>, {"CSI Ps C",      "CUF",     "ECMA-48", "Moves the cursor right, stopping at the right margin."}},
    {0,   "", 'D', withCount<&Screen::moveBack>,    {"CSI Ps D",      "CUB",     "ECMA-48", "Moves the cursor left, stopping at the left margin."}},
    {0,   "", 'E', nextLines,                       {"CSI Ps E",      "CNL",     "ECMA-48", "Moves the cursor down, to the start of the row."}},
    {0,   "", 'F', previousLines,                   {"CSI Ps F",      "CPL",     "ECMA-48", "Moves the cursor up, to the start of the row."}},
    {0,   "", 'G', toColumn,                        {"CSI Ps G",      "CHA",     "ECMA-48", "Moves the cursor to a column."}},
    {0,   "", 'H', toPosition,                      {"CSI Ps ; Ps H", "CUP",     "ECMA-48", "Moves the cursor to a row and column."}},
    {0,   "", 'I', withCount<&Screen::tab>,         {"CSI Ps I",      "CHT",     "ECMA-48", "Moves the cursor forward by tab stops."}},
    {0,   "", 'Z', withCount<&Screen::backTab>,     {"CSI Ps Z",      "CBT",     "ECMA-48", "Moves the cursor back by tab stops."}},
    {0,   "", '`', toColumn,                        {"CSI Ps `",      "HPA",     "ECMA-48", "Moves the cursor to a column."}},
    {0,   "", 'a', withCount<&Screen::moveColumns>, {"CSI Ps a",      "HPR",     "ECMA-48", "Moves the cursor right."}},
    {0,   "", 'd', toRow,                           {"CSI Ps d",      "VPA",     "ECMA-48", "Moves the cursor to a row."}},
    {0,   "", 'e', withCount<&Screen::moveRows>,    {"CSI Ps e",      "VPR",     "ECMA-48", "Moves the cursor down."}},
    {0,   "", 'f', toPosition,                      {"CSI Ps ; Ps f", "HVP",     "ECMA-48", "Moves the cursor to a row and column."}},
    {0,   "", 'g', clearTabs,                       {"CSI Ps g",      "TBC",     "ECMA-48", "Clears the tab stop at the cursor (0) or all tab stops (3)."}},
    {'?', "", 'W', resetTabs,                       {"CSI ? 5 W",     "DECST8C", "VT510",   "Sets a tab stop every 8 columns."}},
    {0,   "", 'r', setVerticalMargins,              {"CSI Ps ; Ps r", "DECSTBM", "VT100",   "Sets the top and bottom margins."}},
    {0,   "", 's', setHorizontalMarginsOrSave,      {"CSI Ps ; Ps s", "DECSLRM", "VT420",   "Sets the left and right margins if mode 69 is set; otherwise, without parameters, saves the cursor (SCOSC)."}},
    {0,   "", 'u', restoreCursor,                   {"CSI u",         "SCORC",   "SCO",     "Restores the cursor."}},
};
// clang-format on

}  // namespace

std::span<const CsiFunction> csiCursor() {
  return kFunctions;
}

}  // namespace zolt::vt
