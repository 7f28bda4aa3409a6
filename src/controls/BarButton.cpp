#include "controls/BarButton.h"

#include <QPainter>
#include <algorithm>

#include "controls/ControlColors.h"
#include "controls/TextScale.h"
#include "symbols/Symbol.h"

namespace zolt {

namespace {

constexpr int kHeight = 26;
constexpr int kWidth = 28;
constexpr int kRadius = 6;
constexpr int kSymbolSize = 13;

}  // namespace

BarButton::BarButton(const QString& symbolName, const QString& letters, const QString& name, QWidget* parent)
    : QAbstractButton(parent), m_symbol(symbolName) {
  setText(letters);
  setToolTip(name);
  setAccessibleName(name);
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize BarButton::sizeHint() const {
  const int letters = fontMetrics().horizontalAdvance(text());
  const QSize shape(std::max(scaledToText(kWidth, font()), letters), scaledToText(kHeight, font()));
  return shape + 2 * QSize(KeyboardFocus::margin, KeyboardFocus::margin);
}

void BarButton::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  constexpr double kInset = KeyboardFocus::margin;
  const QRectF shape = QRectF(rect()).adjusted(kInset, kInset, -kInset, -kInset);
  painter.setPen(Qt::NoPen);
  if (isChecked()) {
    painter.setBrush(mixed(colors.card, colors.accent, isDown() ? 0.45 : 0.3));
    painter.drawRoundedRect(shape, kRadius, kRadius);
  } else if (isDown() || underMouse()) {
    painter.setBrush(mixed(colors.card, colors.text, isDown() ? 0.2 : 0.1));
    painter.drawRoundedRect(shape, kRadius, kRadius);
  }
  if (!m_symbol.isEmpty()) {
    const int size = scaledToText(kSymbolSize, font());
    QRectF icon(0, 0, size, size);
    icon.moveCenter(shape.center());
    symbol(m_symbol, colors.text).paint(&painter, icon.toAlignedRect());
  } else {
    painter.setPen(isChecked() ? colors.text : colors.secondary);
    painter.drawText(shape, Qt::AlignCenter, text());
  }
  m_focus.drawRing(painter, shape, kRadius);
}

void BarButton::enterEvent(QEnterEvent* event) {
  QAbstractButton::enterEvent(event);
  update();
}

void BarButton::leaveEvent(QEvent* event) {
  QAbstractButton::leaveEvent(event);
  update();
}

}  // namespace zolt
