#include <algorithm>
#include <string>

#include "vt/ControlFunctions.h"
#include "vt/Modes.h"

namespace zolt::vt {

namespace {

using State = TerminalState;
using Sequence = ControlSequence;

// A VT420 (64) with selective erase (6), horizontal scrolling (21), colours (22) and rectangles (28).
constexpr std::string_view kPrimaryAttributes = "\033[?64;6;21;22;28c";
// A VT420 (41), and a level that programs hold against xterm's patch numbers, all of whose features they ask for are
// here.
constexpr std::string_view kSecondaryAttributes = "\033[>41;1000;0c";
// "ZOLT", as the identification of the unit.
constexpr std::string_view kTertiaryAttributes = "\033P!|5A4F4C54\033\\";

std::string control(std::initializer_list<int> numbers, std::string_view prefix, std::string_view final) {
  std::string text = "\033[";
  text += prefix;
  const char* separator = "";
  for (const int number : numbers) {
    text += separator;
    text += std::to_string(number);
    separator = ";";
  }
  text += final;
  return text;
}

// Where the answer to a status request is always the same: there are no printers, locators, macros or user-defined
// keys.
struct Status {
  int number;
  std::string_view answer;
};
constexpr Status kAnsiStatuses[] = {{5, "\033[0n"}};
constexpr Status kPrivateStatuses[] = {
    {15, "\033[?13n"},   {25, "\033[?21n"}, {26, "\033[?27;1;0;0n"}, {53, "\033[?50n"}, {55, "\033[?50n"},
    {56, "\033[?57;0n"}, {62, "\033[0*{"},  {75, "\033[?70n"},       {85, "\033[?83n"},
};

void replyFrom(State& state, std::span<const Status> statuses, int number) {
  const auto found = std::ranges::find(statuses, number, &Status::number);
  if (found != statuses.end()) state.reply(found->answer);
}

void reportStatus(State& state, const Sequence& sequence) {
  const int number = sequence.parameter(0, 0);
  const Cursor cursor = state.screen.reportedCursor();
  if (number == 6) return state.reply(control({cursor.row + 1, cursor.column + 1}, "", "R"));
  replyFrom(state, kAnsiStatuses, number);
}

void reportPrivateStatus(State& state, const Sequence& sequence) {
  const int number = sequence.parameter(0, 0);
  const Cursor cursor = state.screen.reportedCursor();
  if (number == 6) return state.reply(control({cursor.row + 1, cursor.column + 1, 1}, "?", "R"));
  if (number == 996) return reportColorScheme(state);
  if (number == 63) {
    return state.reply("\033P" + std::to_string(sequence.parameter(1, 0)) + "!~0000\033\\");
  }
  replyFrom(state, kPrivateStatuses, number);
}

template <bool isPrivate>
void reportMode(State& state, const Sequence& sequence) {
  const int number = sequence.parameter(0, 0);
  state.reply(control({number, modeStatus(state, isPrivate, number)}, isPrivate ? "?" : "", "$y"));
}

void reportParameters(State& state, const Sequence& sequence) {
  const int kind = sequence.parameter(0, 0);
  if (kind <= 1) state.reply(control({kind + 2, 1, 1, 128, 128, 1, 0}, "", "x"));
}

// The pen, the modes and the character sets of the cursor, as bits that begin at '@'.
std::string cursorInformation(const State& state) {
  const Screen& screen = state.screen;
  const Cursor cursor = screen.reportedCursor();
  const Style& style = screen.pen().style;
  const auto bit = [](bool is, int value) { return is ? value : 0; };
  const auto letter = [](int bits) { return std::string(1, static_cast<char>('@' + bits)); };
  const int rendition = bit((style.flags & kBold) != 0, 1) | bit(style.underline != Underline::None, 2) |
                        bit((style.flags & kBlink) != 0, 4) | bit((style.flags & kInverse) != 0, 8);
  const CharacterSets& sets = screen.characterSets;
  const int flags =
      bit(screen.modes.origin, 1) | bit(sets.once == 2, 2) | bit(sets.once == 3, 4) | bit(cursor.wrapsNext, 8);
  std::string designations;
  for (const CharacterSet set : sets.sets) {
    designations += designation(set);
  }
  return std::to_string(cursor.row + 1) + ';' + std::to_string(cursor.column + 1) + ";1;" + letter(rendition) + ';' +
         letter(bit(screen.pen().isProtected, 1)) + ';' + letter(flags) + ';' + std::to_string(sets.inUse) + ";2;@;" +
         designations;
}

std::string tabStops(const State& state) {
  std::string text;
  const std::vector<bool>& stops = state.screen.tabStops();
  for (std::size_t column = 0; column < stops.size(); ++column) {
    if (!stops[column]) continue;
    if (!text.empty()) text += '/';
    text += std::to_string(column + 1);
  }
  return text;
}

void reportPresentation(State& state, const Sequence& sequence) {
  switch (sequence.parameter(0, 0)) {
    case 1:
      state.reply("\033P1$u" + cursorInformation(state) + "\033\\");
      break;
    case 2:
      state.reply("\033P2$u" + tabStops(state) + "\033\\");
      break;
    default:
      break;
  }
}

void pushTitles(State& state, int which) {
  constexpr std::size_t kMax = 16;
  if (which > 2) return;
  if (state.pushedTitles.size() == kMax) state.pushedTitles.erase(state.pushedTitles.begin());
  state.pushedTitles.push_back({.title = state.title, .iconTitle = state.iconTitle});
}

void popTitles(State& state, int which) {
  if (which > 2 || state.pushedTitles.empty()) return;
  const State::Titles titles = std::move(state.pushedTitles.back());
  state.pushedTitles.pop_back();
  if (which != 1) state.title = titles.title;
  if (which != 2) state.iconTitle = titles.iconTitle;
  state.events.titleChanged = true;
}

// What changes a window is the user's business: only what asks, and the stack of titles.
void manipulateWindow(State& state, const Sequence& sequence) {
  const int rows = state.screen.rows();
  const int columns = state.screen.columns();
  const bool knowsPixels = state.cellWidth > 0 && state.cellHeight > 0;
  switch (sequence.parameter(0, 0)) {
    case 11:
      state.reply("\033[1t");
      break;
    case 14:
      if (knowsPixels) state.reply(control({4, rows * state.cellHeight, columns * state.cellWidth}, "", "t"));
      break;
    case 16:
      if (knowsPixels) state.reply(control({6, state.cellHeight, state.cellWidth}, "", "t"));
      break;
    case 18:
      state.reply(control({8, rows, columns}, "", "t"));
      break;
    case 19:
      state.reply(control({9, rows, columns}, "", "t"));
      break;
    case 20:
      if (state.settings.allowTitleReports) state.reply("\033]L" + state.iconTitle + "\033\\");
      break;
    case 21:
      if (state.settings.allowTitleReports) state.reply("\033]l" + state.title + "\033\\");
      break;
    case 22:
      pushTitles(state, sequence.parameter(1, 0));
      break;
    case 23:
      popTitles(state, sequence.parameter(1, 0));
      break;
    default:
      break;
  }
}

void reportVersion(State& state, const Sequence& sequence) {
  if (sequence.parameter(0, 0) == 0) state.reply("\033P>|Zolt(" + state.settings.version + ")\033\\");
}

void reportKeyModifiers(State& state, const Sequence& sequence) {
  const KeyboardState& keyboard = state.keyboard;
  const int resource = sequence.parameter(0, 0);
  const int values[] = {keyboard.modifyKeyboard, keyboard.modifyCursorKeys, keyboard.modifyFunctionKeys, -1,
                        keyboard.modifyOtherKeys};
  if (resource < 0 || resource >= static_cast<int>(std::size(values)) || values[resource] < 0) return;
  state.reply(control({resource, values[resource]}, ">", "m"));
}

template <int kind>
void reportAttributes(State& state, const Sequence& sequence) {
  constexpr std::string_view kAnswers[] = {kPrimaryAttributes, kSecondaryAttributes, kTertiaryAttributes};
  if (sequence.parameter(0, 0) == 0) state.reply(kAnswers[kind]);
}

void reportKeyboardFlags(State& state, const Sequence&) {
  state.reply(control({state.keyboardFlags().current}, "?", "u"));
}

constexpr ControlFunction kFunctions[] = {
    {0, "", 'c', reportAttributes<0>, {"CSI c", "DA1", "ECMA-48", "Tells what this terminal is."}},
    {'>', "", 'c', reportAttributes<1>, {"CSI > c", "DA2", "VT220", "Tells its model and level."}},
    {'=', "", 'c', reportAttributes<2>, {"CSI = c", "DA3", "VT420", "Tells its unit, which is the same for all."}},
    {0, "", 'n', reportStatus, {"CSI Ps n", "DSR", "ECMA-48", "Tells that all is well (5), where the cursor is (6)."}},
    {'?',
     "",
     'n',
     reportPrivateStatus,
     {"CSI ? Ps n", "DECDSR", "VT220",
      "Tells where the cursor is (6), the colour scheme (996), and that there is no printer and no locator."}},
    {0, "$", 'p', reportMode<false>, {"CSI Ps $ p", "DECRQM", "VT320", "Tells whether an ANSI mode is set."}},
    {'?', "$", 'p', reportMode<true>, {"CSI ? Ps $ p", "DECRQM ?", "VT320", "Tells whether a private mode is set."}},
    {0,
     "",
     't',
     manipulateWindow,
     {"CSI Ps ; Ps t", "XTWINOPS", "xterm",
      "Tells sizes (14, 16, 18, 19), pushes and pops titles (22, 23). Nothing moves or sizes the window."}},
    {0,
     "",
     'x',
     reportParameters,
     {"CSI Ps x", "DECREQTPARM", "VT100", "Tells the parameters of a line that is not there."}},
    {0,
     "$",
     'w',
     reportPresentation,
     {"CSI Ps $ w", "DECRQPSR", "VT320", "Tells the cursor's state (1) and the tab stops (2)."}},
    {'>', "", 'q', reportVersion, {"CSI > q", "XTVERSION", "xterm", "Tells the program's name and version."}},
    {'?',
     "",
     'm',
     reportKeyModifiers,
     {"CSI ? Ps m", "XTQMODKEYS", "xterm", "Tells how keys with modifiers are sent."}},
    {'?', "", 'u', reportKeyboardFlags, {"CSI ? u", "KITTY ?u", "kitty", "Tells the keyboard protocol's flags."}},
};

}  // namespace

std::string_view primaryAttributes() {
  return kPrimaryAttributes;
}

std::span<const ControlFunction> reportFunctions() {
  return kFunctions;
}

}  // namespace zolt::vt
