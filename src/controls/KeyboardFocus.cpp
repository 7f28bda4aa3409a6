#include "controls/KeyboardFocus.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QWidget>

#include "controls/ControlColors.h"

namespace zolt {

bool isKeyboardReason(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

// Keys with Control, Alt or Super are shortcuts of the window.
static bool isForTheWidget(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Shift:
      return false;
    default:
      return (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == Qt::NoModifier;
  }
}

KeyboardFocus::KeyboardFocus(QWidget& widget) : m_widget(widget) {
  m_widget.installEventFilter(this);
}

void KeyboardFocus::show(bool shown) {
  m_shown = shown;
  m_widget.update();
}

bool KeyboardFocus::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn: {
      const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
      // Focus returned by a window or menu leaves the ring as it was.
      if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) show(isKeyboardReason(reason));
      break;
    }
    case QEvent::KeyPress:
      if (isForTheWidget(static_cast<const QKeyEvent&>(*event))) show(true);
      break;
    case QEvent::MouseButtonPress:
      show(false);
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

void KeyboardFocus::drawRing(QPainter& painter, const QRectF& shape, double radius) const {
  if (!m_shown || !m_widget.hasFocus()) return;
  constexpr double kOutside = margin / 2.0;
  painter.save();
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ControlColors(m_widget.palette()).ring, margin - 0.5));
  painter.drawRoundedRect(shape.adjusted(-kOutside, -kOutside, kOutside, kOutside), radius + kOutside,
                          radius + kOutside);
  painter.restore();
}

}  // namespace zolt
