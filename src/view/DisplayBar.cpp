#include "view/DisplayBar.h"

#include <QHBoxLayout>
#include <QPainter>

#include "controls/ControlColors.h"
#include "controls/Hairline.h"
#include "controls/SecondaryLabel.h"

namespace zolt {

namespace {

constexpr int kPadding = 6;
constexpr int kTextIndent = 6;
constexpr int kSpacing = 8;
constexpr int kButtonHeight = 28;
constexpr int kButtonPadding = 10;

}  // namespace

DisplayBar::DisplayBar(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("displayBar"));
  setCursor(Qt::ArrowCursor);
  auto* text =
      new SecondaryLabel(tr("Output is shown as a log. Editors, pagers and columns need the full emulation."), this);
  text->setObjectName(QStringLiteral("displayBarText"));
  setAccessibleName(text->text());
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kPadding + kTextIndent, kPadding, kPadding, kPadding);
  row->setSpacing(kSpacing);
  row->addWidget(text, 1);
  QPushButton* full = addButton(tr("Use Full Emulation"), QStringLiteral("useFullEmulation"));
  QPushButton* log = addButton(tr("Keep the Log"), QStringLiteral("keepLog"));
  setFocusProxy(full);
  connect(full, &QPushButton::clicked, this, &DisplayBar::fullEmulationChosen);
  connect(log, &QPushButton::clicked, this, &DisplayBar::logChosen);
  setFixedHeight(sizeHint().height());
}

QPushButton* DisplayBar::addButton(const QString& text, const QString& name) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(name);
  button->setAccessibleDescription(accessibleName());
  button->setAutoDefault(false);
  button->setFocusPolicy(Qt::TabFocus);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  button->setMinimumSize(button->sizeHint().width() + 2 * kButtonPadding, kButtonHeight);
  layout()->addWidget(button);
  return button;
}

void DisplayBar::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  painter.fillRect(rect(), colors.card);
  drawHairline(painter, QRect(0, 0, width(), 1), colors.fieldBorder);
}

}  // namespace zolt
