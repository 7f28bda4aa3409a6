#include "view/DropMark.h"

#include <QPainter>

#include "controls/ControlColors.h"

namespace zolt {

DropMark::DropMark(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void DropMark::paintEvent(QPaintEvent*) {
  constexpr int kFillAlpha = 60;
  constexpr double kLine = 2;
  QColor color = ControlColors(palette()).accent;
  QPainter painter(this);
  painter.setPen(QPen(color, kLine));
  color.setAlpha(kFillAlpha);
  painter.setBrush(color);
  painter.drawRect(QRectF(rect()).adjusted(kLine / 2, kLine / 2, -kLine / 2, -kLine / 2));
}

}  // namespace zolt
