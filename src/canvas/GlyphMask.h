#pragma once

#include <QFont>
#include <QRawFont>
#include <QRgb>
#include <QString>
#include <cstdint>
#include <vector>

#include "canvas/CanvasPixels.h"

namespace zolt {

/// The picture of one glyph, or of the glyphs of one cluster: how much of each pixel it covers.
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
  /// The glyph has colours of its own, as emoji have: `coverage` are its pixels, premultiplied by their alpha.
  bool isColored = false;

  bool empty() const { return coverage.empty(); }

  /// The glyph as Qt paints it, antialiasing and hinting included.
  static GlyphMask of(const QRawFont& font, std::uint32_t glyph);
};

/// The room that a cluster has: its cells, and the place of the baseline in them.
struct ClusterRoom {
  DevicePixels width;
  DevicePixels height;
  DevicePixels baseline;
};

/// A cluster as Qt shapes and paints it, from whichever font has it, made smaller where it would not fit its cells.
GlyphMask shapedCluster(const QString& cluster, const QFont& font, const ClusterRoom& room);

}  // namespace zolt
