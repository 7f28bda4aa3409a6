#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "vt/state/Palette.h"

namespace zolt::vt {

/// The colours of a terminal until a program changes them.
struct Theme {
  std::string_view name;
  Rgb foreground;
  Rgb background;
  Rgb cursor;
  Rgb selectionBackground;
  std::optional<Rgb> selectionText;  ///< none: selected text keeps its colours
  std::array<Rgb, 16> ansi;          ///< black, red, green, yellow, blue, magenta, cyan, white; then the bright ones
};

/// Our two themes. On each, the foreground and 14 of the 16 colours have a contrast of at least 4.5 to 1 with the
/// background (WCAG 2.1, 1.4.3) and of at least 3 to 1 with the selection. The other two, black and bright black on the
/// dark theme, white and bright white on the light one, are shades of the background that the usual text is read on;
/// text in them is left to the minimum contrast.
const Theme& darkTheme();
const Theme& lightTheme();

/// Makes a theme's colours the palette's defaults. Colours that a program has changed stay as they are.
void applyTheme(Palette& palette, const Theme& theme);

}  // namespace zolt::vt
