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

void NumberField::showNumber(std::int64_t number) {
  m_number = number;
  const QString shown = QString::number(number);
  if (text() != shown) setText(shown);
  setModified(false);
}

void NumberField::finish() {
  const std::int64_t before = m_number;
  const std::int64_t now = wholeNumber(text()).value_or(before);
  showNumber(now);
  if (now != before) Q_EMIT chosen(now);
}

void NumberField::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) showNumber(m_number);
  TextField::keyPressEvent(event);
}

}  // namespace zolt
