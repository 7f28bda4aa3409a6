#pragma once

#include <QRgb>
#include <cstddef>

namespace zolt {

/// Masks have rows of a multiple of this many pixels.
constexpr int kMaskRowUnit = 8;

/// Mixes `color` into `height` rows of pixels, `pitch` pixels apart, each component in the share that `coverage` gives
/// for it: 0 not at all, 255 wholly, divided by 255 and rounded. The alpha of `color` makes the shares smaller. What is
/// covered becomes opaque to the same degree: pixels are premultiplied.
///
/// A row takes `width` pixels in both, a multiple of kMaskRowUnit; the rows of `coverage` follow one another. Pixels
/// that are not covered stay as they are, but are written. Pure otherwise.
void blendMask(QRgb* pixels, std::ptrdiff_t pitch, const QRgb* coverage, int width, int height, QRgb color);

}  // namespace zolt
