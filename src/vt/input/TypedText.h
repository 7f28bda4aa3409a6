#pragma once

#include <string>

#include "vt/input/KeyTable.h"
#include "vt/input/Keyboard.h"

namespace zolt::vt {

/// The character that a key types in the layout, with Shift if it is held; 0 if unknown.
char32_t layoutCharacter(const KeyEvent& event);

/// What `event` would type without Control, Alt and so on; no control characters. Empty if it types nothing.
std::u32string typedText(const KeyEvent& event, const KeyRow& row);

/// The equivalent event on the main part of the keyboard, for a key of kind Keypad.
KeyEvent mainKeyboardEvent(const KeyEvent& event, const KeyRow& row);

}  // namespace zolt::vt
