#include "panes/PaneGrip.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "controls/ControlColors.h"

namespace zolt {

PaneGrip::PaneGrip(QWidget* parent) : QWidget(parent) {
  setFixedSize(size);
  setCursor(Qt::OpenHandCursor);
  setToolTip(tr("Drag this split to another place"));
  hide();
}

void PaneGrip::showOn(const QRect& pane) {
  move(pane.left() + (pane.width() - width()) / 2, pane.top());
  show();
  raise();
}

// A row of dots on a plate that hangs from the edge.
void PaneGrip::paintEvent(QPaintEvent*) {
  constexpr int kDots = 3;
  constexpr qreal kDot = 3;
  constexpr qreal kGap = 4;
  const ControlColors colors(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(mixed(colors.window, colors.text, m_pressedAt || underMouse() ? 0.3 : 0.2));
  painter.drawRoundedRect(QRectF(0, -height(), width(), 2 * height()), 5, 5);
  painter.setBrush(mixed(colors.window, colors.text, 0.8));
  qreal x = (width() - kDots * kDot - (kDots - 1) * kGap) / 2;
  for (int dot = 0; dot < kDots; ++dot) {
    painter.drawEllipse(QRectF(x, (height() - kDot) / 2, kDot, kDot));
    x += kDot + kGap;
  }
}

void PaneGrip::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) m_pressedAt = event->pos();
}

void PaneGrip::mouseMoveEvent(QMouseEvent* event) {
  if (!m_pressedAt || (event->pos() - *m_pressedAt).manhattanLength() < QApplication::startDragDistance()) return;
  m_pressedAt.reset();
  Q_EMIT dragged();
}

void PaneGrip::mouseReleaseEvent(QMouseEvent*) {
  m_pressedAt.reset();
}

void PaneGrip::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  if (!m_pressedAt) hide();
}

}  // namespace zolt
