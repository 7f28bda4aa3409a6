#pragma once

#include <QRawFont>
#include <QRgb>
#include <cstdint>
#include <vector>

namespace zolt {

/// The picture of one glyph: how much of each pixel it covers.
struct GlyphMask {
  /// Of the first pixel, in device pixels from the left of the glyph's cell and from the baseline; negative to the left
  /// and above.
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  /// Row by row from the top, a byte for red, green and blue each: 0 not at all, 255 wholly. They differ where the font
  /// is smoothed by subpixels.
  std::vector<QRgb> coverage;

  bool empty() const { return coverage.empty(); }

  /// The glyph as Qt paints it, antialiasing and hinting included.
  static GlyphMask of(const QRawFont& font, std::uint32_t glyph);
};

}  // namespace zolt
