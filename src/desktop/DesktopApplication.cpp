#include "desktop/DesktopApplication.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFileInfo>
#include <QUrl>
#include <array>

#include "desktop/SessionBus.h"

namespace zolt {

namespace {

// By the Desktop Entry Specification "org.example.App" is found at "/org/example/App".
QString pathOf(QString id) {
  return QLatin1Char('/') + id.replace(QLatin1Char('.'), QLatin1Char('/')).replace(QLatin1Char('-'), QLatin1Char('_'));
}

// The older desktops' name for the same comes second.
QString tokenIn(const QVariantMap& platformData) {
  for (const char* key : {"activation-token", "desktop-startup-id"}) {
    if (const QString token = platformData.value(QLatin1String(key)).toString(); !token.isEmpty()) return token;
  }
  return {};
}

// A folder, or that of a file; empty if neither is there.
QString folderAt(const QString& url) {
  const QFileInfo file(QUrl(url).toLocalFile());
  if (!QUrl(url).isLocalFile() || !file.exists()) return {};
  return file.isDir() ? file.absoluteFilePath() : file.absolutePath();
}

}  // namespace

DesktopApplication::DesktopApplication(const QString& id, QObject* parent) : QObject(parent) {
  if (!hasSessionBus()) return;
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected() || !bus.registerObject(pathOf(id), this, QDBusConnection::ExportAllSlots)) return;
  QDBusMessage request =
      QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                     QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
  constexpr uint kInTurn = 0;  // after whoever has the name now
  bus.asyncCall(request << id << kInTurn);
}

void DesktopApplication::Activate(const QVariantMap& platformData) {
  Q_EMIT windowWanted(tokenIn(platformData));
}

void DesktopApplication::Open(const QStringList& urls, const QVariantMap& platformData) {
  QStringList folders;
  for (const QString& url : urls) {
    folders << folderAt(url);
    if (!folders.last().isEmpty()) continue;
    if (calledFromDBus()) sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("no file or folder: %1").arg(url));
    return;
  }
  folders.removeDuplicates();
  for (const QString& folder : std::as_const(folders)) {
    Q_EMIT folderWanted(folder, tokenIn(platformData));
  }
}

void DesktopApplication::ActivateAction(const QString& action, const QVariantList&, const QVariantMap& platformData) {
  struct Action {
    const char* name;
    void (DesktopApplication::*wanted)(const QString& token);
  };
  static constexpr std::array kActions{Action{"new-window", &DesktopApplication::windowWanted},
                                       Action{"new-tab", &DesktopApplication::tabWanted}};
  for (const Action& each : kActions) {
    if (action == QLatin1String(each.name)) return (this->*each.wanted)(tokenIn(platformData));
  }
  if (calledFromDBus()) sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("no action: %1").arg(action));
}

}  // namespace zolt
