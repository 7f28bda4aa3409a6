#pragma once

#include <string>

#include "text/TextAttributes.h"

namespace zolt {

/// Appends to `out` the SGR sequence (ECMA-48 8.3.117) after which text looks like `to`, where until now it looked like
/// `from`. Nothing where the two are equal. The initial style is that of ANSIParser, TextAttributes{}.
///
/// ANSIParser reads every style that it ever made back as it was, and the sequence means the same to other terminals as
/// far as they agree: a colour is one of the eight named ones or their bright ones where it is exactly that, else one
/// of the 256 (38;5;n), else 38;2;r;g;b. Clear text is hidden (8), and on a background reversed (7), for that is what
/// nearly always made it: the two differ elsewhere.
///
/// What no sequence says: a font size; a text's alpha other than 1, 0.5 (dim) and 0, all between being written as dim;
/// a background's alpha; a component that is no whole number of 255ths, which is rounded, or beyond 2^53 of them.
void appendSGR(std::string& out, const TextAttributes& from, const TextAttributes& to);

}  // namespace zolt
