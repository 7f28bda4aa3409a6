#include <algorithm>
#include <array>
#include <string>

#include "vt/functions/Csi.h"
#include "vt/functions/Modes.h"

namespace zolt::vt {

namespace {

using State = TerminalState;
using Sequence = ControlSequence;

// A VT420 (64) with selective erase (6), horizontal scrolling (21), colour (22) and rectangular editing (28).
constexpr std::string_view kPrimaryAttributes = "\033[?64;6;21;22;28c";
// A VT420 (41). Programs compare the level with xterm's patch numbers; this one is past every feature they check for.
constexpr std::string_view kSecondaryAttributes = "\033[>41;1000;0c";
// The unit ID: "ZOLT" in hexadecimal.
constexpr std::string_view kTertiaryAttributes = "\033P!|5A4F4C54\033\\";

std::string csiReport(std::initializer_list<int> numbers, std::string_view prefix, std::string_view final) {
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

// Status requests with a fixed answer: there is no printer, locator, macro space or user-defined key.
struct Status {
  int number;
  std::string_view answer;
};
constexpr Status kAnsiStatuses[] = {{5, "\033[0n"}};
// clang-format off
constexpr Status kPrivateStatuses[] = {
    {15, "\033[?13n"},        // no printer
    {25, "\033[?21n"},        // user-defined keys are locked
    {26, "\033[?27;1;0;0n"},  // a North American keyboard
    {53, "\033[?50n"},        // no locator
    {55, "\033[?50n"},
    {56, "\033[?57;0n"},
    {62, "\033[0*{"},         // no macro space
    {75, "\033[?70n"},        // data integrity: no errors
    {85, "\033[?83n"},        // no multiple sessions
};
// clang-format on

void replyFrom(State& state, std::span<const Status> statuses, int number) {
  const auto found = std::ranges::find(statuses, number, &Status::number);
  if (found != statuses.end()) state.reply(found->answer);
}

void reportStatus(State& state, const Sequence& sequence) {
  const int number = sequence.parameter(0, 0);
  const Cursor cursor = state.screen.reportedCursor();
  if (number == 6) return state.reply(csiReport({cursor.row + 1, cursor.column + 1}, "", "R"));
  replyFrom(state, kAnsiStatuses, number);
}

void reportPrivateStatus(State& state, const Sequence& sequence) {
  const int number = sequence.parameter(0, 0);
  const Cursor cursor = state.screen.reportedCursor();
  if (number == 6) return state.reply(csiReport({cursor.row + 1, cursor.column + 1, 1}, "?", "R"));
  if (number == 996) return reportColorScheme(state);
  if (number == 63) {
    return state.reply("\033P" + std::to_string(sequence.parameter(1, 0)) + "!~0000\033\\");
  }
  replyFrom(state, kPrivateStatuses, number);
}

template <bool isPrivate>
void reportMode(State& state, const Sequence& sequence) {
  const int number = sequence.parameter(0, 0);
  state.reply(csiReport({number, modeStatus(state, isPrivate, number)}, isPrivate ? "?" : "", "$y"));
}

void reportParameters(State& state, const Sequence& sequence) {
  const int kind = sequence.parameter(0, 0);
  if (kind <= 1) state.reply(csiReport({kind + 2, 1, 1, 128, 128, 1, 0}, "", "x"));
}

// DECCIR: rendition, modes and character sets; flags are offsets from '@'.
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
  const int which = sequence.parameter(0, 0);
  if (which == 1) state.reply("\033P1$u" + cursorInformation(state) + "\033\\");
  if (which == 2) state.reply("\033P2$u" + tabStops(state) + "\033\\");
}

void pushTitles(State& state, int which) {
  if (which > 2) return;
  if (state.pushedTitles.size() == State::maxPushedTitles) state.pushedTitles.erase(state.pushedTitles.begin());
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

// The window is the user's: what moves or resizes it is passed on only if the settings allow it.
bool requestOfWindow(State& state, const Sequence& sequence) {
  using Kind = WindowRequest::Kind;
  const int what = sequence.parameter(0, 0);
  const int first = sequence.parameter(1, 0);
  const int second = sequence.parameter(2, 0);
  const auto request = [&](Kind kind, int one = 0, int other = 0) {
    std::vector<WindowRequest>& requests = state.events.windowRequests;
    const bool fits = requests.size() < TerminalEvents::maxNotifications;
    if (state.settings.allowWindowRequests && fits) requests.push_back({.kind = kind, .first = one, .second = other});
    return true;
  };
  // Under the numbers of XTWINOPS, those with a choice after the others.
  constexpr std::array kPlain{Kind::Restore,        Kind::Minimize, Kind::MoveTo,
                              Kind::ResizeToPixels, Kind::Raise,    Kind::Lower};
  constexpr std::array kFullScreen{Kind::LeaveFullScreen, Kind::EnterFullScreen, Kind::ToggleFullScreen};
  if (what >= 1 && what <= 6) return request(kPlain[static_cast<std::size_t>(what - 1)], first, second);
  if (what == 8) return request(Kind::ResizeToCells, first, second);
  if (what == 9 && first <= 1) return request(first == 1 ? Kind::Maximize : Kind::LeaveMaximized);
  if (what == 10 && first <= 2) return request(kFullScreen[static_cast<std::size_t>(first)]);
  return what >= 24 && request(Kind::ResizeToCells, what);
}

void manipulateWindow(State& state, const Sequence& sequence) {
  if (requestOfWindow(state, sequence)) return;
  const TerminalSize& size = state.size;
  const bool hasPixels = size.pixelWidth > 0 && size.pixelHeight > 0;
  switch (sequence.parameter(0, 0)) {
    case 11:
      return state.reply("\033[1t");
    case 14:
      return hasPixels ? state.reply(csiReport({4, size.pixelHeight, size.pixelWidth}, "", "t")) : void();
    case 16:
      return hasPixels
                 ? state.reply(csiReport({6, size.pixelHeight / size.rows, size.pixelWidth / size.columns}, "", "t"))
                 : void();
    case 18:
      return state.reply(csiReport({8, size.rows, size.columns}, "", "t"));
    case 19:
      return state.reply(csiReport({9, size.rows, size.columns}, "", "t"));
    case 20:
      return state.settings.allowTitleReports ? state.reply("\033]L" + state.iconTitle + "\033\\") : void();
    case 21:
      return state.settings.allowTitleReports ? state.reply("\033]l" + state.title + "\033\\") : void();
    case 22:
      return pushTitles(state, sequence.parameter(1, 0));
    case 23:
      return popTitles(state, sequence.parameter(1, 0));
    default:
      return;
  }
}

void reportVersion(State& state, const Sequence& sequence) {
  if (sequence.parameter(0, 0) == 0) state.reply("\033P>|Zolt(" + state.settings.version + ")\033\\");
}

void reportKeyModifiers(State& state, const Sequence& sequence) {
  const KeyboardOptions& keyboard = state.keyboard;
  const int resource = sequence.parameter(0, 0);
  const int values[] = {keyboard.modifyKeyboard, keyboard.modifyCursorKeys, keyboard.modifyFunctionKeys, -1,
                        keyboard.modifyOtherKeys};
  if (resource < 0 || resource >= static_cast<int>(std::size(values)) || values[resource] < 0) return;
  state.reply(csiReport({resource, values[resource]}, ">", "m"));
}

template <int kind>
void reportAttributes(State& state, const Sequence& sequence) {
  constexpr std::string_view kAnswers[] = {kPrimaryAttributes, kSecondaryAttributes, kTertiaryAttributes};
  if (sequence.parameter(0, 0) == 0) state.reply(kAnswers[kind]);
}

void reportKeyboardFlags(State& state, const Sequence&) {
  state.reply(csiReport({state.keyboardFlags().current}, "?", "u"));
}

// clang-format off
constexpr CsiFunction kFunctions[] = {
    {0,   "",  'c', reportAttributes<0>, {"CSI c",         "DA1",         "ECMA-48", "Reports the terminal's class and extensions."}},
    {'>', "",  'c', reportAttributes<1>, {"CSI > c",       "DA2",         "VT220",   "Reports the terminal's model and firmware level."}},
    {'=', "",  'c', reportAttributes<2>, {"CSI = c",       "DA3",         "VT420",   "Reports the unit ID, which is the same everywhere."}},
    {0,   "",  'n', reportStatus,        {"CSI Ps n",      "DSR",         "ECMA-48", "Reports that the terminal is ready (5) or where the cursor is (6)."}},
    {'?', "",  'n', reportPrivateStatus, {"CSI ? Ps n",    "DECDSR",      "VT220",   "Reports where the cursor is (6), the colour scheme (996), and that there is no printer or locator."}},
    {0,   "$", 'p', reportMode<false>,   {"CSI Ps $ p",    "DECRQM",      "VT320",   "Reports whether an ANSI mode is set."}},
    {'?', "$", 'p', reportMode<true>,    {"CSI ? Ps $ p",  "DECRQM ?",    "VT320",   "Reports whether a DEC private mode is set."}},
    {0,   "",  't', manipulateWindow,    {"CSI Ps ; Ps t", "XTWINOPS",    "xterm",   "Reports sizes (14, 16, 18, 19), pushes and pops titles (22, 23). Moves, resizes, raises or minimizes the window (1 to 6, 8 to 10, 24 and up) only if a setting allows it, which is off."}},
    {0,   "",  'x', reportParameters,    {"CSI Ps x",      "DECREQTPARM", "VT100",   "Reports the parameters of a serial line, which are made up."}},
    {0,   "$", 'w', reportPresentation,  {"CSI Ps $ w",    "DECRQPSR",    "VT320",   "Reports the state of the cursor (1) or the tab stops (2)."}},
    {'>', "",  'q', reportVersion,       {"CSI > q",       "XTVERSION",   "xterm",   "Reports the terminal's name and version."}},
    {'?', "",  'm', reportKeyModifiers,  {"CSI ? Ps m",    "XTQMODKEYS",  "xterm",   "Reports how modified keys are encoded."}},
    {'?', "",  'u', reportKeyboardFlags, {"CSI ? u",       "KITTY ?u",    "kitty",   "Reports the keyboard protocol's flags."}},
};
// clang-format on

}  // namespace

std::string_view primaryAttributes() {
  return kPrimaryAttributes;
}

std::span<const CsiFunction> csiReports() {
  return kFunctions;
}

}  // namespace zolt::vt
