#include "canvas/GlyphMask.h"

#include <QColor>
#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QRect>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cmath>

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

// Of a pixel that was black and has become white in these shares.
constexpr QRgb coverageOf(QRgb pixel) {
  return (pixel & RGB_MASK) | (pixel & 0xFF00) << 16;
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
  return filled(bounds.topLeft() + area.topLeft(), area.size(),
                [&](int x, int y) { return coverageOf(line(image, area.top() + y)[area.left() + x]); });
}

namespace {

// The cluster in white on nothing, at `scale`, with a margin around its room for what overhangs.
QImage clusterPicture(const QTextLayout& layout, const ClusterRoom& room, QPoint margin, QPointF offset, double scale) {
  QImage image(room.width.toInt() + 2 * margin.x(), room.height.toInt() + 2 * margin.y(),
               QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setPen(Qt::white);
  painter.translate(margin.x() + offset.x(), margin.y() + room.baseline.toInt() + offset.y());
  painter.scale(scale, scale);
  layout.draw(&painter, QPointF(0, -layout.lineAt(0).ascent()));
  return image;
}

constexpr bool isWhite(QRgb pixel) {
  return qRed(pixel) == qAlpha(pixel) && qGreen(pixel) == qAlpha(pixel) && qBlue(pixel) == qAlpha(pixel);
}

// The part of a picture that is not transparent, as a mask.
GlyphMask maskOf(const QImage& image, QPoint margin, const ClusterRoom& room) {
  QRect area;
  bool isColored = false;
  for (int y = 0; y < image.height(); ++y) {
    const QRgb* pixels = line(image, y);
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(pixels[x]) == 0) continue;
      area |= QRect(x, y, 1, 1);
      isColored = isColored || !isWhite(pixels[x]);
    }
  }
  GlyphMask mask =
      GlyphMask::filled(area.topLeft() - margin - QPoint(0, room.baseline.toInt()), area.size(), [&](int x, int y) {
        const QRgb pixel = line(image, area.top() + y)[area.left() + x];
        return isColored ? pixel : coverageOf(pixel);
      });
  mask.isColored = isColored;
  return mask;
}

}  // namespace

GlyphMask shapedCluster(const QString& cluster, const QFont& font, const ClusterRoom& room) {
  QTextLayout layout(cluster, font);
  QTextOption option;
  option.setWrapMode(QTextOption::NoWrap);
  layout.setTextOption(option);
  layout.beginLayout();
  QTextLine shaped = layout.createLine();
  if (!shaped.isValid()) return {};
  shaped.setLineWidth(1e6);
  layout.endLayout();
  const QPoint margin(room.width.toInt(), room.height.toInt());
  const auto wide = static_cast<double>(room.width.value);
  const double natural = shaped.naturalTextWidth();
  // In the middle of its cells; a font's own cell that is wider by a rounding is no reason to shrink it.
  const double scale = natural > wide * 1.02 ? wide / natural : 1;
  const QPointF offset(std::floor((wide - natural * scale) / 2), 0);
  GlyphMask mask = maskOf(clusterPicture(layout, room, margin, offset, scale), margin, room);
  // Fonts for other scripts, and emoji, are often higher than this font's row.
  const int top = mask.top + room.baseline.toInt();
  const auto height = static_cast<int>(room.height.value);
  if (mask.empty() || (top >= 0 && top + mask.height <= height) || mask.height == 0) return mask;
  const double fitting = std::min(1.0, static_cast<double>(height) / mask.height);
  const double shift = fitting < 1 ? -mask.top * fitting - room.baseline.toDouble()
                                   : (top < 0 ? -top : static_cast<double>(height - top - mask.height));
  return maskOf(clusterPicture(layout, room, margin, QPointF(std::floor((wide - natural * scale * fitting) / 2), shift),
                               scale * fitting),
                margin, room);
}

}  // namespace zolt
