#include "vt/state/InputModes.h"

#include "vt/input/Paste.h"
#include "vt/state/TerminalState.h"

namespace zolt::vt {

InputModes inputModes(const TerminalState& state) {
  InputModes modes;
  modes.keyboard.applicationCursor = state.modes.applicationCursor;
  modes.keyboard.applicationKeypad = state.modes.applicationKeypad;
  modes.keyboard.numLockEndsKeypadMode = state.modes.numLockEndsKeypadMode;
  modes.keyboard.backarrowIsBackspace = state.modes.backarrowIsBackspace;
  modes.keyboard.newLine = state.screen.modes.newLine;
  modes.keyboard.altSendsEscape = state.modes.altSendsEscape && state.modes.metaSendsEscape;
  modes.keyboard.modifyOtherKeys = state.keyboard.modifyOtherKeys;
  modes.keyboard.formatOtherKeys = state.keyboard.formatOtherKeys;
  modes.keyboard.modifyCursorKeys = state.keyboard.modifyCursorKeys;
  modes.keyboard.modifyFunctionKeys = state.keyboard.modifyFunctionKeys;
  modes.keyboard.flags = state.keyboardFlags().current;
  modes.mouse = state.modes.mouse;
  modes.keyboardLocked = state.modes.keyboardLocked;
  modes.autoRepeat = state.modes.autoRepeat;
  modes.bracketedPaste = state.modes.bracketedPaste;
  modes.focusEvents = state.modes.focusEvents;
  modes.alternateScroll =
      state.modes.alternateScroll && state.screen.showsAlternate() && state.modes.mouse.tracking == MouseTracking::Off;
  return modes;
}

std::string keyBytes(const KeyEvent& event, const InputModes& modes) {
  const bool isHeldBack = event.action == KeyAction::Repeat && !modes.autoRepeat;
  if (modes.keyboardLocked || isHeldBack) return {};
  return encodeKey(event, modes.keyboard);
}

std::string wheelBytes(int steps, const InputModes& modes) {
  return modes.alternateScroll ? alternateScroll(steps, modes.keyboard.applicationCursor) : std::string();
}

std::string pasteBytes(std::string_view text, const InputModes& modes) {
  return encodePaste(text, modes.bracketedPaste);
}

std::string focusBytes(bool focused, const InputModes& modes) {
  return modes.focusEvents ? encodeFocus(focused) : std::string();
}

}  // namespace zolt::vt
