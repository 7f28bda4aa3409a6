#include "controls/TextField.h"

#include <QPainter>

#include "controls/ControlColors.h"
#include "controls/ControlMetrics.h"
#include "controls/FieldBox.h"

namespace zolt {

namespace {

constexpr int kInsideQt = 2;  // the base class's own margin on each side of the text
constexpr int kAboveAndBelow = 5;

}  // namespace

TextField::TextField(QWidget* parent) : QLineEdit(parent) {
  setFrame(false);
  constexpr int kTextMargin = KeyboardFocus::margin + kControlTextInset - kInsideQt;
  setTextMargins(kTextMargin, 0, kTextMargin, 0);
  // The style would fill the inside with this role; the field paints its own background.
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
    const QRectF shape = paintFieldBox(painter, rect(), hasFocus() ? colors.accent : colors.fieldBorder, colors.field);
    m_focus.drawRing(painter, shape, kFieldRadius);
  }
  QLineEdit::paintEvent(event);
}

}  // namespace zolt
