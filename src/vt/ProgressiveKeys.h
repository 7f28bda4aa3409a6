#pragma once

#include <string>

#include "vt/KeyTable.h"
#include "vt/Keyboard.h"

namespace zolt::vt {

/// The key as an escape code of the progressive protocol, with all that `flags` ask for; `row` is that of its key.
std::string encodeProgressive(const KeyEvent& event, const KeyRow& row, std::uint8_t flags);

}  // namespace zolt::vt
