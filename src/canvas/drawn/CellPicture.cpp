#include "canvas/drawn/CellPicture.h"

#include <QColor>
#include <QPainter>
#include <QPainterPathStroker>
#include <algorithm>

namespace zolt {

namespace {

int lengthOf(DevicePixels pixels) {
  return std::max(1, pixels.toInt());
}

// About an eighth of the cell's width.
int lightThickness(int width) {
  return std::max(1, (width + 4) / 8);
}

}  // namespace

CellPicture::CellPicture(const CellMetrics& cell)
    : m_columns{.size = lengthOf(cell.width), .thickness = lightThickness(lengthOf(cell.width))},
      m_rows{.size = lengthOf(cell.height), .thickness = m_columns.thickness},
      m_baseline(cell.baseline.toInt()),
      m_image(m_columns.size, m_rows.size, QImage::Format_Alpha8) {
  m_image.fill(0);
}

void CellPicture::fill(Span columns, Span rows, int coverage) {
  const int left = std::clamp(columns.begin, 0, width());
  const int right = std::clamp(columns.end, left, width());
  for (int y = std::max(0, rows.begin); y < std::min(rows.end, height()); ++y) {
    uchar* pixels = m_image.scanLine(y);
    std::transform(pixels + left, pixels + right, pixels + left,
                   [&](uchar before) { return std::max(before, static_cast<uchar>(coverage)); });
  }
}

void CellPicture::fill(const QPainterPath& area, int coverage) {
  QPainter painter(&m_image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillPath(area, QColor(0, 0, 0, coverage));
}

void CellPicture::stroke(const QPainterPath& path) {
  // As an area: the painter's own lines are not the same from both of their ends.
  QPainterPathStroker stroker;
  stroker.setWidth(thickness());
  stroker.setCapStyle(Qt::SquareCap);
  stroker.setJoinStyle(Qt::MiterJoin);
  fill(stroker.createStroke(path));
}

void CellPicture::invert() {
  for (int y = 0; y < height(); ++y) {
    uchar* pixels = m_image.scanLine(y);
    std::transform(pixels, pixels + width(), pixels, [](uchar before) { return static_cast<uchar>(kWholly - before); });
  }
}

GlyphMask CellPicture::mask() const {
  return GlyphMask::filled(QPoint(0, -m_baseline), QSize(width(), height()), [&](int x, int y) {
    const uchar coverage = m_image.constScanLine(y)[x];
    return qRgba(coverage, coverage, coverage, coverage);
  });
}

}  // namespace zolt
