#include "vt/Modes.h"

#include <algorithm>
#include <string>
#include <utility>

namespace zolt::vt {

namespace {

using State = TerminalState;
using Get = bool (*)(const State&);
using Set = void (*)(State&, bool);

template <auto field>
constexpr Get kIsOn = [](const State& state) { return state.modes.*field; };
template <auto field>
constexpr Set kSwitch = [](State& state, bool value) { state.modes.*field = value; };
template <auto field>
constexpr Get kIsOnScreen = [](const State& state) { return state.screen.modes.*field; };
template <auto field>
constexpr Set kSwitchScreen = [](State& state, bool value) { state.screen.modes.*field = value; };

// Of several one at most is in force: resetting any of them is the first of the enumeration.
template <MouseTracking tracking>
constexpr Get kTracks = [](const State& state) { return state.modes.mouse.tracking == tracking; };
template <MouseTracking tracking>
constexpr Set kTrack =
    [](State& state, bool value) { state.modes.mouse.tracking = value ? tracking : MouseTracking::Off; };
template <MouseEncoding encoding>
constexpr Get kEncodes = [](const State& state) { return state.modes.mouse.encoding == encoding; };
template <MouseEncoding encoding>
constexpr Set kEncode = [](State& state, bool value) {
  if (value) {
    state.modes.mouse.encoding = encoding;
  } else if (state.modes.mouse.encoding == encoding) {
    state.modes.mouse.encoding = MouseEncoding::Default;
  }
};

constexpr Get kAlways = [](const State&) { return true; };
constexpr Get kNever = [](const State&) { return false; };

void setOrigin(State& state, bool value) {
  state.screen.modes.origin = value;
  state.screen.moveTo(0, 0);
}

void setLeftRightMargins(State& state, bool value) {
  state.screen.modes.leftRightMargins = value;
  state.screen.resetHorizontalMargins();
}

// The window's width is the user's; what else the mode does is done.
void setColumns132(State& state, bool value) {
  if (!state.modes.allowColumnChange) return;
  state.modes.columns132 = value;
  state.screen.resetMargins();
  state.screen.modes.leftRightMargins = false;
  if (!state.modes.keepsScreenOnColumnChange) state.screen.eraseInDisplay(Screen::Part::All, Protection::None);
  state.screen.modes.origin = false;
  state.screen.moveTo(0, 0);
}

bool showsAlternate(const State& state) {
  return state.screen.showsAlternate();
}

void setAlternate(State& state, bool value) {
  state.screen.showAlternate(value);
}

void setAlternateCleared(State& state, bool value) {
  if (!value && state.screen.showsAlternate()) state.screen.clearAlternate();
  state.screen.showAlternate(value);
}

void setSavedCursor(State& state, bool value) {
  if (value) {
    state.screen.saveCursor();
  } else {
    state.screen.restoreCursor();
  }
}

void setAlternateWithCursor(State& state, bool value) {
  if (value) {
    state.screen.saveCursor();
    state.screen.showAlternate(true);
    state.screen.clearAlternate();
  } else {
    state.screen.showAlternate(false);
    state.screen.restoreCursor();
  }
}

void setSynchronizedUpdate(State& state, bool value) {
  if (!value) return endSynchronizedUpdate(state);
  // One that is set again goes on: it ends in time all the same.
  if (!std::exchange(state.modes.synchronizedUpdate, true)) state.updateBegan = state.now;
}

void setSizeReports(State& state, bool value) {
  state.modes.sizeReports = value;
  reportSize(state);
}

using Modes = TerminalModes;
constexpr Mode kModes[] = {
    {1, false, kNever, nullptr, {"CSI 1 h", "SM 1", "ECMA-48", "GATM: transfer of guarded areas; reset for good."}},
    {2,
     false,
     kIsOn<&Modes::keyboardLocked>,
     kSwitch<&Modes::keyboardLocked>,
     {"CSI 2 h", "SM 2", "ECMA-48", "KAM: keys send nothing."}},
    {4,
     false,
     kIsOnScreen<&ScreenModes::insert>,
     kSwitchScreen<&ScreenModes::insert>,
     {"CSI 4 h", "SM 4", "ECMA-48", "IRM: what is printed moves the rest of the row to the right."}},
    {5, false, kNever, nullptr, {"CSI 5 h", "SM 5", "ECMA-48", "SRTM: transfer of status reports; reset for good."}},
    {7, false, kNever, nullptr, {"CSI 7 h", "SM 7", "ECMA-48", "VEM: vertical editing; reset for good."}},
    {10, false, kNever, nullptr, {"CSI 10 h", "SM 10", "ECMA-48", "HEM: horizontal editing; reset for good."}},
    {11, false, kNever, nullptr, {"CSI 11 h", "SM 11", "ECMA-48", "PUM: positioning unit; reset for good."}},
    {12, false, kAlways, nullptr, {"CSI 12 h", "SM 12", "ECMA-48", "SRM: no local echo; set for good."}},
    {13, false, kNever, nullptr, {"CSI 13 h", "SM 13", "ECMA-48", "FEAM: format effector action; reset for good."}},
    {14, false, kNever, nullptr, {"CSI 14 h", "SM 14", "ECMA-48", "FETM: format effector transfer; reset for good."}},
    {15, false, kNever, nullptr, {"CSI 15 h", "SM 15", "ECMA-48", "MATM: multiple area transfer; reset for good."}},
    {16, false, kNever, nullptr, {"CSI 16 h", "SM 16", "ECMA-48", "TTM: transfer termination; reset for good."}},
    {17, false, kNever, nullptr, {"CSI 17 h", "SM 17", "ECMA-48", "SATM: selected area transfer; reset for good."}},
    {18, false, kNever, nullptr, {"CSI 18 h", "SM 18", "ECMA-48", "TSM: tabulation stops; reset for good."}},
    {19, false, kNever, nullptr, {"CSI 19 h", "SM 19", "ECMA-48", "EBM: editing boundary; reset for good."}},
    {20,
     false,
     kIsOnScreen<&ScreenModes::newLine>,
     kSwitchScreen<&ScreenModes::newLine>,
     {"CSI 20 h", "SM 20", "ECMA-48", "LNM: a line feed returns to the first column; Return sends CR LF."}},

    {1,
     true,
     kIsOn<&Modes::applicationCursor>,
     kSwitch<&Modes::applicationCursor>,
     {"CSI ? 1 h", "DECSET 1", "VT100", "DECCKM: cursor keys send SS3 sequences."}},
    {2, true, kAlways, nullptr, {"CSI ? 2 h", "DECSET 2", "VT100", "DECANM: ANSI, never VT52; set for good."}},
    {3,
     true,
     kIsOn<&Modes::columns132>,
     setColumns132,
     {"CSI ? 3 h", "DECSET 3", "VT100",
      "DECCOLM: clears the screen and its margins where mode 40 is set. The window keeps its width."}},
    {4,
     true,
     kIsOn<&Modes::smoothScroll>,
     kSwitch<&Modes::smoothScroll>,
     {"CSI ? 4 h", "DECSET 4", "VT100", "DECSCLM: smooth scrolling; kept, without effect."}},
    {5,
     true,
     kIsOn<&Modes::reverseScreen>,
     kSwitch<&Modes::reverseScreen>,
     {"CSI ? 5 h", "DECSET 5", "VT100", "DECSCNM: foreground and background change places."}},
    {6,
     true,
     kIsOnScreen<&ScreenModes::origin>,
     setOrigin,
     {"CSI ? 6 h", "DECSET 6", "VT100", "DECOM: rows and columns count from the margins."}},
    {7,
     true,
     kIsOnScreen<&ScreenModes::autoWrap>,
     kSwitchScreen<&ScreenModes::autoWrap>,
     {"CSI ? 7 h", "DECSET 7", "VT100", "DECAWM: text goes on in the next row."}},
    {8,
     true,
     kIsOn<&Modes::autoRepeat>,
     kSwitch<&Modes::autoRepeat>,
     {"CSI ? 8 h", "DECSET 8", "VT100", "DECARM: keys that are held repeat."}},
    {9,
     true,
     kTracks<MouseTracking::X10>,
     kTrack<MouseTracking::X10>,
     {"CSI ? 9 h", "DECSET 9", "xterm", "Tells presses of mouse buttons, as X10 did."}},
    {12,
     true,
     kIsOn<&Modes::cursorBlinks>,
     kSwitch<&Modes::cursorBlinks>,
     {"CSI ? 12 h", "DECSET 12", "AT&T 610", "The cursor blinks."}},
    {25,
     true,
     kIsOn<&Modes::cursorVisible>,
     kSwitch<&Modes::cursorVisible>,
     {"CSI ? 25 h", "DECSET 25", "VT220", "DECTCEM: the cursor is shown."}},
    {40,
     true,
     kIsOn<&Modes::allowColumnChange>,
     kSwitch<&Modes::allowColumnChange>,
     {"CSI ? 40 h", "DECSET 40", "xterm", "DECCOLM is obeyed."}},
    {45,
     true,
     kIsOnScreen<&ScreenModes::reverseWrap>,
     kSwitchScreen<&ScreenModes::reverseWrap>,
     {"CSI ? 45 h", "DECSET 45", "xterm", "Backspace goes back to the row before where its line was wrapped."}},
    {47, true, showsAlternate, setAlternate, {"CSI ? 47 h", "DECSET 47", "xterm", "Shows the alternate screen."}},
    {66,
     true,
     kIsOn<&Modes::applicationKeypad>,
     kSwitch<&Modes::applicationKeypad>,
     {"CSI ? 66 h", "DECSET 66", "VT320", "DECNKM: the keypad sends application sequences."}},
    {67,
     true,
     kIsOn<&Modes::backarrowIsBackspace>,
     kSwitch<&Modes::backarrowIsBackspace>,
     {"CSI ? 67 h", "DECSET 67", "VT340", "DECBKM: Backspace sends BS, not DEL."}},
    {69,
     true,
     kIsOnScreen<&ScreenModes::leftRightMargins>,
     setLeftRightMargins,
     {"CSI ? 69 h", "DECSET 69", "VT420", "DECLRMM: CSI s sets the left and the right margin."}},
    {95,
     true,
     kIsOn<&Modes::keepsScreenOnColumnChange>,
     kSwitch<&Modes::keepsScreenOnColumnChange>,
     {"CSI ? 95 h", "DECSET 95", "VT510", "DECNCSM: DECCOLM does not clear the screen."}},
    {1000,
     true,
     kTracks<MouseTracking::Normal>,
     kTrack<MouseTracking::Normal>,
     {"CSI ? 1000 h", "DECSET 1000", "xterm", "Tells presses and releases of mouse buttons."}},
    {1002,
     true,
     kTracks<MouseTracking::ButtonEvent>,
     kTrack<MouseTracking::ButtonEvent>,
     {"CSI ? 1002 h", "DECSET 1002", "xterm", "Tells motion of the mouse, too, while a button is down."}},
    {1003,
     true,
     kTracks<MouseTracking::AnyEvent>,
     kTrack<MouseTracking::AnyEvent>,
     {"CSI ? 1003 h", "DECSET 1003", "xterm", "Tells all motion of the mouse."}},
    {1004,
     true,
     kIsOn<&Modes::focusEvents>,
     kSwitch<&Modes::focusEvents>,
     {"CSI ? 1004 h", "DECSET 1004", "xterm", "Tells when the window gains and loses the focus."}},
    {1005,
     true,
     kEncodes<MouseEncoding::Utf8>,
     kEncode<MouseEncoding::Utf8>,
     {"CSI ? 1005 h", "DECSET 1005", "xterm", "Mouse positions are UTF-8."}},
    {1006,
     true,
     kEncodes<MouseEncoding::Sgr>,
     kEncode<MouseEncoding::Sgr>,
     {"CSI ? 1006 h", "DECSET 1006", "xterm", "Mouse positions are decimal numbers, releases told apart."}},
    {1007,
     true,
     kIsOn<&Modes::alternateScroll>,
     kSwitch<&Modes::alternateScroll>,
     {"CSI ? 1007 h", "DECSET 1007", "xterm", "The wheel sends cursor keys on the alternate screen."}},
    {1015,
     true,
     kEncodes<MouseEncoding::Urxvt>,
     kEncode<MouseEncoding::Urxvt>,
     {"CSI ? 1015 h", "DECSET 1015", "urxvt", "Mouse positions are decimal numbers."}},
    {1016,
     true,
     kEncodes<MouseEncoding::SgrPixels>,
     kEncode<MouseEncoding::SgrPixels>,
     {"CSI ? 1016 h", "DECSET 1016", "xterm", "As 1006, in pixels."}},
    {1035,
     true,
     kIsOn<&Modes::numLockEndsKeypadMode>,
     kSwitch<&Modes::numLockEndsKeypadMode>,
     {"CSI ? 1035 h", "DECSET 1035", "xterm", "The keypad types digits while Num Lock is on, whatever its mode."}},
    {1036,
     true,
     kIsOn<&Modes::metaSendsEscape>,
     kSwitch<&Modes::metaSendsEscape>,
     {"CSI ? 1036 h", "DECSET 1036", "xterm", "Meta with a key sends ESC before it."}},
    {1039,
     true,
     kIsOn<&Modes::altSendsEscape>,
     kSwitch<&Modes::altSendsEscape>,
     {"CSI ? 1039 h", "DECSET 1039", "xterm", "Alt with a key sends ESC before it."}},
    {1042,
     true,
     kIsOn<&Modes::urgencyOnBell>,
     kSwitch<&Modes::urgencyOnBell>,
     {"CSI ? 1042 h", "DECSET 1042", "xterm", "A bell asks for attention."}},
    {1043,
     true,
     kIsOn<&Modes::raiseOnBell>,
     kSwitch<&Modes::raiseOnBell>,
     {"CSI ? 1043 h", "DECSET 1043", "xterm", "A bell raises the window; kept, without effect."}},
    {1045,
     true,
     kIsOnScreen<&ScreenModes::extendedReverseWrap>,
     kSwitchScreen<&ScreenModes::extendedReverseWrap>,
     {"CSI ? 1045 h", "DECSET 1045", "xterm", "Backspace goes back to the row before in any case."}},
    {1047,
     true,
     showsAlternate,
     setAlternateCleared,
     {"CSI ? 1047 h", "DECSET 1047", "xterm", "Shows the alternate screen, and clears it when it is left."}},
    {1048,
     true,
     kNever,
     setSavedCursor,
     {"CSI ? 1048 h", "DECSET 1048", "xterm", "Saves the cursor; reset, restores it."}},
    {1049,
     true,
     showsAlternate,
     setAlternateWithCursor,
     {"CSI ? 1049 h", "DECSET 1049", "xterm", "Saves the cursor and shows the alternate screen, cleared."}},
    {2004,
     true,
     kIsOn<&Modes::bracketedPaste>,
     kSwitch<&Modes::bracketedPaste>,
     {"CSI ? 2004 h", "DECSET 2004", "xterm", "Pasted text stands between brackets."}},
    {2026,
     true,
     kIsOn<&Modes::synchronizedUpdate>,
     setSynchronizedUpdate,
     {"CSI ? 2026 h", "DECSET 2026", "iTerm2", "What follows is shown at once when it is complete, or after 150 ms."}},
    {2027,
     true,
     kIsOnScreen<&ScreenModes::graphemeClusters>,
     kSwitchScreen<&ScreenModes::graphemeClusters>,
     {"CSI ? 2027 h", "DECSET 2027", "Contour", "A grapheme cluster takes one place, as wide as the whole of it is."}},
    {2031,
     true,
     kIsOn<&Modes::colorSchemeReports>,
     kSwitch<&Modes::colorSchemeReports>,
     {"CSI ? 2031 h", "DECSET 2031", "Contour", "Tells when the colour scheme turns dark or light."}},
    {2048,
     true,
     kIsOn<&Modes::sizeReports>,
     setSizeReports,
     {"CSI ? 2048 h", "DECSET 2048", "community", "Tells the size at once and whenever it changes."}},
};

}  // namespace

std::span<const Mode> modeTable() {
  return kModes;
}

const Mode* findMode(bool isPrivate, int number) {
  const auto* const found = std::ranges::find_if(
      kModes, [&](const Mode& mode) { return mode.isPrivate == isPrivate && mode.number == number; });
  return found == std::end(kModes) ? nullptr : found;
}

int modeStatus(const TerminalState& state, bool isPrivate, int number) {
  const Mode* const mode = findMode(isPrivate, number);
  if (mode == nullptr) return 0;
  const bool isSet = mode->isSet(state);
  if (mode->set == nullptr) return isSet ? 3 : 4;
  return isSet ? 1 : 2;
}

void endSynchronizedUpdate(TerminalState& state) {
  state.modes.synchronizedUpdate = false;
}

void reportSize(TerminalState& state) {
  if (!state.modes.sizeReports) return;
  const int rows = state.screen.rows();
  const int columns = state.screen.columns();
  state.reply("\033[48;" + std::to_string(rows) + ';' + std::to_string(columns) + ';' +
              std::to_string(rows * state.cellHeight) + ';' + std::to_string(columns * state.cellWidth) + 't');
}

void reportColorScheme(TerminalState& state) {
  state.reply(state.prefersDark ? "\033[?997;1n" : "\033[?997;2n");
}

}  // namespace zolt::vt
