#pragma once

#include <string>
#include <string_view>

namespace zolt::vt {

/// What a program is sent when `text` is pasted: each line end (CR LF, LF or CR) as CR, as Enter sends it; TAB and
/// every character that is no control; what is not UTF-8 as U+FFFD. Empty where nothing of the text is left.
///
/// `bracketed` (private mode 2004) puts CSI 200 ~ before it and CSI 201 ~ behind, so that the program knows that nobody
/// typed it. The text cannot break out of its brackets: no ESC and no U+009B is left in it.
std::string encodePaste(std::string_view text, bool bracketed);

/// The window got or lost the keyboard (private mode 1004).
std::string encodeFocus(bool focused);

}  // namespace zolt::vt
