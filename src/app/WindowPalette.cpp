#include "app/WindowPalette.h"

#include <QApplication>
#include <QEvent>
#include <QMenuBar>

#include "desktop/DesktopPalette.h"

namespace zolt {

WindowPalette::WindowPalette(TerminalWindow& window)
    : QObject(&window),
      m_window(window),
      m_surface(static_cast<EmulationSurface&>(window.contentViewController().rootView().surface())) {
  connect(&m_surface, &EmulationSurface::themeChanged, this, &WindowPalette::apply);
  m_window.installEventFilter(this);
  apply();
}

bool WindowPalette::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange) apply();
  return QObject::eventFilter(watched, event);
}

void WindowPalette::apply() {
  const QPalette desktop = QApplication::palette();
  const bool isDark = m_surface.isDark();
  const bool desktopFits = zolt::isDark(desktop) == isDark;
  const QPalette ours = isDark ? darkPalette() : lightPalette();
  m_window.setPalette(desktopFits ? QPalette() : ours);
  QPalette bar = desktopFits ? desktop : ours;
  bar.setColor(QPalette::Window, m_surface.ground());
  bar.setColor(QPalette::Button, m_surface.ground());
  m_window.menuBar()->setPalette(bar);
}

}  // namespace zolt
