#include "desktop/LauncherEntry.h"

#include <QDBusMessage>
#include <QVariantMap>
#include <utility>

#include "desktop/SessionBus.h"

namespace zolt {

void LauncherEntry::setProgress(std::optional<double> progress) {
  if (std::exchange(m_progress, progress) == progress) return;
  if (!m_bus.isConnected() && hasSessionBus()) m_bus = QDBusConnection::sessionBus();
  if (!m_bus.isConnected()) return;
  // Whoever listens tells the applications apart by the first argument; the path may be any.
  QDBusMessage update =
      QDBusMessage::createSignal(QStringLiteral("/org/zolt/Zolt/LauncherEntry"),
                                 QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
  update << QString(QStringLiteral("application://") + m_desktopFile)
         << QVariantMap{{QStringLiteral("progress"), progress.value_or(0)},
                        {QStringLiteral("progress-visible"), progress.has_value()}};
  m_bus.send(update);
}

}  // namespace zolt
