#include "desktop/DesktopNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <algorithm>
#include <utility>

#include "desktop/SessionBus.h"

namespace zolt {

namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kDefaultAction = QStringLiteral("default");

QDBusMessage callTo(const char* method) {
  return QDBusMessage::createMethodCall(kService, kPath, kService, QLatin1String(method));
}

}  // namespace

void DesktopNotifications::connectToBus() {
  if (!m_bus.isConnected() && hasSessionBus()) m_bus = QDBusConnection::sessionBus();
  if (!m_bus.isConnected() || std::exchange(m_isListening, true)) return;
  const auto listen = [this](const char* signal, const char* slot) {
    m_bus.connect(kService, kPath, kService, QLatin1String(signal), this, slot);
  };
  listen("ActionInvoked", SLOT(actionInvoked(uint, QString)));
  listen("ActivationToken", SLOT(activationTokenGiven(uint, QString)));
  listen("NotificationClosed", SLOT(notificationClosed(uint, uint)));
  auto* asked = new QDBusPendingCallWatcher(m_bus.asyncCall(callTo("GetCapabilities")), this);
  connect(asked, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
    const QDBusPendingReply<QStringList> reply = *call;
    if (!reply.isError()) m_takesMarkup = reply.value().contains(QStringLiteral("body-markup"));
    call->deleteLater();
  });
}

void DesktopNotifications::show(QObject& owner, const DesktopNotification& notification, Clicked clicked) {
  connectToBus();
  if (!m_bus.isConnected()) return;
  const bool isKnown = m_shown.contains(&owner);
  Shown& shown = m_shown[&owner];
  if (!isKnown) connect(&owner, &QObject::destroyed, this, [this](QObject* gone) { m_shown.erase(gone); });
  const uint replaced = std::exchange(shown.id, 0);
  shown.clicked = std::move(clicked);
  shown.token.clear();
  // What looks like markup to the desktop comes from programs, and is text.
  const QString body = m_takesMarkup ? notification.body.toHtmlEscaped() : notification.body;
  const QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("org.zolt.Zolt")}};
  constexpr int kAsLongAsUsual = -1;
  QDBusMessage call = callTo("Notify");
  call << QStringLiteral("Zolt") << replaced << QStringLiteral("zolt") << notification.title << body
       << QStringList{kDefaultAction, tr("Show")} << hints << kAsLongAsUsual;
  auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [this, of = &owner](QDBusPendingCallWatcher* done) { sent(of, *done); });
}

// The owner may be gone, or have asked for another one by now.
void DesktopNotifications::sent(QObject* owner, QDBusPendingCallWatcher& call) {
  const QDBusPendingReply<uint> reply = call;
  const auto found = m_shown.find(owner);
  if (found != m_shown.end() && !reply.isError()) found->second.id = reply.value();
  call.deleteLater();
}

std::map<QObject*, DesktopNotifications::Shown>::iterator DesktopNotifications::find(uint id) {
  return std::ranges::find_if(m_shown, [id](const auto& each) { return id != 0 && each.second.id == id; });
}

void DesktopNotifications::activationTokenGiven(uint id, const QString& token) {
  if (const auto found = find(id); found != m_shown.end()) found->second.token = token;
}

void DesktopNotifications::actionInvoked(uint id, const QString& action) {
  const auto found = find(id);
  if (found == m_shown.end() || action != kDefaultAction) return;
  if (const Clicked clicked = found->second.clicked) clicked(found->second.token);
}

void DesktopNotifications::notificationClosed(uint id, uint) {
  if (const auto found = find(id); found != m_shown.end()) found->second.id = 0;
}

}  // namespace zolt
