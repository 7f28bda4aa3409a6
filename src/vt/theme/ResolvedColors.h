#pragma once

#include <optional>

#include "vt/cells/Style.h"
#include "vt/state/Palette.h"

namespace zolt::vt {

/// What a cell's colours depend on besides its style and the palette.
struct ResolveOptions {
  bool boldIsBright = false;     ///< bold text in one of the first 8 colours gets the bright one
  bool reverseScreen = false;    ///< DECSCNM: the default foreground and background are exchanged
  double minimumContrast = 1.0;  ///< of text with its background, 1...21; 1: no minimum
  bool isGraphic = false;  ///< a block element or line: a picture, whose colours are kept whatever the minimum says
};

/// The colours that a cell is painted with.
struct ResolvedColors {
  Rgb foreground;
  std::optional<Rgb> background;  ///< none: the terminal's ground, which may be translucent, shows through
  Rgb underline;

  friend bool operator==(const ResolvedColors&, const ResolvedColors&) = default;
};

/// The ground of the whole terminal: its default background, in a reversed screen its default foreground.
const Rgb& groundColor(const Palette& palette, bool reverseScreen);

/// The colours of a cell.
///
/// Faint text is mixed half and half with its background, but keeps a contrast of 3 to 1 if it had that. Hidden text
/// has the colour of its background, and so has its underline. Inverse exchanges the text's colour and its background;
/// an underline colour of its own is left alone. The minimum contrast is applied last.
ResolvedColors resolve(const Style& style, const Palette& palette, const ResolveOptions& options);

}  // namespace zolt::vt
