#include "vt/functions/Modes.h"

#include <algorithm>
#include <string>
#include <utility>

namespace zolt::vt {

namespace {

using State = TerminalState;

// How a mode is read and switched; `set` is null for a mode that is permanently what it is.
struct Access {
  bool (*isSet)(const State&);
  void (*set)(State&, bool);
};

template <auto field>
constexpr Access kFlag = {[](const State& state) { return state.modes.*field; },
                          [](State& state, bool value) { state.modes.*field = value; }};
template <auto field>
constexpr Access kScreenFlag = {[](const State& state) { return state.screen.modes.*field; },
                                [](State& state, bool value) { state.screen.modes.*field = value; }};

// Only one of the tracking modes can be set; resetting any of them turns tracking off.
template <MouseTracking tracking>
constexpr Access kTracking = {
    [](const State& state) { return state.modes.mouse.tracking == tracking; },
    [](State& state, bool value) { state.modes.mouse.tracking = value ? tracking : MouseTracking::Off; }};

// Only one of the encodings can be set; resetting one that is not set has no effect.
template <MouseEncoding encoding>
constexpr Access kEncoding = {[](const State& state) { return state.modes.mouse.encoding == encoding; },
                              [](State& state, bool value) {
                                MouseEncoding& current = state.modes.mouse.encoding;
                                if (value || current == encoding) current = value ? encoding : MouseEncoding::Default;
                              }};

constexpr bool never(const State&) {
  return false;
}

constexpr Access kPermanentlySet = {[](const State&) { return true; }, nullptr};
constexpr Access kPermanentlyReset = {never, nullptr};

void setOrigin(State& state, bool value) {
  state.screen.modes.origin = value;
  state.screen.moveTo({});
}

void setLeftRightMargins(State& state, bool value) {
  state.screen.modes.leftRightMargins = value;
  state.screen.resetHorizontalMargins();
}

// The window keeps its width, which is the user's; everything else that DECCOLM does is done.
void setColumns132(State& state, bool value) {
  if (!state.modes.allowColumnChange) return;
  state.modes.columns132 = value;
  state.screen.resetMargins();
  state.screen.modes.leftRightMargins = false;
  if (!state.modes.keepsScreenOnColumnChange) state.screen.eraseInDisplay(Screen::Part::All, Protection::None);
  state.screen.modes.origin = false;
  state.screen.moveTo({});
}

bool showsAlternate(const State& state) {
  return state.screen.showsAlternate();
}

// A user who has turned the alternate screen off stays on the primary one; there is nothing to come back from then.
bool isAlternateRefused(const State& state, bool value) {
  return !state.settings.allowAlternateScreen && (value || !state.screen.showsAlternate());
}

void setAlternate(State& state, bool value) {
  if (isAlternateRefused(state, value)) return;
  state.screen.showAlternate(value);
}

void setAlternateCleared(State& state, bool value) {
  if (isAlternateRefused(state, value)) return;
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
  if (isAlternateRefused(state, value)) return;
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
  // Setting the mode again does not extend an update past its time limit.
  if (!std::exchange(state.modes.synchronizedUpdate, true)) state.updateBegan = state.now;
}

void setSizeReports(State& state, bool value) {
  state.modes.sizeReports = value;
  reportSize(state);
}

constexpr Mode ansi(int number, Access access, Documented documented) {
  return {number, false, access.isSet, access.set, documented};
}

constexpr Mode dec(int number, Access access, Documented documented) {
  return {number, true, access.isSet, access.set, documented};
}

using Modes = TerminalModes;

constexpr Access kOrigin = {kScreenFlag<&ScreenModes::origin>.isSet, setOrigin};
constexpr Access kLeftRightMargins = {kScreenFlag<&ScreenModes::leftRightMargins>.isSet, setLeftRightMargins};
constexpr Access kExtendedReverseWrap = kScreenFlag<&ScreenModes::extendedReverseWrap>;
constexpr Access kColumns132 = {kFlag<&Modes::columns132>.isSet, setColumns132};
constexpr Access kAlternate = {showsAlternate, setAlternate};
constexpr Access kAlternateCleared = {showsAlternate, setAlternateCleared};
constexpr Access kAlternateWithCursor = {showsAlternate, setAlternateWithCursor};
constexpr Access kSavedCursor = {never, setSavedCursor};
constexpr Access kSynchronizedUpdate = {kFlag<&Modes::synchronizedUpdate>.isSet, setSynchronizedUpdate};
constexpr Access kSizeReports = {kFlag<&Modes::sizeReports>.isSet, setSizeReports};

// clang-format off
constexpr Mode kModes[] = {
    ansi(1,  kPermanentlyReset,                    {"CSI 1 h",  "SM 1",  "ECMA-48", "GATM, guarded area transfer: permanently reset."}),
    ansi(2,  kFlag<&Modes::keyboardLocked>,        {"CSI 2 h",  "SM 2",  "ECMA-48", "KAM: keys send nothing."}),
    ansi(4,  kScreenFlag<&ScreenModes::insert>,    {"CSI 4 h",  "SM 4",  "ECMA-48", "IRM: printing shifts the rest of the row right."}),
    ansi(5,  kPermanentlyReset,                    {"CSI 5 h",  "SM 5",  "ECMA-48", "SRTM, status report transfer: permanently reset."}),
    ansi(7,  kPermanentlyReset,                    {"CSI 7 h",  "SM 7",  "ECMA-48", "VEM, line editing: permanently reset."}),
    ansi(10, kPermanentlyReset,                    {"CSI 10 h", "SM 10", "ECMA-48", "HEM, character editing: permanently reset."}),
    ansi(11, kPermanentlyReset,                    {"CSI 11 h", "SM 11", "ECMA-48", "PUM, positioning unit: permanently reset."}),
    ansi(12, kPermanentlySet,                      {"CSI 12 h", "SM 12", "ECMA-48", "SRM, no local echo: permanently set."}),
    ansi(13, kPermanentlyReset,                    {"CSI 13 h", "SM 13", "ECMA-48", "FEAM, format effector action: permanently reset."}),
    ansi(14, kPermanentlyReset,                    {"CSI 14 h", "SM 14", "ECMA-48", "FETM, format effector transfer: permanently reset."}),
    ansi(15, kPermanentlyReset,                    {"CSI 15 h", "SM 15", "ECMA-48", "MATM, multiple area transfer: permanently reset."}),
    ansi(16, kPermanentlyReset,                    {"CSI 16 h", "SM 16", "ECMA-48", "TTM, transfer termination: permanently reset."}),
    ansi(17, kPermanentlyReset,                    {"CSI 17 h", "SM 17", "ECMA-48", "SATM, selected area transfer: permanently reset."}),
    ansi(18, kPermanentlyReset,                    {"CSI 18 h", "SM 18", "ECMA-48", "TSM, tabulation stops: permanently reset."}),
    ansi(19, kPermanentlyReset,                    {"CSI 19 h", "SM 19", "ECMA-48", "EBM, editing boundary: permanently reset."}),
    ansi(20, kScreenFlag<&ScreenModes::newLine>,   {"CSI 20 h", "SM 20", "ECMA-48", "LNM: a line feed also returns the carriage; Return sends CR LF."}),

    dec(1,    kFlag<&Modes::applicationCursor>,              {"CSI ? 1 h",    "DECSET 1",    "VT100",     "DECCKM: cursor keys send SS3 sequences."}),
    dec(2,    kPermanentlySet,                               {"CSI ? 2 h",    "DECSET 2",    "VT100",     "DECANM, ANSI rather than VT52: permanently set."}),
    dec(3,    kColumns132,                                   {"CSI ? 3 h",    "DECSET 3",    "VT100",     "DECCOLM: clears the screen and its margins if mode 40 is set. The window keeps its width."}),
    dec(4,    kFlag<&Modes::smoothScroll>,                   {"CSI ? 4 h",    "DECSET 4",    "VT100",     "DECSCLM, smooth scrolling: stored, but has no effect."}),
    dec(5,    kFlag<&Modes::reverseScreen>,                  {"CSI ? 5 h",    "DECSET 5",    "VT100",     "DECSCNM: swaps foreground and background."}),
    dec(6,    kOrigin,                                       {"CSI ? 6 h",    "DECSET 6",    "VT100",     "DECOM: rows and columns are relative to the margins."}),
    dec(7,    kScreenFlag<&ScreenModes::autoWrap>,           {"CSI ? 7 h",    "DECSET 7",    "VT100",     "DECAWM: text wraps at the right margin."}),
    dec(8,    kFlag<&Modes::autoRepeat>,                     {"CSI ? 8 h",    "DECSET 8",    "VT100",     "DECARM: keys that are held repeat."}),
    dec(9,    kTracking<MouseTracking::X10>,                 {"CSI ? 9 h",    "DECSET 9",    "xterm",     "Reports mouse button presses, as X10 xterm did."}),
    dec(12,   kFlag<&Modes::cursorBlinks>,                   {"CSI ? 12 h",   "DECSET 12",   "AT&T 610",  "Makes the cursor blink, whatever its style; reset leaves that to the style."}),
    dec(25,   kFlag<&Modes::cursorVisible>,                  {"CSI ? 25 h",   "DECSET 25",   "VT220",     "DECTCEM: shows the cursor."}),
    dec(40,   kFlag<&Modes::allowColumnChange>,              {"CSI ? 40 h",   "DECSET 40",   "xterm",     "Allows DECCOLM."}),
    dec(45,   kScreenFlag<&ScreenModes::reverseWrap>,        {"CSI ? 45 h",   "DECSET 45",   "xterm",     "Backspace wraps back to the previous row of a wrapped line."}),
    dec(47,   kAlternate,                                    {"CSI ? 47 h",   "DECSET 47",   "xterm",     "Switches to the alternate screen."}),
    dec(66,   kFlag<&Modes::applicationKeypad>,              {"CSI ? 66 h",   "DECSET 66",   "VT320",     "DECNKM: the keypad sends application sequences."}),
    dec(67,   kFlag<&Modes::backarrowIsBackspace>,           {"CSI ? 67 h",   "DECSET 67",   "VT340",     "DECBKM: Backspace sends BS, not DEL."}),
    dec(69,   kLeftRightMargins,                             {"CSI ? 69 h",   "DECSET 69",   "VT420",     "DECLRMM: CSI s sets the left and right margins."}),
    dec(95,   kFlag<&Modes::keepsScreenOnColumnChange>,      {"CSI ? 95 h",   "DECSET 95",   "VT510",     "DECNCSM: DECCOLM does not clear the screen."}),
    dec(1000, kTracking<MouseTracking::Normal>,              {"CSI ? 1000 h", "DECSET 1000", "xterm",     "Reports mouse button presses and releases."}),
    dec(1002, kTracking<MouseTracking::ButtonEvent>,         {"CSI ? 1002 h", "DECSET 1002", "xterm",     "Also reports mouse motion while a button is held."}),
    dec(1003, kTracking<MouseTracking::AnyEvent>,            {"CSI ? 1003 h", "DECSET 1003", "xterm",     "Also reports all other mouse motion."}),
    dec(1004, kFlag<&Modes::focusEvents>,                    {"CSI ? 1004 h", "DECSET 1004", "xterm",     "Reports when the window gains or loses focus."}),
    dec(1005, kEncoding<MouseEncoding::Utf8>,                {"CSI ? 1005 h", "DECSET 1005", "xterm",     "Encodes mouse positions as UTF-8."}),
    dec(1006, kEncoding<MouseEncoding::Sgr>,                 {"CSI ? 1006 h", "DECSET 1006", "xterm",     "Encodes mouse positions as decimal numbers, and marks releases."}),
    dec(1007, kFlag<&Modes::alternateScroll>,                {"CSI ? 1007 h", "DECSET 1007", "xterm",     "The wheel sends cursor keys on the alternate screen."}),
    dec(1015, kEncoding<MouseEncoding::Urxvt>,               {"CSI ? 1015 h", "DECSET 1015", "urxvt",     "Encodes mouse positions as decimal numbers."}),
    dec(1016, kEncoding<MouseEncoding::SgrPixels>,           {"CSI ? 1016 h", "DECSET 1016", "xterm",     "Like 1006, in pixels."}),
    dec(1035, kFlag<&Modes::numLockEndsKeypadMode>,          {"CSI ? 1035 h", "DECSET 1035", "xterm",     "While Num Lock is on, the keypad types digits in any mode."}),
    dec(1036, kFlag<&Modes::metaSendsEscape>,                {"CSI ? 1036 h", "DECSET 1036", "xterm",     "Meta prefixes a key with ESC."}),
    dec(1039, kFlag<&Modes::altSendsEscape>,                 {"CSI ? 1039 h", "DECSET 1039", "xterm",     "Alt prefixes a key with ESC."}),
    dec(1042, kFlag<&Modes::urgencyOnBell>,                  {"CSI ? 1042 h", "DECSET 1042", "xterm",     "The bell sets the window's urgency hint."}),
    dec(1043, kFlag<&Modes::raiseOnBell>,                    {"CSI ? 1043 h", "DECSET 1043", "xterm",     "The bell raises the window: stored, but has no effect."}),
    dec(1045, kExtendedReverseWrap,                          {"CSI ? 1045 h", "DECSET 1045", "xterm",     "Backspace wraps back to the previous row, wrapped or not."}),
    dec(1047, kAlternateCleared,                             {"CSI ? 1047 h", "DECSET 1047", "xterm",     "Switches to the alternate screen, and clears it on the way back."}),
    dec(1048, kSavedCursor,                                  {"CSI ? 1048 h", "DECSET 1048", "xterm",     "Saves the cursor; reset restores it."}),
    dec(1049, kAlternateWithCursor,                          {"CSI ? 1049 h", "DECSET 1049", "xterm",     "Saves the cursor, then switches to the alternate screen and clears it."}),
    dec(2004, kFlag<&Modes::bracketedPaste>,                 {"CSI ? 2004 h", "DECSET 2004", "xterm",     "Brackets pasted text."}),
    dec(2026, kSynchronizedUpdate,                           {"CSI ? 2026 h", "DECSET 2026", "iTerm2",    "Holds the frame until the mode is reset, for 150 ms at most."}),
    dec(2027, kScreenFlag<&ScreenModes::graphemeClusters>,   {"CSI ? 2027 h", "DECSET 2027", "Contour",   "A grapheme cluster occupies one character position, as wide as the whole cluster."}),
    dec(2031, kFlag<&Modes::colorSchemeReports>,             {"CSI ? 2031 h", "DECSET 2031", "Contour",   "Reports when the colour scheme turns dark or light."}),
    dec(2048, kSizeReports,                                  {"CSI ? 2048 h", "DECSET 2048", "community", "Reports the size now and whenever it changes."}),
};
// clang-format on

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
  const TerminalSize& size = state.size;
  state.reply("\033[48;" + std::to_string(size.rows) + ';' + std::to_string(size.columns) + ';' +
              std::to_string(size.pixelHeight) + ';' + std::to_string(size.pixelWidth) + 't');
}

void reportColorScheme(TerminalState& state) {
  state.reply(state.prefersDark ? "\033[?997;1n" : "\033[?997;2n");
}

}  // namespace zolt::vt
