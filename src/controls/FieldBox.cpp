#include "controls/FieldBox.h"

#include <QPainter>

#include "controls/KeyboardFocus.h"

namespace zolt {

QRectF paintFieldBox(QPainter& painter, const QRect& area, const QColor& border, const QColor& ground) {
  constexpr double kInset = KeyboardFocus::margin + 0.5;
  const QRectF shape = QRectF(area).adjusted(kInset, kInset, -kInset, -kInset);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(border);
  painter.setBrush(ground);
  painter.drawRoundedRect(shape, kFieldRadius, kFieldRadius);
  return shape;
}

}  // namespace zolt
