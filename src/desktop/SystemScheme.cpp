#include "desktop/SystemScheme.h"

#include <QApplication>
#include <QEvent>
#include <utility>

#include "desktop/DesktopPalette.h"

namespace zolt {

SystemScheme::SystemScheme(QObject* parent) : QObject(parent), m_isDark(zolt::isDark(QApplication::palette())) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool SystemScheme::eventFilter(QObject* watched, QEvent* event) {
  // The filter also sees the events of all other objects.
  if (watched == QCoreApplication::instance() && event->type() == QEvent::ApplicationPaletteChange) {
    const bool before = std::exchange(m_isDark, zolt::isDark(QApplication::palette()));
    if (m_isDark != before) Q_EMIT changed(m_isDark);
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace zolt
