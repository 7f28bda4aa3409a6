#pragma once

#include <string>

#include "vt/KeyTable.h"
#include "vt/Keyboard.h"

namespace zolt::vt {

/// The character that a key types, as the layout has it, with Shift where that is held; 0 where it is not known.
char32_t layoutCharacter(const KeyEvent& event);

/// What `event` types, were it not for Control, Alt and the like; no control characters. Empty where it types nothing.
std::u32string typedText(const KeyEvent& event, const KeyRow& row);

/// The same press on the main part of the keyboard, for a key of kind Keypad.
KeyEvent offTheKeypad(const KeyEvent& event, const KeyRow& row);

}  // namespace zolt::vt
