#include "controls/SliderRow.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QSignalBlocker>

#include "controls/TextScale.h"

namespace zolt {

namespace {

constexpr int kTextWidth = 50;
constexpr int kSpacing = 6;

}  // namespace

SliderRow::SliderRow(const SliderScale& scale, Text text, QWidget* parent)
    : QWidget(parent),
      m_scale(scale),
      m_textOf(text),
      m_slider(new Slider(scale, this)),
      m_text(new SecondaryLabel(QString(), this)) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, KeyboardFocus::margin, 0);
  row->setSpacing(kSpacing);
  row->addWidget(m_slider, 1);
  row->addWidget(m_text);
  fitText();
  m_text->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_text->setObjectName(QStringLiteral("value"));
  m_slider->setObjectName(QStringLiteral("slider"));
  setFocusProxy(m_slider);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setValue(m_scale.valueAt(m_scale.first));
  connect(m_slider, &Slider::chosen, this, [this](int position) {
    const double value = m_scale.valueAt(position);
    if (value == m_value) return;
    setValue(value);
    Q_EMIT chosen(value);
  });
}

void SliderRow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) fitText();
}

void SliderRow::fitText() {
  m_text->setFixedWidth(scaledToText(kTextWidth, m_text->font()));
}

void SliderRow::setValue(double value) {
  m_value = value;
  const QSignalBlocker silent(m_slider);
  m_slider->setValue(m_scale.positionOf(value));
  m_text->setText(m_textOf(value));
  m_slider->setAccessibleDescription(m_text->text());
}

}  // namespace zolt
