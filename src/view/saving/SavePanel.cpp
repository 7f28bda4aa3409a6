#include "view/saving/SavePanel.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "controls/Card.h"
#include "controls/ControlColors.h"
#include "controls/TextScale.h"

namespace zolt {

namespace {

constexpr int kWidth = 420;
constexpr int kDistance = 16;  // from the edges of what is below
constexpr int kPadding = 14;
constexpr int kGap = 14;
constexpr int kLineGap = 6;
constexpr int kButtonHeight = 28;
constexpr int kButtonPadding = 10;
constexpr int kSteps = 1000;  // of the bar

}  // namespace

SavePanel::SavePanel(QWidget* over)
    : QWidget(over), m_bar(new QProgressBar(this)), m_cancel(new QPushButton(tr("Cancel"), this)) {
  setObjectName(QStringLiteral("savePanel"));
  auto* label = new QLabel(tr("Saving output…"), this);
  setAccessibleName(label->text());
  m_bar->setObjectName(QStringLiteral("saveProgress"));
  m_bar->setAccessibleName(label->text());
  m_bar->setTextVisible(false);
  m_bar->setRange(0, kSteps);
  m_bar->setValue(0);
  m_cancel->setObjectName(QStringLiteral("cancelSaving"));
  m_cancel->setAutoDefault(false);
  m_cancel->setMinimumSize(m_cancel->sizeHint().width() + 2 * kButtonPadding, kButtonHeight);
  setFocusProxy(m_cancel);

  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
  grid->setHorizontalSpacing(kGap);
  grid->setVerticalSpacing(kLineGap);
  grid->addWidget(label, 0, 0);
  grid->addWidget(m_bar, 1, 0);
  grid->addWidget(m_cancel, 0, 1, 2, 1, Qt::AlignVCenter);

  connect(m_cancel, &QPushButton::clicked, this, &SavePanel::cancelled);
  over->installEventFilter(this);
  hide();
}

void SavePanel::setProgress(double share) {
  m_bar->setValue(static_cast<int>(std::lround(share * kSteps)));
}

void SavePanel::moveToPlace() {
  const QSize room = parentWidget()->size();
  resize(std::min(scaledToText(kWidth, font()), room.width() - 2 * kDistance), sizeHint().height());
  move((room.width() - width()) / 2, room.height() - height() - kDistance);
}

void SavePanel::showEvent(QShowEvent* event) {
  moveToPlace();
  raise();
  QWidget::showEvent(event);
}

bool SavePanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize) moveToPlace();
  return QWidget::eventFilter(watched, event);
}

void SavePanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    Q_EMIT cancelled();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void SavePanel::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  drawCard(painter, rect(), colors, colors.fieldBorder);
}

}  // namespace zolt
