#include "controls/Switch.h"

#include <QPainter>
#include <QStyle>

#include "controls/ButtonAccessible.h"
#include "controls/ControlColors.h"

namespace zolt {

namespace {

constexpr QSize kTrack{38, 22};
constexpr double kGap = 2.5;           // between the knob and the track's edge
constexpr double kKnobContrast = 1.4;  // below it, a white knob does not show on its track
constexpr int kMoveMs = 130;
constexpr double kDisabledOpacity = 0.45;

}  // namespace

Switch::Switch(Kind kind, QWidget* parent) : QAbstractButton(parent), m_kind(kind) {
  ButtonAccessible::setRole(staticMetaObject, QAccessible::CheckBox);
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  m_knob.setDuration(kMoveMs);
  m_knob.setEasingCurve(QEasingCurve::InOutQuad);
  m_knob.setStartValue(0.0);
  m_knob.setEndValue(1.0);
  connect(&m_knob, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
}

QSize Switch::sizeHint() const {
  return kTrack + 2 * QSize(KeyboardFocus::margin, KeyboardFocus::margin);
}

bool Switch::hitButton(const QPoint& position) const {
  return rect().contains(position);
}

void Switch::nextCheckState() {
  if (isFixed()) return;
  QAbstractButton::nextCheckState();
  moveKnob();
}

void Switch::checkStateSet() {
  moveKnob();
}

void Switch::moveKnob() {
  const bool isThere = m_knob.currentValue().toDouble() == (isChecked() ? 1.0 : 0.0);
  if (isThere && m_knob.state() == QAbstractAnimation::Stopped) return;
  m_knob.setDirection(isChecked() ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
  if (isVisible() && style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0) {
    m_knob.start();
  } else {
    m_knob.stop();
    m_knob.setCurrentTime(isChecked() ? kMoveMs : 0);
  }
}

void Switch::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  const double position = m_knob.currentValue().toDouble();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(kDisabledOpacity);

  QRectF track(QPointF(), kTrack);
  track.moveCenter(QRectF(rect()).center());
  const double radius = track.height() / 2;
  painter.setPen(Qt::NoPen);
  const QColor ground = mixed(colors.off, colors.accent, position);
  painter.setBrush(ground);
  painter.drawRoundedRect(track, radius, radius);

  const double size = track.height() - 2 * kGap;
  const double way = track.width() - 2 * kGap - size;
  const double along = isRightToLeft() ? 1 - position : position;
  const QRectF knob(track.left() + kGap + way * along, track.top() + kGap, size, size);
  painter.setBrush(QColor(0, 0, 0, 40));
  painter.drawEllipse(knob.translated(0, 0.8));
  painter.setBrush(contrastRatio(Qt::white, ground) < kKnobContrast ? Qt::black : Qt::white);
  painter.drawEllipse(knob);
  m_focus.drawRing(painter, track, radius);
}

}  // namespace zolt
