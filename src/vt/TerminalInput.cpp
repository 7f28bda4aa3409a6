#include "vt/Terminal.h"
#include "vt/input/Paste.h"

namespace zolt::vt {

namespace {

KeyboardModes keyboardModes(const TerminalState& state) {
  KeyboardModes modes;
  modes.applicationCursor = state.modes.applicationCursor;
  modes.applicationKeypad = state.modes.applicationKeypad;
  modes.numLockEndsKeypadMode = state.modes.numLockEndsKeypadMode;
  modes.backarrowIsBackspace = state.modes.backarrowIsBackspace;
  modes.newLine = state.screen.modes.newLine;
  modes.altSendsEscape = state.modes.altSendsEscape && state.modes.metaSendsEscape;
  modes.modifyOtherKeys = state.keyboard.modifyOtherKeys;
  modes.formatOtherKeys = state.keyboard.formatOtherKeys;
  modes.modifyCursorKeys = state.keyboard.modifyCursorKeys;
  modes.modifyFunctionKeys = state.keyboard.modifyFunctionKeys;
  modes.flags = state.keyboardFlags().current;
  return modes;
}

}  // namespace

std::string Terminal::keyBytes(const KeyEvent& event) const {
  const bool isHeldBack = event.action == KeyAction::Repeat && !m_state.modes.autoRepeat;
  if (m_state.modes.keyboardLocked || isHeldBack) return {};
  return encodeKey(event, keyboardModes(m_state));
}

std::string Terminal::mouseBytes(const MouseEvent& event) {
  return m_mouse.report(event, m_state.modes.mouse);
}

std::string Terminal::wheelBytes(int steps) const {
  const bool isTracked = m_state.modes.mouse.tracking != MouseTracking::Off;
  if (!m_state.modes.alternateScroll || !screen().showsAlternate() || isTracked) return {};
  return alternateScroll(steps, m_state.modes.applicationCursor);
}

std::string Terminal::pasteBytes(std::string_view text) const {
  return encodePaste(text, m_state.modes.bracketedPaste);
}

std::string Terminal::focusBytes(bool focused) const {
  return m_state.modes.focusEvents ? encodeFocus(focused) : std::string();
}

}  // namespace zolt::vt
