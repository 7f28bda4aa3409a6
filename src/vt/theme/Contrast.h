#pragma once

#include "vt/state/Palette.h"

namespace zolt::vt {

/// The contrast ratio of two colours, 1 to 21, as WCAG 2.1 defines it; the order does not matter.
double contrastRatio(const Rgb& one, const Rgb& other);

/// `text`, made lighter or darker just enough for a contrast of `minimum` with `background`; unchanged if it has that.
///
/// It stays on its side of the background's luminance if that side has room, else it moves to the other. If neither has
/// room, the result is black or white, whichever has more contrast, and so it is for a grey that moves: it had no hue
/// to keep, and is read best so. A hue is kept: a colour that gets darker keeps its chromaticity, and so does one that
/// gets lighter, until a component is at its maximum; from there on it gets paler.
Rgb withContrast(const Rgb& text, const Rgb& background, double minimum);

}  // namespace zolt::vt
