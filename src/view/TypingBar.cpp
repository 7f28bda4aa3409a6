#include "view/TypingBar.h"

#include <QHBoxLayout>
#include <QPaintEvent>
#include <QPainter>

#include "controls/ControlColors.h"

namespace zolt {

namespace {

constexpr int kPadding = 5;

// The bar's ground. Its text is readable on it in either theme.
QColor ground(const QPalette& palette) {
  const ControlColors colors(palette);
  return mixed(colors.window, colors.destructive, 0.35);
}

}  // namespace

TypingBar::TypingBar(QWidget* parent)
    : QWidget(parent), m_text(new QLabel(this)), m_stop(new QPushButton(tr("Stop"), this)) {
  setAccessibleName(tr("Typing into several splits"));
  m_text->setTextFormat(Qt::PlainText);
  m_text->setObjectName(QStringLiteral("typingIntoAll"));
  m_stop->setObjectName(QStringLiteral("stopTypingIntoAll"));
  m_stop->setFocusPolicy(Qt::NoFocus);  // the terminal keeps the keyboard; the menu serves keyboard users
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(2 * kPadding, kPadding, kPadding, kPadding);
  row->addWidget(m_text, 1);
  row->addWidget(m_stop);
  connect(m_stop, &QAbstractButton::clicked, this, &TypingBar::stopWanted);
}

void TypingBar::setCount(int terminals) {
  m_text->setText(tr("What you type goes to all %1 splits in this tab.").arg(terminals));
}

void TypingBar::paintEvent(QPaintEvent* event) {
  QPainter(this).fillRect(event->rect(), ground(palette()));
}

}  // namespace zolt
