#pragma once

#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace zolt {

/// The application as the desktop addresses it on the session bus: the interface org.freedesktop.Application of the
/// Desktop Entry Specification, under the name of its desktop file. It tells what the desktop wants; somebody else does
/// it.
///
/// The name is asked for at once and taken as soon as nobody else has it; nothing waits for that. Without a session bus
/// nothing happens. Main thread.
class DesktopApplication : public QObject, protected QDBusContext {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  /// `id` is the desktop file's name without its ending.
  explicit DesktopApplication(const QString& id, QObject* parent = nullptr);

 public Q_SLOTS:
  // The interface's methods.
  void Activate(const QVariantMap& platformData);
  /// An error if a URL is not of a file or folder that is there; then nothing is opened.
  void Open(const QStringList& urls, const QVariantMap& platformData);
  /// An error if there is no such action.
  void ActivateAction(const QString& action, const QVariantList& parameters, const QVariantMap& platformData);

 Q_SIGNALS:
  /// `token` is the desktop's permission to take the focus (XDG Activation); empty if there is none.
  void windowWanted(const QString& token);
  /// Once for each folder.
  void folderWanted(const QString& folder, const QString& token);
  void tabWanted(const QString& token);
};

}  // namespace zolt
