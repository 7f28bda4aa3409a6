#pragma once

#include <string>

#include "vt/input/KeyTable.h"
#include "vt/input/Keyboard.h"

namespace zolt::vt {

/// Whether xterm can encode the key with its modifiers.
bool hasLegacyEncoding(const KeyEvent& event, const KeyRow& row);

/// Encodes the key as xterm does, regardless of the flags and the action. `row` is the row of its key.
std::string encodeLegacy(const KeyEvent& event, const KeyRow& row, const KeyboardModes& modes);

}  // namespace zolt::vt
