#include "controls/SegmentedPicker.h"

#include <QHBoxLayout>
#include <QPainter>

#include "controls/ButtonAccessible.h"
#include "controls/ControlColors.h"
#include "controls/OneTabStop.h"

namespace zolt {

namespace {

constexpr int kTrackRadius = 7;
constexpr int kInset = 2;  // of the selected segment in its track
constexpr QSize kPadding{12, 5};

}  // namespace

Segment::Segment(const QString& label, QWidget* parent) : QAbstractButton(parent) {
  ButtonAccessible::setRole(staticMetaObject, QAccessible::RadioButton);
  setText(label);
  setCheckable(true);
  setFocusPolicy(Qt::ClickFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize Segment::sizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  return QSize(metrics.horizontalAdvance(text()), metrics.height()) +
         2 * (kPadding + QSize(KeyboardFocus::margin, KeyboardFocus::margin));
}

void Segment::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  constexpr int kAround = KeyboardFocus::margin + kInset;
  const QRectF pill = QRectF(rect()).adjusted(kInset, kAround, -kInset, -kAround);
  constexpr double kRadius = kTrackRadius - kInset;
  if (isChecked()) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 38));
    painter.drawRoundedRect(pill.translated(0, 0.8), kRadius, kRadius);
    painter.setBrush(colors.raised);
    painter.drawRoundedRect(pill, kRadius, kRadius);
  }
  painter.setPen(colors.text);
  painter.drawText(rect(), Qt::AlignCenter, text());
  m_focus.drawRing(painter, pill, kRadius);
}

SegmentedPicker::SegmentedPicker(const QStringList& labels, QWidget* parent) : QWidget(parent) {
  ButtonAccessible::setRole(staticMetaObject, QAccessible::Grouping);
  keepOneTabStop(m_group);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(KeyboardFocus::margin, 0, KeyboardFocus::margin, 0);
  row->setSpacing(0);
  for (const QString& label : labels) {
    auto* each = new Segment(label, this);
    each->setObjectName(label);
    m_group.addButton(each, static_cast<int>(row->count()));
    row->addWidget(each, 1);
  }
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(&m_group, &QButtonGroup::idClicked, this, [this](int index) {
    if (index == m_shown) return;
    m_shown = index;
    Q_EMIT picked(index);
  });
}

void SegmentedPicker::setCurrentIndex(int index) {
  m_shown = index;
  if (QAbstractButton* chosen = m_group.button(index)) chosen->setChecked(true);
}

void SegmentedPicker::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(mixed(colors.card, colors.text, 0.1));
  constexpr int kMargin = KeyboardFocus::margin;
  painter.drawRoundedRect(QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin), kTrackRadius, kTrackRadius);
}

}  // namespace zolt
