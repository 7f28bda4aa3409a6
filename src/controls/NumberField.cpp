#include "controls/NumberField.h"

#include <QKeyEvent>

#include "controls/WholeNumber.h"

namespace zolt {

NumberField::NumberField(QWidget* parent) : TextField(parent) {
  setAlignment(Qt::AlignRight);
  setInputMethodHints(Qt::ImhFormattedNumbersOnly);
  showNumber(0);
  connect(this, &QLineEdit::editingFinished, this, &NumberField::finish);
}

void NumberField::setNumber(std::int64_t number) {
  const bool isBeingTyped = hasFocus() && isModified();
  m_number = number;
  if (!isBeingTyped) showNumber(number);
}

void NumberField::allowNoLimit(const QString& placeholder) {
  m_allowsNoLimit = true;
  setPlaceholderText(placeholder);
  setNumber(m_number);
}

void NumberField::showNumber(std::int64_t number) {
  m_number = number;
  const QString shown = m_allowsNoLimit && number < 1 ? QString() : QString::number(number);
  if (text() != shown) setText(shown);
  setModified(false);
}

std::int64_t NumberField::typedNumber() const {
  constexpr std::int64_t kNoLimit = -1;
  if (!m_allowsNoLimit) return wholeNumber(text()).value_or(m_number);
  const std::int64_t typed = text().trimmed().isEmpty() ? kNoLimit : wholeNumber(text()).value_or(m_number);
  if (typed >= 1) return typed;
  // Any negative number is as good: it is not changed to another one.
  return m_number < 0 ? m_number : kNoLimit;
}

void NumberField::finish() {
  const std::int64_t before = m_number;
  const std::int64_t now = typedNumber();
  showNumber(now);
  if (now != before) Q_EMIT chosen(now);
}

void NumberField::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) showNumber(m_number);
  TextField::keyPressEvent(event);
}

}  // namespace zolt
