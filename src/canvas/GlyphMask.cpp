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

// How a cluster is drawn: its size in either direction, in shares of the font's, and from where, in pixels right of its
// room and below the baseline.
struct Placement {
  double across = 1;
  double down = 1;
  double x = 0;
  double y = 0;
};

// The cluster in white on nothing, with a margin around its room for what overhangs.
QImage clusterPicture(const QTextLayout& layout, const ClusterRoom& room, QPoint margin, const Placement& placement) {
  QImage image(room.width.toInt() + 2 * margin.x(), room.height.toInt() + 2 * margin.y(),
               QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setPen(Qt::white);
  painter.translate(margin.x() + placement.x, margin.y() + room.baseline.toInt() + placement.y);
  painter.scale(placement.across, placement.down);
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

// Letters that are narrower than this are hard to tell apart; those that are lower, at the size of text, too. So a
// letter that is too wide becomes as narrow as that first, then reaches over its cells by a little, and only then is
// made lower.
constexpr double kNarrowest = 0.72;
constexpr double kReach = 1.2;  // in widths of the room
// Syllables that leave room become wider, so that the gaps between them do not look like those between words.
constexpr double kWidest = 1.25;

// The pixels that are covered, without the blank at either side of the letters.
QRectF inkOf(const QTextLayout& layout) {
  QRectF ink;
  for (const QGlyphRun& run : layout.glyphRuns()) {  // whose own rectangle has the blank
    const QList<quint32> glyphs = run.glyphIndexes();
    const QList<QPointF> positions = run.positions();
    for (qsizetype i = 0; i < glyphs.size(); ++i) {
      ink |= run.rawFont().boundingRect(glyphs[i]).translated(positions[i]);
    }
  }
  return ink;
}

// In the middle of its room.
Placement placed(const QTextLayout& layout, const ClusterRoom& room, ClusterShape shape) {
  const auto wide = static_cast<double>(room.width.value);
  const double natural = layout.lineAt(0).naturalTextWidth();
  // A font's own cell that is wider by a rounding is no reason to shrink it.
  if (natural <= wide * 1.02) {
    const double across = shape == ClusterShape::Syllable ? std::clamp(wide / natural, 1.0, kWidest) : 1;
    return {.across = across, .x = std::floor((wide - natural * across) / 2)};
  }
  if (shape == ClusterShape::Emoji) return {.across = wide / natural, .down = wide / natural};
  const QRectF ink = inkOf(layout);
  const double width = std::min(natural, ink.width() + 1);
  const double across = std::clamp(wide / width, kNarrowest, 1.0);
  const double lower = std::min(wide * kReach / (width * across), 1.0);
  const double middle = width < natural ? ink.center().x() : natural / 2;
  return {.across = across * lower, .down = lower, .x = wide / 2 - middle * across * lower};
}

void layOut(QTextLayout& layout, const QFont& font) {
  QTextOption option;
  option.setWrapMode(QTextOption::NoWrap);
  layout.setTextOption(option);
  layout.setFont(font);
  layout.beginLayout();
  layout.createLine().setLineWidth(1e6);
  layout.endLayout();
}

bool lacksGlyph(const QTextLayout& layout) {
  const QList<QGlyphRun> runs = layout.glyphRuns();
  return std::ranges::any_of(runs, [](const QGlyphRun& run) { return run.glyphIndexes().contains(0); });
}

}  // namespace

GlyphMask shapedCluster(const QString& cluster, const QFont& font, const ClusterRoom& room, ClusterShape shape) {
  QTextLayout layout(cluster);
  if (shape == ClusterShape::Emoji) {
    // Qt takes each character from the first font that has it, and a keycap's digit not from that of the emoji. In a
    // single font the font's rules make one picture of all.
    QFont single = font;
    single.setStyleStrategy(QFont::NoFontMerging);
    layOut(layout, single);
  }
  if (shape != ClusterShape::Emoji || lacksGlyph(layout)) layOut(layout, font);
  const QPoint margin(room.width.toInt(), room.height.toInt());
  if (layout.lineCount() == 0) return {};
  Placement placement = placed(layout, room, shape);
  GlyphMask mask = maskOf(clusterPicture(layout, room, margin, placement), margin, room);
  // Fonts for other scripts, and emoji, are often higher than this font's row.
  const int top = mask.top + room.baseline.toInt();
  const auto height = static_cast<int>(room.height.value);
  if (mask.empty() || (top >= 0 && top + mask.height <= height) || mask.height == 0) return mask;
  const double fitting = std::min(1.0, static_cast<double>(height) / mask.height);
  placement.y = fitting < 1 ? -mask.top * fitting - room.baseline.toDouble()
                            : (top < 0 ? -top : static_cast<double>(height - top - mask.height));
  placement.down *= fitting;
  placement.across *= fitting;
  placement.x += (room.width.toDouble() / 2 - placement.x) * (1 - fitting);
  return maskOf(clusterPicture(layout, room, margin, placement), margin, room);
}

}  // namespace zolt
