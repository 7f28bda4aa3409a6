#pragma once

#include <cstddef>
#include <string_view>

#include "vt/parser/ControlSequence.h"

namespace zolt::vt {

/// Scans the control sequence at the start of `bytes` in one go, without the parser's state machine. Returns its
/// length, or 0 if it is incomplete or unusual: such a sequence is left to the state machine.
std::size_t scanControlSequence(std::string_view bytes, ControlSequence& sequence);

}  // namespace zolt::vt
