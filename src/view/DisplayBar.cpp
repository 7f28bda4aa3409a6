#include "view/DisplayBar.h"

#include <QEvent>
#include <QPainter>
#include <QResizeEvent>

#include "controls/ControlColors.h"
#include "controls/Hairline.h"
#include "controls/TextScale.h"

namespace zolt {

namespace {

constexpr int kPadding = 6;
constexpr int kTextIndent = 6;
constexpr int kSpacing = 8;
constexpr int kButtonHeight = 28;
constexpr int kButtonPadding = 10;

}  // namespace

DisplayBar::DisplayBar(QWidget* parent)
    : QWidget(parent),
      m_text(new SecondaryLabel(tr("Output is shown as a log. Editors, pagers and columns need the full emulation."),
                                this)),
      m_row(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      m_buttons(new QBoxLayout(QBoxLayout::LeftToRight)) {
  setObjectName(QStringLiteral("displayBar"));
  setCursor(Qt::ArrowCursor);
  m_text->setObjectName(QStringLiteral("displayBarText"));
  setAccessibleName(m_text->text());
  m_row->setContentsMargins(kPadding + kTextIndent, kPadding, kPadding, kPadding);
  m_row->setSpacing(kSpacing);
  m_row->addWidget(m_text, 1);
  m_row->addLayout(m_buttons);
  m_buttons->setSpacing(kSpacing);
  m_buttons->addStretch();
  QPushButton* full = addButton(tr("Use Full Emulation"), QStringLiteral("useFullEmulation"));
  QPushButton* log = addButton(tr("Keep the Log"), QStringLiteral("keepLog"));
  setFocusProxy(full);
  connect(full, &QPushButton::clicked, this, &DisplayBar::fullEmulationChosen);
  connect(log, &QPushButton::clicked, this, &DisplayBar::logChosen);
  fitText();
}

void DisplayBar::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) fitText();
}

void DisplayBar::fitText() {
  const bool isLarge = textScale(font()) > 1;
  m_text->setWordWrap(isLarge);
  m_row->setDirection(isLarge ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
  m_row->invalidate();
  setMinimumHeight(isLarge ? 0 : sizeHint().height());
  setMaximumHeight(isLarge ? QWIDGETSIZE_MAX : sizeHint().height());
}

void DisplayBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fitButtons();
}

void DisplayBar::fitButtons() {
  const QMargins around = m_row->contentsMargins();
  int needed = around.left() + around.right() - kSpacing;
  for (const auto* button : findChildren<QPushButton*>(QString(), Qt::FindDirectChildrenOnly)) {
    needed += button->minimumWidth() + kSpacing;
  }
  if (m_row->direction() == QBoxLayout::LeftToRight) needed += m_text->minimumSizeHint().width() + kSpacing;
  const auto direction = width() < needed ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
  if (direction == m_buttons->direction()) return;
  m_buttons->setDirection(direction);
  fitText();
}

QPushButton* DisplayBar::addButton(const QString& text, const QString& name) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(name);
  button->setAccessibleDescription(accessibleName());
  button->setAutoDefault(false);
  button->setFocusPolicy(Qt::TabFocus);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  button->setMinimumSize(button->sizeHint().width() + 2 * kButtonPadding, kButtonHeight);
  m_buttons->addWidget(button);
  return button;
}

void DisplayBar::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  painter.fillRect(rect(), colors.card);
  drawHairline(painter, QRect(0, 0, width(), 1), colors.fieldBorder);
}

}  // namespace zolt
