#include "controls/Hairline.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace zolt {

void drawHairline(QPainter& painter, const QRect& line, const QColor& color) {
  const QTransform& toDevice = painter.deviceTransform();
  const QRectF exact = toDevice.mapRect(QRectF(line));
  const double left = std::round(exact.left());
  const QRectF snapped(left, std::round(exact.top()), std::round(exact.right()) - left,
                       std::max(std::floor(exact.height()), 1.0));
  painter.fillRect(toDevice.inverted().mapRect(snapped), color);
}

}  // namespace zolt
