#include "vt/Terminal.h"
#include "vt/state/InputModes.h"

namespace zolt::vt {

std::string Terminal::keyBytes(const KeyEvent& event) const {
  return vt::keyBytes(event, inputModes(m_state));
}

std::string Terminal::mouseBytes(const MouseEvent& event) {
  return m_mouse.report(event, m_state.modes.mouse);
}

std::string Terminal::wheelBytes(int steps) const {
  return vt::wheelBytes(steps, inputModes(m_state));
}

std::string Terminal::pasteBytes(std::string_view text) const {
  return vt::pasteBytes(text, inputModes(m_state));
}

std::string Terminal::focusBytes(bool focused) const {
  return vt::focusBytes(focused, inputModes(m_state));
}

}  // namespace zolt::vt
