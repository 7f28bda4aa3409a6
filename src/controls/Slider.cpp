#include "controls/Slider.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "controls/ControlColors.h"

namespace zolt {

namespace {

constexpr double kKnobRadius = 8;
constexpr double kTrackHeight = 4;
constexpr double kEnd =
    kKnobRadius + KeyboardFocus::margin;  // from the widget's edge to the centre of a knob at that end
constexpr int kPageSteps = 10;

}  // namespace

Slider::Slider(const SliderScale& scale, QWidget* parent) : QSlider(Qt::Horizontal, parent) {
  setRange(scale.first, scale.last);
  setSingleStep(scale.keyStep);
  setPageStep(scale.keyStep * kPageSteps);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(this, &QSlider::valueChanged, this, &Slider::chosen);
  connect(this, &QSlider::sliderPressed, this, qOverload<>(&QWidget::update));
  connect(this, &QSlider::sliderReleased, this, qOverload<>(&QWidget::update));
  connect(this, &QSlider::actionTriggered, this, [this](int action) {
    if (action != SliderMove) Q_EMIT chosen(sliderPosition());
  });
}

QSize Slider::sizeHint() const {
  return {200, static_cast<int>(2 * kEnd)};
}

QSize Slider::minimumSizeHint() const {
  return {80, static_cast<int>(2 * kEnd)};
}

double Slider::span() const {
  return width() - 2 * kEnd;
}

QPointF Slider::knobCenter() const {
  const double share = static_cast<double>(sliderPosition() - minimum()) / (maximum() - minimum());
  return {kEnd + span() * (isRightToLeft() ? 1 - share : share), height() / 2.0};
}

void Slider::moveKnobTo(double x) {
  const double share = std::clamp((x - kEnd) / span(), 0.0, 1.0);
  const double along = isRightToLeft() ? 1 - share : share;
  setSliderPosition(minimum() + static_cast<int>(std::lround(along * (maximum() - minimum()))));
  Q_EMIT chosen(sliderPosition());
}

void Slider::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  setSliderDown(true);
  m_grip = event->position().x() - knobCenter().x();
  if (std::abs(m_grip) <= kKnobRadius) return;
  m_grip = 0;
  moveKnobTo(event->position().x());
}

void Slider::mouseMoveEvent(QMouseEvent* event) {
  if (isSliderDown()) moveKnobTo(event->position().x() - m_grip);
}

void Slider::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) setSliderDown(false);
}

void Slider::wheelEvent(QWheelEvent* event) {
  // The wheel is for scrolling the form: it must not change a setting under the pointer.
  event->ignore();
}

void Slider::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  const QPointF knob = knobCenter();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  QRectF track(kEnd - kKnobRadius, knob.y() - kTrackHeight / 2, span() + 2 * kKnobRadius, kTrackHeight);
  painter.setBrush(colors.off);
  painter.drawRoundedRect(track, kTrackHeight / 2, kTrackHeight / 2);
  isRightToLeft() ? track.setLeft(knob.x()) : track.setRight(knob.x());
  painter.setBrush(colors.accent);
  painter.drawRoundedRect(track, kTrackHeight / 2, kTrackHeight / 2);

  const QRectF disc(knob.x() - kKnobRadius, knob.y() - kKnobRadius, 2 * kKnobRadius, 2 * kKnobRadius);
  painter.setBrush(QColor(0, 0, 0, 40));
  painter.drawEllipse(disc.translated(0, 0.9));
  painter.setBrush(isSliderDown() ? mixed(Qt::white, colors.accent, 0.12) : QColor(Qt::white));
  painter.setPen(QPen(QColor(0, 0, 0, 50), 0.8));
  painter.drawEllipse(disc.adjusted(0.4, 0.4, -0.4, -0.4));
  m_focus.drawRing(painter, disc, kKnobRadius);
}

}  // namespace zolt
