#include "canvas/GlyphMask.h"

#include <QColor>
#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QRect>
#include <algorithm>
#include <iterator>

namespace zolt {

namespace {

constexpr int kMargin = 2;  // hinting and smoothing reach beyond the outline's bounds

QImage picture(const QRawFont& font, std::uint32_t glyph, QPoint baseline, QSize size) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(Qt::black);
  QGlyphRun run;
  run.setRawFont(font);
  run.setGlyphIndexes({glyph});
  run.setPositions({QPointF(0, 0)});
  QPainter painter(&image);
  painter.setPen(Qt::white);
  painter.drawGlyphRun(baseline, run);
  return image;
}

const QRgb* line(const QImage& image, int y) {
  return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

constexpr bool isCovered(QRgb pixel) {
  return (pixel & RGB_MASK) != 0;
}

// The smallest rectangle with all the pixels that are covered.
QRect coveredArea(const QImage& image) {
  QRect area;
  for (int y = 0; y < image.height(); ++y) {
    const QRgb* pixels = line(image, y);
    for (int x = 0; x < image.width(); ++x) {
      if (isCovered(pixels[x])) area |= QRect(x, y, 1, 1);
    }
  }
  return area;
}

}  // namespace

GlyphMask GlyphMask::of(const QRawFont& font, std::uint32_t glyph) {
  const QRect bounds = font.boundingRect(glyph).toAlignedRect().adjusted(-kMargin, -kMargin, kMargin, kMargin);
  const QImage image = picture(font, glyph, -bounds.topLeft(), bounds.size());
  const QRect area = coveredArea(image);
  GlyphMask mask{.left = bounds.left() + area.left(),
                 .top = bounds.top() + area.top(),
                 .width = area.width(),
                 .height = area.height(),
                 .coverage = {}};
  mask.coverage.reserve(static_cast<std::size_t>(area.width()) * static_cast<std::size_t>(area.height()));
  for (int y = area.top(); y <= area.bottom(); ++y) {
    const QRgb* pixels = line(image, y);
    std::transform(pixels + area.left(), pixels + area.right() + 1, std::back_inserter(mask.coverage),
                   [](QRgb pixel) { return pixel & RGB_MASK; });
  }
  return mask;
}

}  // namespace zolt
