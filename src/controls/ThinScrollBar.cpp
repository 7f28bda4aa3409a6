#include "controls/ThinScrollBar.h"

#include <QPainter>
#include <QStyleOptionSlider>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "controls/ControlColors.h"

namespace zolt {

namespace {

constexpr int kThumbWidth = 6;
constexpr int kThumbGap = 2;  // above and below the thumb
constexpr int kShortestThumb = 28;
constexpr int kMarkWidth = 8;
constexpr int kMarkHeight = 2;
constexpr std::chrono::milliseconds kVisibleFor{1200};
// The text colour's share in the thumb, over the background.
constexpr double kThumbShare = 0.4;
constexpr double kActiveThumbShare = 0.6;
constexpr QRgb kMatchMark = 0xFFCFB04A;

}  // namespace

ThinScrollBar::ThinScrollBar(Ground ground, QWidget* parent) : QScrollBar(Qt::Vertical, parent), m_ground(ground) {
  setAttribute(Qt::WA_OpaquePaintEvent, ground == Ground::Terminal);
  setCursor(Qt::ArrowCursor);
  setAccessibleName(tr("Scroll bar"));
  // With this style sheet the style's dragging and paging match what is painted: no buttons, a full-length groove.
  setStyleSheet(QStringLiteral("QScrollBar:vertical { width: %1px; margin: 0; border: none; background: %3; }"
                               "QScrollBar::handle:vertical { min-height: %2px; }"
                               "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }")
                    .arg(breadth)
                    .arg(kShortestThumb)
                    .arg(ground == Ground::Terminal ? QLatin1String("black") : QLatin1String("transparent")));
  m_fade.setSingleShot(true);
  m_fade.setInterval(kVisibleFor);
  connect(&m_fade, &QTimer::timeout, this, qOverload<>(&QWidget::update));
}

void ThinScrollBar::setTerminalColors(const QColor& background, const QColor& text) {
  m_background = background;
  m_text = text;
  update();
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

// Marks on the same pixels are drawn once.
void ThinScrollBar::paintMarks(QPainter& painter) const {
  const double length = height() - kMarkHeight;
  double paintedTo = -1;
  for (const BarMark& mark : m_marks) {
    const double top = std::max(std::floor(mark.begin * length), paintedTo);
    const double bottom = std::max(std::ceil(mark.end * length), top) + kMarkHeight;
    if (bottom <= paintedTo) continue;
    painter.fillRect(QRectF((width() - kMarkWidth) / 2.0, top, kMarkWidth, bottom - top), QColor::fromRgb(kMatchMark));
    paintedTo = bottom;
  }
}

QRectF ThinScrollBar::thumb() const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  const QRect slider = style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
  const int length = std::max(slider.height() - 2 * kThumbGap, kThumbWidth);
  return {(width() - kThumbWidth) / 2.0, static_cast<double>(slider.top() + kThumbGap), kThumbWidth,
          static_cast<double>(length)};
}

bool ThinScrollBar::isThumbShown() const {
  if (maximum() <= minimum()) return false;
  return m_ground == Ground::Window || underMouse() || isSliderDown() || m_fade.isActive();
}

// Translucent, so that the marks below it stay visible.
QColor ThinScrollBar::thumbColor() const {
  // The style sheet has changed this widget's own palette.
  QColor color = m_ground == Ground::Terminal ? m_text : ControlColors(parentWidget()->palette()).text;
  color.setAlphaF(static_cast<float>(underMouse() || isSliderDown() ? kActiveThumbShare : kThumbShare));
  return color;
}

void ThinScrollBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (m_ground == Ground::Terminal) {
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), m_background);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  }
  paintMarks(painter);
  if (!isThumbShown()) return;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(thumbColor());
  painter.drawRoundedRect(thumb(), kThumbWidth / 2.0, kThumbWidth / 2.0);
}

void ThinScrollBar::enterEvent(QEnterEvent* event) {
  QScrollBar::enterEvent(event);
  update();
}

void ThinScrollBar::leaveEvent(QEvent* event) {
  QScrollBar::leaveEvent(event);
  flash();
}

void ThinScrollBar::sliderChange(SliderChange change) {
  QScrollBar::sliderChange(change);
  if (change == SliderValueChange) update();
}

}  // namespace zolt
