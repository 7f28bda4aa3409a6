#include "updates/views/UpdateWindow.h"

#include <QHBoxLayout>

namespace zolt {

namespace {

constexpr int kMargin = 20;
constexpr int kTitleGap = 6;
constexpr int kContentGap = 14;
constexpr int kButtonGap = 8;
constexpr int kButtonPadding = 10;
constexpr int kButtonHeight = 28;
constexpr int kTextWidth = 440;
constexpr double kTitleScale = 1.1;

}  // namespace

UpdateWindow::UpdateWindow(const QString& title, const QString& text, QWidget* parent)
    : QDialog(parent),
      m_frame(new QVBoxLayout(this)),
      m_title(new QLabel(title, this)),
      m_text(new QLabel(this)),
      m_content(new QVBoxLayout),
      m_buttons(new QHBoxLayout) {
  setWindowTitle(tr("Software Update"));
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  QFont bold = m_title->font();
  bold.setBold(true);
  bold.setPointSizeF(bold.pointSizeF() * kTitleScale);
  m_title->setFont(bold);
  m_title->setObjectName(QStringLiteral("title"));
  m_text->setObjectName(QStringLiteral("text"));
  for (QLabel* label : {m_title, m_text}) {
    // Text from a feed must not be interpreted as rich text.
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(kTextWidth);
  }
  setText(text);

  m_frame->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  m_frame->setSpacing(0);
  m_frame->addWidget(m_title);
  m_frame->addSpacing(kTitleGap);
  m_frame->addWidget(m_text);
  m_frame->addLayout(m_content);
  m_frame->addSpacing(kMargin);
  m_frame->addLayout(m_buttons);
  m_content->setContentsMargins(0, kContentGap, 0, 0);
  m_content->setSpacing(kTitleGap);
  m_buttons->setSpacing(kButtonGap);
  m_buttons->addStretch();
}

void UpdateWindow::setText(const QString& text) {
  m_text->setText(text);
  m_text->setVisible(!text.isEmpty());
}

QPushButton* UpdateWindow::makeButton(const QString& label, const QString& name) {
  auto* button = new QPushButton(label, this);
  button->setObjectName(name);
  button->setAutoDefault(false);
  button->setMinimumSize(button->sizeHint().width() + 2 * kButtonPadding, kButtonHeight);
  return button;
}

QPushButton* UpdateWindow::addButtonAtStart(const QString& label, const QString& name) {
  QPushButton* button = makeButton(label, name);
  m_buttons->insertWidget(0, button);
  return button;
}

QPushButton* UpdateWindow::addButton(const QString& label, const QString& name) {
  QPushButton* button = makeButton(label, name);
  m_buttons->addWidget(button);
  return button;
}

QPushButton* UpdateWindow::addDefaultButton(const QString& label, const QString& name) {
  QPushButton* button = addButton(label, name);
  button->setDefault(true);
  button->setFocus();
  return button;
}

void UpdateWindow::appearUnrequested() {
  setAttribute(Qt::WA_ShowWithoutActivating);
  const QList<QPushButton*> buttons = findChildren<QPushButton*>();
  for (QPushButton* button : buttons) {
    button->setDefault(false);
  }
  setFocusPolicy(Qt::StrongFocus);
  setFocus();
}

void UpdateWindow::finish(bool resizable) {
  if (m_content->isEmpty()) m_content->setContentsMargins(0, 0, 0, 0);
  if (!resizable) m_frame->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace zolt
