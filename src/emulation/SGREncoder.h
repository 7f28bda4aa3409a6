#pragma once

#include <string>

#include "text/TextAttributes.h"

namespace zolt {

/// Appends to `out` the SGR sequence (ECMA-48 8.3.117) that changes the style from `from` to `to`; nothing if they are
/// equal. The initial style is that of ANSIParser, TextAttributes{}.
///
/// ANSIParser turns the sequence back into the same style, for every style that it can produce. Other terminals read it
/// alike as far as they agree with each other: a colour is written as one of the eight named or eight bright ones if it
/// is exactly that, else as one of the 256 (38;5;n), else as 38;2;r;g;b. Clear text is written as hidden (8), or as
/// reversed (7) if it has a background, since these nearly always produced it.
///
/// Not representable: a font size; a foreground alpha other than 1, 0.5 (dim) and 0 (anything between is written as
/// dim); a background's alpha; components that are not multiples of 1/255, which are rounded, or that exceed 2^53/255.
void appendSGR(std::string& out, const TextAttributes& from, const TextAttributes& to);

}  // namespace zolt
