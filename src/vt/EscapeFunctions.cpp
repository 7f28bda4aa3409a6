#include <algorithm>
#include <string>

#include "vt/ControlFunctions.h"

namespace zolt::vt {

namespace {

using State = TerminalState;

void lineFeedByMode(State& state) {
  state.screen.lineFeed();
  if (state.screen.modes.newLine) state.screen.carriageReturn();
}

template <std::uint8_t set>
void lockShift(State& state, const EscapeSequence&) {
  state.screen.characterSets.inUse = set;
}

template <std::uint8_t set>
void singleShift(State& state, const EscapeSequence&) {
  state.screen.characterSets.once = set;
}

template <std::size_t set>
void designate(State& state, const EscapeSequence& sequence) {
  std::string designation(sequence.intermediates.substr(1));
  designation += sequence.final;
  if (const auto named = characterSet(designation)) state.screen.characterSets.sets[set] = *named;
}

constexpr EscapeFunction kFunctions[] = {
    {"",
     '7',
     [](State& s, const EscapeSequence&) { s.screen.saveCursor(); },
     {"ESC 7", "DECSC", "VT100", "Saves the cursor, its rendition, character sets and origin mode."}},
    {"",
     '8',
     [](State& s, const EscapeSequence&) { s.screen.restoreCursor(); },
     {"ESC 8", "DECRC", "VT100", "Restores what DECSC saved."}},
    {"",
     '6',
     [](State& s, const EscapeSequence&) { s.screen.backIndex(); },
     {"ESC 6", "DECBI", "VT420", "Moves the cursor left; at the left margin, the screen to the right."}},
    {"",
     '9',
     [](State& s, const EscapeSequence&) { s.screen.forwardIndex(); },
     {"ESC 9", "DECFI", "VT420", "Moves the cursor right; at the right margin, the screen to the left."}},
    {"",
     'D',
     [](State& s, const EscapeSequence&) { s.screen.lineFeed(); },
     {"ESC D", "IND", "ECMA-48", "Moves the cursor down; at the bottom margin, scrolls."}},
    {"",
     'E',
     [](State& s, const EscapeSequence&) {
       s.screen.carriageReturn();
       s.screen.lineFeed();
     },
     {"ESC E", "NEL", "ECMA-48", "Moves the cursor to the beginning of the next row."}},
    {"",
     'M',
     [](State& s, const EscapeSequence&) { s.screen.reverseLineFeed(); },
     {"ESC M", "RI", "ECMA-48", "Moves the cursor up; at the top margin, scrolls."}},
    {"",
     'H',
     [](State& s, const EscapeSequence&) { s.screen.setTabStop(); },
     {"ESC H", "HTS", "ECMA-48", "Sets a tab stop here."}},
    {"", 'N', singleShift<2>, {"ESC N", "SS2", "ECMA-35", "The next character is of G2."}},
    {"", 'O', singleShift<3>, {"ESC O", "SS3", "ECMA-35", "The next character is of G3."}},
    {"", 'n', lockShift<2>, {"ESC n", "LS2", "ECMA-35", "Characters are of G2."}},
    {"", 'o', lockShift<3>, {"ESC o", "LS3", "ECMA-35", "Characters are of G3."}},
    {"",
     'V',
     [](State& s, const EscapeSequence&) {
       s.screen.protection = Protection::Iso;
       s.screen.setProtected(true);
     },
     {"ESC V", "SPA", "ECMA-48", "Protects what is printed from erasing."}},
    {"",
     'W',
     [](State& s, const EscapeSequence&) { s.screen.setProtected(false); },
     {"ESC W", "EPA", "ECMA-48", "Protects what is printed no more."}},
    {"",
     'Z',
     [](State& s, const EscapeSequence&) { s.reply(primaryAttributes()); },
     {"ESC Z", "DECID", "VT100", "As DA1."}},
    {"",
     'c',
     [](State& s, const EscapeSequence&) { s.resetHard(); },
     {"ESC c", "RIS", "ECMA-48", "Resets the terminal. What scrolled off stays."}},
    {"",
     '=',
     [](State& s, const EscapeSequence&) { s.modes.applicationKeypad = true; },
     {"ESC =", "DECKPAM", "VT100", "The keypad sends application sequences."}},
    {"",
     '>',
     [](State& s, const EscapeSequence&) { s.modes.applicationKeypad = false; },
     {"ESC >", "DECKPNM", "VT100", "The keypad sends characters."}},
    {"#",
     '8',
     [](State& s, const EscapeSequence&) { s.screen.alignmentPattern(); },
     {"ESC # 8", "DECALN", "VT100", "Fills the screen with E."}},
    {"(", 0, designate<0>, {"ESC ( C", "SCS G0", "ECMA-35", "Says what G0 is: ASCII, lines, a national set."}, true},
    {")", 0, designate<1>, {"ESC ) C", "SCS G1", "ECMA-35", "Says what G1 is."}, true},
    {"*", 0, designate<2>, {"ESC * C", "SCS G2", "ECMA-35", "Says what G2 is."}, true},
    {"+", 0, designate<3>, {"ESC + C", "SCS G3", "ECMA-35", "Says what G3 is."}, true},
};

constexpr ControlCharacter kCharacters[] = {
    {0x07,
     [](State& s) { s.events.bells = std::min<std::uint32_t>(s.events.bells + 1, UINT16_MAX); },
     {"BEL", "BEL", "ECMA-48", "Rings."}},
    {0x08, [](State& s) { s.screen.moveBack(1); }, {"BS", "BS", "ECMA-48", "Moves the cursor left."}},
    {0x09, [](State& s) { s.screen.tab(1); }, {"HT", "HT", "ECMA-48", "Moves the cursor to the next tab stop."}},
    {0x0A, lineFeedByMode, {"LF", "LF", "ECMA-48", "Moves the cursor down; at the bottom margin, scrolls."}},
    {0x0B, lineFeedByMode, {"VT", "VT", "ECMA-48", "As LF."}},
    {0x0C, lineFeedByMode, {"FF", "FF", "ECMA-48", "As LF."}},
    {0x0D,
     [](State& s) { s.screen.carriageReturn(); },
     {"CR", "CR", "ECMA-48", "Moves the cursor to the left margin."}},
    {0x0E, [](State& s) { s.screen.characterSets.inUse = 1; }, {"SO", "SO", "ECMA-48", "Characters are of G1."}},
    {0x0F, [](State& s) { s.screen.characterSets.inUse = 0; }, {"SI", "SI", "ECMA-48", "Characters are of G0."}},
};

}  // namespace

std::span<const EscapeFunction> escapeFunctions() {
  return kFunctions;
}

std::span<const ControlCharacter> controlCharacters() {
  return kCharacters;
}

const EscapeFunction* findEscapeFunction(const EscapeSequence& sequence) {
  const auto* const found = std::ranges::find_if(kFunctions, [&](const EscapeFunction& function) {
    if (function.isDesignation) return sequence.intermediates.starts_with(function.intermediates);
    return function.final == sequence.final && function.intermediates == sequence.intermediates;
  });
  return found == std::end(kFunctions) ? nullptr : found;
}

const ControlCharacter* findControlCharacter(char32_t character) {
  // A line feed stands at the end of every line.
  static const auto kByCharacter = [] {
    std::array<const ControlCharacter*, 0x20> table{};
    for (const ControlCharacter& each : kCharacters) {
      table[each.character] = &each;
    }
    return table;
  }();
  return character < kByCharacter.size() ? kByCharacter[character] : nullptr;
}

}  // namespace zolt::vt
