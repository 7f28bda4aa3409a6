#include "vt/functions/Esc.h"

#include <algorithm>
#include <array>
#include <string>

#include "vt/functions/Csi.h"

namespace zolt::vt {

namespace {

using State = TerminalState;
using Sequence = EscapeSequence;

template <void (Screen::*function)()>
void onScreen(State& state, const Sequence&) {
  (state.screen.*function)();
}

template <std::uint8_t set>
void lockingShift(State& state, const Sequence&) {
  state.screen.characterSets.inUse = set;
}

template <std::uint8_t set>
void singleShift(State& state, const Sequence&) {
  state.screen.characterSets.once = set;
}

template <std::size_t set>
void designate(State& state, const Sequence& sequence) {
  std::string designation(sequence.intermediates.substr(1));
  designation += sequence.final;
  if (const auto named = characterSet(designation)) state.screen.characterSets.sets[set] = *named;
}

template <bool isApplication>
void setKeypad(State& state, const Sequence&) {
  state.modes.applicationKeypad = isApplication;
}

void nextLine(State& state, const Sequence&) {
  state.screen.carriageReturn();
  state.screen.lineFeed();
}

void startProtecting(State& state, const Sequence&) {
  state.screen.protection = Protection::Iso;
  state.screen.setProtected(true);
}

void stopProtecting(State& state, const Sequence&) {
  state.screen.setProtected(false);
}

void identify(State& state, const Sequence&) {
  state.reply(primaryAttributes());
}

void resetHard(State& state, const Sequence&) {
  state.resetHard();
}

// clang-format off
constexpr EscFunction kFunctions[] = {
    {"",  '7', onScreen<&Screen::saveCursor>,       {"ESC 7",   "DECSC",   "VT100",   "Saves the cursor with its rendition, character sets and origin mode."}},
    {"",  '8', onScreen<&Screen::restoreCursor>,    {"ESC 8",   "DECRC",   "VT100",   "Restores what DECSC saved."}},
    {"",  '6', onScreen<&Screen::backIndex>,        {"ESC 6",   "DECBI",   "VT420",   "Moves the cursor left; at the left margin, scrolls right."}},
    {"",  '9', onScreen<&Screen::forwardIndex>,     {"ESC 9",   "DECFI",   "VT420",   "Moves the cursor right; at the right margin, scrolls left."}},
    {"",  'D', onScreen<&Screen::lineFeed>,         {"ESC D",   "IND",     "ECMA-48", "Moves the cursor down; at the bottom margin, scrolls up."}},
    {"",  'E', nextLine,                            {"ESC E",   "NEL",     "ECMA-48", "Moves the cursor to the start of the next row."}},
    {"",  'M', onScreen<&Screen::reverseLineFeed>,  {"ESC M",   "RI",      "ECMA-48", "Moves the cursor up; at the top margin, scrolls down."}},
    {"",  'H', onScreen<&Screen::setTabStop>,       {"ESC H",   "HTS",     "ECMA-48", "Sets a tab stop at the cursor."}},
    {"",  'N', singleShift<2>,                      {"ESC N",   "SS2",     "ECMA-35", "Takes the next character from G2."}},
    {"",  'O', singleShift<3>,                      {"ESC O",   "SS3",     "ECMA-35", "Takes the next character from G3."}},
    {"",  'n', lockingShift<2>,                     {"ESC n",   "LS2",     "ECMA-35", "Takes characters from G2."}},
    {"",  'o', lockingShift<3>,                     {"ESC o",   "LS3",     "ECMA-35", "Takes characters from G3."}},
    {"",  'V', startProtecting,                     {"ESC V",   "SPA",     "ECMA-48", "Protects printed characters from erasure."}},
    {"",  'W', stopProtecting,                      {"ESC W",   "EPA",     "ECMA-48", "Stops protecting printed characters."}},
    {"",  'Z', identify,                            {"ESC Z",   "DECID",   "VT100",   "Like DA1."}},
    {"",  'c', resetHard,                           {"ESC c",   "RIS",     "ECMA-48", "Resets the terminal. The scrollback is kept."}},
    {"",  '=', setKeypad<true>,                     {"ESC =",   "DECKPAM", "VT100",   "The keypad sends application sequences."}},
    {"",  '>', setKeypad<false>,                    {"ESC >",   "DECKPNM", "VT100",   "The keypad sends characters."}},
    {"#", '8', onScreen<&Screen::alignmentPattern>, {"ESC # 8", "DECALN",  "VT100",   "Fills the screen with E."}},
    {"(", 0,   designate<0>,                        {"ESC ( C", "SCS G0",  "ECMA-35", "Designates G0: ASCII, line drawing or a national set."}, true},
    {")", 0,   designate<1>,                        {"ESC ) C", "SCS G1",  "ECMA-35", "Designates G1."}, true},
    {"*", 0,   designate<2>,                        {"ESC * C", "SCS G2",  "ECMA-35", "Designates G2."}, true},
    {"+", 0,   designate<3>,                        {"ESC + C", "SCS G3",  "ECMA-35", "Designates G3."}, true},
};
// clang-format on

void bell(State& state) {
  state.events.bells = std::min<std::uint32_t>(state.events.bells + 1, UINT16_MAX);
}

void backspace(State& state) {
  state.screen.moveBack(1);
}

void tab(State& state) {
  state.screen.tab(1);
}

// LNM makes a line feed a new line.
void lineFeed(State& state) {
  state.screen.lineFeed();
  if (state.screen.modes.newLine) state.screen.carriageReturn();
}

void carriageReturn(State& state) {
  state.screen.carriageReturn();
}

template <std::uint8_t set>
void shift(State& state) {
  state.screen.characterSets.inUse = set;
}

// clang-format off
constexpr C0Control kControls[] = {
    {0x07, bell,           {"BEL", "BEL", "ECMA-48", "Rings the bell."}},
    {0x08, backspace,      {"BS",  "BS",  "ECMA-48", "Moves the cursor left."}},
    {0x09, tab,            {"HT",  "HT",  "ECMA-48", "Moves the cursor to the next tab stop."}},
    {0x0A, lineFeed,       {"LF",  "LF",  "ECMA-48", "Moves the cursor down; at the bottom margin, scrolls up."}},
    {0x0B, lineFeed,       {"VT",  "VT",  "ECMA-48", "Like LF."}},
    {0x0C, lineFeed,       {"FF",  "FF",  "ECMA-48", "Like LF."}},
    {0x0D, carriageReturn, {"CR",  "CR",  "ECMA-48", "Moves the cursor to the left margin."}},
    {0x0E, shift<1>,       {"SO",  "SO",  "ECMA-48", "Takes characters from G1."}},
    {0x0F, shift<0>,       {"SI",  "SI",  "ECMA-48", "Takes characters from G0."}},
};
// clang-format on

}  // namespace

std::span<const EscFunction> escFunctions() {
  return kFunctions;
}

std::span<const C0Control> c0Controls() {
  return kControls;
}

const EscFunction* findEsc(const EscapeSequence& sequence) {
  const auto* const found = std::ranges::find_if(kFunctions, [&](const EscFunction& function) {
    if (function.isDesignation) return sequence.intermediates.starts_with(function.intermediates);
    return function.final == sequence.final && function.intermediates == sequence.intermediates;
  });
  return found == std::end(kFunctions) ? nullptr : found;
}

const C0Control* findC0(char32_t character) {
  // Indexed, because every line ends in one or two of them.
  static const auto kByCharacter = [] {
    std::array<const C0Control*, 0x20> table{};
    for (const C0Control& each : kControls) {
      table[each.character] = &each;
    }
    return table;
  }();
  return character < kByCharacter.size() ? kByCharacter[character] : nullptr;
}

}  // namespace zolt::vt
