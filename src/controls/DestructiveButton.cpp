#include "controls/DestructiveButton.h"

#include <QPainter>

#include "controls/ControlColors.h"
#include "controls/FieldBox.h"

namespace zolt {

namespace {

constexpr QSize kPadding{14, 5};

}  // namespace

DestructiveButton::DestructiveButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
  // Takes the focus when clicked, so that a field that is being edited is committed first.
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize DestructiveButton::sizeHint() const {
  return QSize(fontMetrics().horizontalAdvance(text()), fontMetrics().height()) +
         2 * (kPadding + QSize(KeyboardFocus::margin, KeyboardFocus::margin));
}

void DestructiveButton::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  const QColor ground = isDown() ? mixed(colors.field, colors.text, 0.08) : colors.field;
  const QRectF shape = paintFieldBox(painter, rect(), colors.fieldBorder, ground);
  painter.setPen(colors.destructive);
  painter.drawText(rect(), Qt::AlignCenter, text());
  m_focus.drawRing(painter, shape, kFieldRadius);
}

}  // namespace zolt
