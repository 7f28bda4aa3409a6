#pragma once

#include <cstddef>
#include <string_view>

#include "vt/ControlSequence.h"

namespace zolt::vt {

/// Short ways for what begins and ends in the same piece of input, and has nothing unusual in it. Whatever else there
/// is goes by the parser's table.

/// The control sequence that `bytes` begin with goes into `sequence`: how many bytes it is, else 0.
std::size_t takeControlSequence(std::string_view bytes, ControlSequence& sequence);

/// The character that begins at `text`, all of it before `end`, and its `size` in bytes; 0 where it is ASCII, is not
/// whole or is ill-formed.
char32_t wellFormedScalar(const char* text, const char* end, std::size_t& size);

}  // namespace zolt::vt
