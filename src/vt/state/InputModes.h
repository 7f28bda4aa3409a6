#pragma once

#include <string>
#include <string_view>

#include "vt/input/Keyboard.h"
#include "vt/input/Mouse.h"

namespace zolt::vt {

struct TerminalState;

/// What the user's input depends on, as the program has set it at one moment. A value.
struct InputModes {
  KeyboardModes keyboard;
  MouseModes mouse;
  bool keyboardLocked = false;
  bool autoRepeat = true;
  bool bracketedPaste = false;
  bool focusEvents = false;
  /// The wheel moves the cursor: on the alternate screen, unless the mouse is tracked (mode 1007).
  bool alternateScroll = false;

  friend bool operator==(const InputModes&, const InputModes&) = default;
};

InputModes inputModes(const TerminalState& state);

// The bytes to write to the program, empty if nothing is sent. Pure functions, for any thread.
std::string keyBytes(const KeyEvent& event, const InputModes& modes);
std::string wheelBytes(int steps, const InputModes& modes);  ///< `steps` is positive away from the user
std::string pasteBytes(std::string_view text, const InputModes& modes);
std::string focusBytes(bool focused, const InputModes& modes);

}  // namespace zolt::vt
