#include "controls/TextField.h"

#include <QPainter>

#include "controls/ControlColors.h"

namespace zolt {

namespace {

constexpr int kRadius = 6;
constexpr int kPadding = 7;
constexpr int kAboveAndBelow = 5;

}  // namespace

TextField::TextField(QWidget* parent) : QLineEdit(parent) {
  setFrame(false);
  setTextMargins(kPadding + KeyboardFocus::margin, 0, kPadding + KeyboardFocus::margin, 0);
  // The style fills what is inside with this role; here the field paints its own.
  QPalette own;
  own.setColor(QPalette::Base, Qt::transparent);
  setPalette(own);
}

QSize TextField::sizeHint() const {
  return {QLineEdit::sizeHint().width(), fontMetrics().height() + 2 * (kAboveAndBelow + KeyboardFocus::margin)};
}

void TextField::paintEvent(QPaintEvent* event) {
  {
    const ControlColors colors(parentWidget() == nullptr ? palette() : parentWidget()->palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    constexpr double kInset = KeyboardFocus::margin + 0.5;
    const QRectF shape = QRectF(rect()).adjusted(kInset, kInset, -kInset, -kInset);
    painter.setPen(hasFocus() ? colors.accent : colors.fieldBorder);
    painter.setBrush(colors.field);
    painter.drawRoundedRect(shape, kRadius, kRadius);
    m_focus.drawRing(painter, shape, kRadius);
  }
  QLineEdit::paintEvent(event);
}

}  // namespace zolt
