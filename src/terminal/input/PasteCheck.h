#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zolt {

/// What a paste would do, for asking the user before it does. A value.
struct PasteCheck {
  /// There are several lines, a line end or control characters, and the program has not asked for brackets around a
  /// paste: it would take them for typing.
  bool mustAsk = false;
  /// Lines with text or with an end: 1 for "a" and for "a\n", 2 for "a\n\n".
  std::size_t lines = 0;
  bool hasControls = false;      ///< other than TAB and line ends; they are removed from a paste
  bool endsWithLineEnd = false;  ///< the last line would be executed
  /// The text's beginning in UTF-8 as something to see: "␍\n" for a line end, the last of all without "\n", pictures
  /// for other controls, and "…" in place of what is left out.
  std::string preview;
};

inline constexpr std::size_t kPreviewLines = 10;
inline constexpr int kPreviewColumns = 80;  ///< of a line, without "…" and "␍"

/// `text` is any bytes; `bracketed` is mode 2004. Linear in the text. Pure, any thread.
PasteCheck checkPaste(std::string_view text, bool bracketed);

}  // namespace zolt
