#pragma once

#include <QFont>
#include <QPoint>
#include <QRawFont>
#include <QRgb>
#include <QSize>
#include <QString>
#include <cstdint>
#include <vector>

#include "canvas/CanvasPixels.h"
#include "canvas/MaskBlend.h"

namespace zolt {

/// The picture of one glyph, or of the glyphs of one cluster: how much of each pixel it covers.
struct GlyphMask {
  /// Of the first pixel, in device pixels from the left of the glyph's cell and from the baseline; negative to the left
  /// and above.
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  /// Row by row from the top, `stride` pixels each, those past the width not covered. A byte for red, green and blue
  /// each: 0 not at all, 255 wholly; they differ where the font is smoothed by subpixels. Alpha is as green.
  std::vector<QRgb> coverage;
  /// The glyph has colours of its own, as emoji have: `coverage` are its pixels, premultiplied by their alpha.
  bool isColored = false;

  bool empty() const { return coverage.empty(); }
  /// The pixels from one row to the next: the width, rounded up for `blendMask`.
  int stride() const { return (width + kMaskRowUnit - 1) / kMaskRowUnit * kMaskRowUnit; }
  QRgb at(int x, int y) const { return coverage[static_cast<std::size_t>(y * stride() + x)]; }

  /// A mask of `size`, with its first pixel at `place`. `coverageAt(x, y)` tells what stands there.
  template <class CoverageAt>
  static GlyphMask filled(QPoint place, QSize size, CoverageAt coverageAt) {
    GlyphMask mask{.left = place.x(), .top = place.y(), .width = size.width(), .height = size.height(), .coverage = {}};
    mask.coverage.resize(static_cast<std::size_t>(mask.stride()) * static_cast<std::size_t>(mask.height));
    for (int y = 0; y < mask.height; ++y) {
      QRgb* pixels = mask.coverage.data() + static_cast<std::ptrdiff_t>(y) * mask.stride();
      for (int x = 0; x < mask.width; ++x) {
        pixels[x] = coverageAt(x, y);
      }
    }
    return mask;
  }

  /// The glyph as Qt paints it, antialiasing and hinting included.
  static GlyphMask of(const QRawFont& font, std::uint32_t glyph);
};

/// The room that a cluster has: its cells, and the place of the baseline in them.
struct ClusterRoom {
  DevicePixels width;
  DevicePixels height;
  DevicePixels baseline;
};

/// What becomes of a cluster that is wider than its cells, or narrower: letters keep their height as far as they can,
/// a picture its proportions; a syllable of several cells grows towards their edges.
enum class ClusterShape { Letters, Syllable, Emoji };

/// A cluster as Qt shapes and paints it, from whichever font has it, made to fit its cells; wide letters may reach over
/// their edges by a tenth.
GlyphMask shapedCluster(const QString& cluster, const QFont& font, const ClusterRoom& room,
                        ClusterShape shape = ClusterShape::Letters);

}  // namespace zolt
