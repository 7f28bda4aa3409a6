#include "app/AboutWindow.h"

#include <QApplication>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

namespace zolt {

namespace {

constexpr int kIconSize = 96;

}  // namespace

AboutWindow::AboutWindow() : QWidget(nullptr, Qt::Dialog) {
  setWindowTitle(tr("About Zolt"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(48, 28, 48, 28);
  column->setSpacing(6);
  column->setSizeConstraint(QLayout::SetFixedSize);

  auto* icon = new QLabel(this);
  icon->setPixmap(QApplication::windowIcon().pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
  auto* name = new QLabel(QStringLiteral("Zolt"), this);
  QFont large = name->font();
  large.setPointSizeF(large.pointSizeF() * 1.8);
  large.setWeight(QFont::DemiBold);
  name->setFont(large);
  auto* version = new QLabel(tr("Version %1").arg(QStringLiteral(ZOLT_VERSION)), this);
  version->setForegroundRole(QPalette::PlaceholderText);
  version->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* what = new QLabel(tr("A terminal for Linux and macOS."), this);
  for (QLabel* label : {icon, name, version, what}) {
    column->addWidget(label, 0, Qt::AlignHCenter);
  }
  connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, &QWidget::close);
}

}  // namespace zolt
