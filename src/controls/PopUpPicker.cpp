#include "controls/PopUpPicker.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include "controls/ControlColors.h"
#include "controls/ControlMetrics.h"
#include "controls/FieldBox.h"

namespace zolt {

namespace {

constexpr int kArrows = 24;  // width reserved for the arrows
constexpr int kAboveAndBelow = 5;
constexpr QSizeF kArrow{6.4, 3.2};
constexpr double kArrowGap = 2.4;  // from the middle to each arrow's foot

// Two arrow heads, one up and one down, around a point.
QPainterPath arrowsAt(const QPointF& middle) {
  QPainterPath path;
  for (const int direction : {-1, 1}) {
    const QPointF foot = middle + QPointF(0, direction * kArrowGap);
    path.moveTo(foot - QPointF(kArrow.width() / 2, 0));
    path.lineTo(foot + QPointF(0, direction * kArrow.height()));
    path.lineTo(foot + QPointF(kArrow.width() / 2, 0));
  }
  return path;
}

}  // namespace

PopUpPicker::PopUpPicker(QWidget* parent) : QComboBox(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setMaxVisibleItems(16);
}

void PopUpPicker::setTone(Tone tone) {
  m_tone = tone;
  update();
}

QSize PopUpPicker::sizeHint() const {
  return {200, fontMetrics().height() + 2 * (kAboveAndBelow + KeyboardFocus::margin)};
}

QSize PopUpPicker::minimumSizeHint() const {
  return {100, sizeHint().height()};
}

void PopUpPicker::showPopup() {
  QComboBox::showPopup();
  // The style makes the list as wide as the widget, including the margin for the focus ring.
  QWidget& list = *view()->window();
  const int left = mapToGlobal(QPoint(KeyboardFocus::margin, 0)).x();
  list.setGeometry(left, list.y(), width() - 2 * KeyboardFocus::margin, list.height());
}

void PopUpPicker::wheelEvent(QWheelEvent* event) {
  // The wheel is for scrolling the form: it must not change a setting under the pointer.
  event->ignore();
}

void PopUpPicker::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  const QRectF shape = paintFieldBox(painter, rect(), colors.fieldBorder, colors.field);

  const bool mirrored = isRightToLeft();
  const QRectF arrows(mirrored ? shape.left() : shape.right() - kArrows, shape.top(), kArrows, shape.height());
  painter.setPen(QPen(colors.secondary, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(arrowsAt(arrows.center()));

  constexpr int kTextEdge = KeyboardFocus::margin + kControlTextInset;
  QRectF inside = QRectF(rect()).adjusted(kTextEdge, 0, -kTextEdge, 0);
  mirrored ? inside.setLeft(arrows.right()) : inside.setRight(arrows.left());
  painter.setPen(m_tone == Tone::Primary ? colors.text : colors.secondary);
  painter.drawText(inside, static_cast<int>(Qt::AlignLeading | Qt::AlignVCenter) | Qt::TextSingleLine,
                   fontMetrics().elidedText(currentText(), Qt::ElideMiddle, static_cast<int>(inside.width())));
  m_focus.drawRing(painter, shape, kFieldRadius);
}

}  // namespace zolt
