#include "settings/views/FormScrollBar.h"

#include <QPainter>
#include <QStyleOptionSlider>

#include "settings/views/FormColors.h"

namespace zolt {

namespace {

constexpr int kThumb = 6;
constexpr int kShortestThumb = 32;

}  // namespace

FormScrollBar::FormScrollBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {
  setAccessibleName(tr("Scroll bar"));
  // The style's own arithmetic for dragging and paging follows this sheet's geometry: no buttons, a full-length groove.
  setStyleSheet(QStringLiteral("QScrollBar:vertical { width: %1px; margin: 0; border: none; background: transparent; }"
                               "QScrollBar::handle:vertical { min-height: %2px; }"
                               "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }")
                    .arg(breadth)
                    .arg(kShortestThumb));
}

QSize FormScrollBar::sizeHint() const {
  return {breadth, kShortestThumb};
}

void FormScrollBar::paintEvent(QPaintEvent*) {
  if (maximum() <= minimum()) return;
  QStyleOptionSlider option;
  initStyleOption(&option);
  const QRect slider = style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
  const QRectF thumb((width() - kThumb) / 2.0, slider.top() + 3, kThumb, slider.height() - 6);
  // The sheet has made this widget's own background transparent.
  const FormColors colors(parentWidget()->palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(mixed(colors.window, colors.text, underMouse() || isSliderDown() ? 0.5 : 0.3));
  painter.drawRoundedRect(thumb, kThumb / 2.0, kThumb / 2.0);
}

void FormScrollBar::enterEvent(QEnterEvent* event) {
  QScrollBar::enterEvent(event);
  update();
}

void FormScrollBar::leaveEvent(QEvent* event) {
  QScrollBar::leaveEvent(event);
  update();
}

}  // namespace zolt
