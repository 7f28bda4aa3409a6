#pragma once

#include <string>

#include "vt/KeyTable.h"
#include "vt/Keyboard.h"

namespace zolt::vt {

/// Whether xterm's encoding has a place for the key with its modifiers.
bool hasLegacyEncoding(const KeyEvent& event, const KeyRow& row);

/// The key as xterm has it, whatever the flags and the action are. `row` is that of its key.
std::string encodeLegacy(const KeyEvent& event, const KeyRow& row, const KeyboardModes& modes);

}  // namespace zolt::vt
