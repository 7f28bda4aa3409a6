#include "settings/views/PreferencesWindow.h"

#include <QKeyEvent>
#include <QVBoxLayout>

namespace zolt {

namespace {

constexpr QSize kSize{600, 450};

}  // namespace

PreferencesWindow::PreferencesWindow(Config& config, UserDefaults& defaults, ShellManager& shells)
    : m_view(new PreferencesView(
          {QStringLiteral("General"), QStringLiteral("Appearance"), QStringLiteral("Keys"), QStringLiteral("Advanced")},
          config, defaults, shells, this)) {
  setObjectName(QStringLiteral("preferences"));
  setWindowTitle(QStringLiteral("Preferences"));
  setFixedSize(kSize);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(m_view);
}

void PreferencesWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace zolt
