#pragma once

#include <string>
#include <string_view>

namespace zolt::vt {

/// Encodes pasted text for the program. Line ends (CR LF, LF or CR) become CR, which is what Enter sends; control
/// characters except TAB are removed; invalid UTF-8 becomes U+FFFD. Empty if nothing is left.
///
/// `bracketed` (mode 2004) encloses the text in CSI 200 ~ and CSI 201 ~, so that the program can tell it from typing.
/// The text cannot contain the closing bracket, because ESC and U+009B are removed.
std::string encodePaste(std::string_view text, bool bracketed);

/// Encodes that the window has gained or lost focus (mode 1004).
std::string encodeFocus(bool focused);

}  // namespace zolt::vt
