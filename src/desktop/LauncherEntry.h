#pragma once

#include <QDBusConnection>
#include <QString>
#include <optional>
#include <utility>

namespace zolt {

/// The application's entry in the desktop's dock or task bar, where that listens for
/// `com.canonical.Unity.LauncherEntry` (Unity's launcher API, which Plasma, Dash to Dock and others follow). Without a
/// session bus nothing happens. Main thread.
class LauncherEntry {
 public:
  /// On the session bus, which is connected to when it is first needed. `desktopFile` is its name, as
  /// "org.example.App.desktop".
  explicit LauncherEntry(QString desktopFile) : m_desktopFile(std::move(desktopFile)) {}
  LauncherEntry(QString desktopFile, const QDBusConnection& bus) : m_desktopFile(std::move(desktopFile)), m_bus(bus) {}

  /// How much is done, 0...1, both included; none: nothing is going on. Told only when it changes.
  void setProgress(std::optional<double> progress);

 private:
  QString m_desktopFile;
  QDBusConnection m_bus{QString()};
  std::optional<double> m_progress;
};

}  // namespace zolt
