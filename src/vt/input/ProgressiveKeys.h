#pragma once

#include <string>

#include "vt/input/KeyTable.h"
#include "vt/input/Keyboard.h"

namespace zolt::vt {

/// Encodes the key as an escape code of the kitty keyboard protocol. `row` is the row of its key.
std::string encodeProgressive(const KeyEvent& event, const KeyRow& row, std::uint8_t flags);

}  // namespace zolt::vt
