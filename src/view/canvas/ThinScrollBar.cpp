#include "view/canvas/ThinScrollBar.h"

#include <QPainter>
#include <QStyleOptionSlider>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace zolt {

namespace {

constexpr int kThumbWidth = 6;
constexpr int kShortestThumb = 24;
constexpr int kMarkWidth = 8;
constexpr int kMarkHeight = 2;
constexpr std::chrono::milliseconds kVisibleFor{1200};
constexpr QRgb kThumb = 0x73FFFFFF;
constexpr QRgb kThumbHeld = 0xB3FFFFFF;
constexpr QRgb kFoundMark = 0xFFCFB04A;

}  // namespace

ThinScrollBar::ThinScrollBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::ArrowCursor);
  setAccessibleName(tr("Scroll bar"));
  // The style's own arithmetic for dragging and paging follows this sheet's geometry: no buttons, a full-length groove.
  setStyleSheet(QStringLiteral("QScrollBar:vertical { width: %1px; margin: 0; border: none; background: black; }"
                               "QScrollBar::handle:vertical { min-height: %2px; }"
                               "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }")
                    .arg(breadth)
                    .arg(kShortestThumb));
  m_fade.setSingleShot(true);
  m_fade.setInterval(kVisibleFor);
  connect(&m_fade, &QTimer::timeout, this, qOverload<>(&QWidget::update));
}

QSize ThinScrollBar::sizeHint() const {
  return {breadth, kShortestThumb};
}

void ThinScrollBar::flash() {
  m_fade.start();
  update();
}

void ThinScrollBar::setMarks(std::vector<BarMark> marks) {
  m_marks = std::move(marks);
  update();
}

// Where several fall on the same pixels they are one.
void ThinScrollBar::paintMarks(QPainter& painter) const {
  const double length = height() - kMarkHeight;
  double paintedTo = -1;
  for (const BarMark& mark : m_marks) {
    const double top = std::max(std::floor(mark.begin * length), paintedTo);
    const double bottom = std::max(std::ceil(mark.end * length), top) + kMarkHeight;
    if (bottom <= paintedTo) continue;
    painter.fillRect(QRectF((width() - kMarkWidth) / 2.0, top, kMarkWidth, bottom - top), QColor::fromRgb(kFoundMark));
    paintedTo = bottom;
  }
}

QRect ThinScrollBar::thumb() const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  const QRect slider = style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
  return {(width() - kThumbWidth) / 2, slider.top() + 2, kThumbWidth, std::max(slider.height() - 4, kThumbWidth)};
}

void ThinScrollBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::black);
  paintMarks(painter);
  const bool useful = maximum() > minimum();
  if (!useful || !(m_hovered || isSliderDown() || m_fade.isActive())) return;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgba(m_hovered || isSliderDown() ? kThumbHeld : kThumb));
  painter.drawRoundedRect(thumb(), kThumbWidth / 2.0, kThumbWidth / 2.0);
}

void ThinScrollBar::enterEvent(QEnterEvent* event) {
  m_hovered = true;
  update();
  QScrollBar::enterEvent(event);
}

void ThinScrollBar::leaveEvent(QEvent* event) {
  m_hovered = false;
  m_fade.start();
  update();
  QScrollBar::leaveEvent(event);
}

void ThinScrollBar::sliderChange(SliderChange change) {
  QScrollBar::sliderChange(change);
  if (change == SliderValueChange) update();
}

}  // namespace zolt
