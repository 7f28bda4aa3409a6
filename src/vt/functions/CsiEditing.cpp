#include <optional>

#include "vt/functions/Csi.h"

namespace zolt::vt {

namespace {

using State = TerminalState;
using Sequence = ControlSequence;

std::optional<Screen::Part> partOf(const Sequence& sequence) {
  constexpr Screen::Part kParts[] = {Screen::Part::ToEnd, Screen::Part::ToBegin, Screen::Part::All};
  const int which = sequence.parameter(0, 0);
  return which <= 2 ? std::optional(kParts[which]) : std::nullopt;
}

// ED and EL respect the protection of SPA, as in ECMA-48.
Protection keptByErasing(const State& state) {
  return state.screen.protection == Protection::Iso ? Protection::Iso : Protection::None;
}

// DECSED and DECSEL respect the protection of DECSCA.
Protection keptBySelectiveErasing(const State& state) {
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
  if (const auto part = partOf(sequence)) state.screen.eraseInDisplay(*part, keptBySelectiveErasing(state));
}

void eraseInLineSelectively(State& state, const Sequence& sequence) {
  if (const auto part = partOf(sequence)) state.screen.eraseInLine(*part, keptBySelectiveErasing(state));
}

void setProtection(State& state, const Sequence& sequence) {
  const int kind = sequence.parameter(0, 0);
  if (kind > 2) return;
  state.screen.setProtected(kind == 1);
  if (kind == 1) state.screen.protection = Protection::Dec;
}

// With five parameters it is xterm's highlight mouse tracking, which is not supported.
void scrollDown(State& state, const Sequence& sequence) {
  if (sequence.parameterCount <= 1) state.screen.scrollDown(countOf(sequence));
}

// clang-format off
constexpr CsiFunction kFunctions[] = {
    {0,   "",   'J', eraseInDisplay,                       {"CSI Ps J",    "ED",     "ECMA-48", "Erases from the cursor (0), up to the cursor (1), the screen (2), or the scrollback (3)."}},
    {0,   "",   'K', eraseInLine,                          {"CSI Ps K",    "EL",     "ECMA-48", "Erases the row from the cursor (0), up to the cursor (1), or all of it (2)."}},
    {'?', "",   'J', eraseInDisplaySelectively,            {"CSI ? Ps J",  "DECSED", "VT220",   "Like ED, but leaves cells protected by DECSCA."}},
    {'?', "",   'K', eraseInLineSelectively,               {"CSI ? Ps K",  "DECSEL", "VT220",   "Like EL, but leaves cells protected by DECSCA."}},
    {0,   "",   'X', withCount<&Screen::eraseCharacters>,  {"CSI Ps X",    "ECH",    "ECMA-48", "Erases characters, starting at the cursor."}},
    {0,   "",   '@', withCount<&Screen::insertCharacters>, {"CSI Ps @",    "ICH",    "ECMA-48", "Inserts blanks at the cursor."}},
    {0,   "",   'P', withCount<&Screen::deleteCharacters>, {"CSI Ps P",    "DCH",    "ECMA-48", "Deletes characters, starting at the cursor."}},
    {0,   "",   'L', withCount<&Screen::insertLines>,      {"CSI Ps L",    "IL",     "ECMA-48", "Inserts rows at the cursor."}},
    {0,   "",   'M', withCount<&Screen::deleteLines>,      {"CSI Ps M",    "DL",     "ECMA-48", "Deletes rows, starting at the cursor."}},
    {0,   "",   'S', withCount<&Screen::scrollUp>,         {"CSI Ps S",    "SU",     "ECMA-48", "Scrolls up within the margins."}},
    {0,   "",   'T', scrollDown,                           {"CSI Ps T",    "SD",     "ECMA-48", "Scrolls down within the margins."}},
    {0,   "",   '^', scrollDown,                           {"CSI Ps ^",    "SD ^",   "ECMA-48", "Like SD."}},
    {0,   " ",  '@', withCount<&Screen::scrollLeft>,       {"CSI Ps SP @", "SL",     "ECMA-48", "Scrolls left within the margins."}},
    {0,   " ",  'A', withCount<&Screen::scrollRight>,      {"CSI Ps SP A", "SR",     "ECMA-48", "Scrolls right within the margins."}},
    {0,   "'",  '}', withCount<&Screen::insertColumns>,    {"CSI Ps ' }",  "DECIC",  "VT420",   "Inserts columns at the cursor."}},
    {0,   "'",  '~', withCount<&Screen::deleteColumns>,    {"CSI Ps ' ~",  "DECDC",  "VT420",   "Deletes columns, starting at the cursor."}},
    {0,   "",   'b', withCount<&Screen::repeat>,           {"CSI Ps b",    "REP",    "ECMA-48", "Repeats the last printed character."}},
    {0,   "\"", 'q', setProtection,                        {"CSI Ps \" q", "DECSCA", "VT220",   "Protects printed characters from selective erasure (1), or stops doing so (0, 2)."}},
};
// clang-format on

}  // namespace

std::span<const CsiFunction> csiEditing() {
  return kFunctions;
}

}  // namespace zolt::vt
