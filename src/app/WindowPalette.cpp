#include "app/WindowPalette.h"

#include <QApplication>
#include <QEvent>
#include <QMenuBar>

#include "desktop/DesktopPalette.h"

namespace zolt {

WindowPalette::WindowPalette(TerminalWindow& window)
    : QObject(&window),
      m_window(window),
      m_tabs(static_cast<TerminalTabs&>(window.contentViewController().rootView().area())) {
  connect(&m_tabs, &TerminalTabs::themeChanged, this, &WindowPalette::apply);
  m_window.installEventFilter(this);
  apply();
}

bool WindowPalette::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange) apply();
  return QObject::eventFilter(watched, event);
}

void WindowPalette::apply() {
  if (m_tabs.count() == 0) return;
  const QPalette desktop = QApplication::palette();
  const bool isDark = m_tabs.surface().isDark();
  const bool desktopFits = zolt::isDark(desktop) == isDark;
  const QPalette ours = isDark ? darkPalette() : lightPalette();
  m_window.setPalette(desktopFits ? QPalette() : ours);
  QPalette bar = desktopFits ? desktop : ours;
  bar.setColor(QPalette::Window, m_tabs.surface().ground());
  bar.setColor(QPalette::Button, m_tabs.surface().ground());
  m_window.menuBar()->setPalette(bar);
}

}  // namespace zolt
