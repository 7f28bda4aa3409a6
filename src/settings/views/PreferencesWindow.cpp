#include "settings/views/PreferencesWindow.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <vector>

#include "controls/TextScale.h"
#include "settings/views/WindowPlace.h"

namespace zolt {

namespace {

constexpr QSize kSize{600, 450};

}  // namespace

PreferencesWindow::PreferencesWindow(Config& config, UserDefaults& defaults, ShellManager& shells)
    : m_defaults(defaults),
      m_view(new PreferencesView(
          {QStringLiteral("General"), QStringLiteral("Appearance"), QStringLiteral("Keys"), QStringLiteral("Advanced")},
          config, defaults, shells, this)) {
  setObjectName(QStringLiteral("preferences"));
  setWindowTitle(QStringLiteral("Preferences"));
  fitText();
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(m_view);
}

PreferencesWindow::~PreferencesWindow() {
  if (isVisible()) storePlace();
}

void PreferencesWindow::fitText() {
  setFixedSize(QSize(scaledToText(kSize.width(), font()), scaledToText(kSize.height(), font()))
                   .boundedTo(screen()->availableSize().expandedTo(kSize)));
}

void PreferencesWindow::setVisible(bool visible) {
  if (visible && !isVisible()) moveToStoredPlace();
  QWidget::setVisible(visible);
}

void PreferencesWindow::moveToStoredPlace() {
  const auto stored = placeOf(m_defaults.stringForKey(kPreferencesPlace.key).value_or(kPreferencesPlace.absent));
  if (!stored) return;
  std::vector<QRect> screens;
  for (const QScreen* screen : QGuiApplication::screens()) {
    screens.push_back(screen->availableGeometry());
  }
  if (const auto place = placeOnScreens(*stored, size(), screens)) move(*place);
}

// Only if the user has moved it: the desktop's own placement is not worth remembering.
void PreferencesWindow::storePlace() {
  if (pos() != m_openedAt) m_defaults.setString(kPreferencesPlace.key, placeText(pos()));
}

void PreferencesWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous()) return;
  m_openedAt = pos();
  m_isPlaced = false;
}

void PreferencesWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) fitText();
  // Only now has the window manager placed the window with its frame.
  if (event->type() != QEvent::ActivationChange || !isActiveWindow() || m_isPlaced) return;
  m_openedAt = pos();
  m_isPlaced = true;
}

void PreferencesWindow::hideEvent(QHideEvent* event) {
  if (!event->spontaneous()) storePlace();
  QWidget::hideEvent(event);
}

void PreferencesWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace zolt
