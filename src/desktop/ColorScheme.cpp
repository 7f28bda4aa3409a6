#include "desktop/ColorScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <cstring>

#include "desktop/SessionBus.h"

namespace zolt {

namespace {

constexpr char kService[] = "org.freedesktop.portal.Desktop";
constexpr char kPath[] = "/org/freedesktop/portal/desktop";
constexpr char kInterface[] = "org.freedesktop.portal.Settings";
constexpr char kGroup[] = "org.freedesktop.appearance";
constexpr char kKey[] = "color-scheme";
// Version 2 of the interface; version 1 has only the older method, which wraps its value in one more variant.
constexpr char kReadOne[] = "ReadOne";
constexpr char kRead[] = "Read";

QString latin(const char* text) {
  return QString::fromLatin1(text);
}

QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) {
    value = value.value<QDBusVariant>().variant();
  }
  return value;
}

}  // namespace

ColorScheme::ColorScheme(QObject* parent) : QObject(parent) {
  if (!hasSessionBus()) return;
  if (QDBusConnection::sessionBus().isConnected()) ask(kReadOne);
}

// Not before the first answer: a connection that is still being set up cannot resolve the owner of the portal's name,
// and would then ignore its signals.
void ColorScheme::follow() {
  QDBusConnection::sessionBus().connect(latin(kService), latin(kPath), latin(kInterface),
                                        QStringLiteral("SettingChanged"), this,
                                        SLOT(settingChanged(QString, QString, QDBusVariant)));
}

void ColorScheme::ask(const char* method) {
  QDBusMessage call = QDBusMessage::createMethodCall(latin(kService), latin(kPath), latin(kInterface), latin(method));
  call << latin(kGroup) << latin(kKey);
  auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, method](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    if (std::strcmp(method, kReadOne) == 0) follow();
    const QDBusPendingReply<QVariant> reply = *finished;
    if (!reply.isError()) {
      take(reply.value());
    } else if (reply.error().type() == QDBusError::UnknownMethod && std::strcmp(method, kReadOne) == 0) {
      ask(kRead);
    }
  });
}

void ColorScheme::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
  if (group == latin(kGroup) && key == latin(kKey)) take(value.variant());
}

void ColorScheme::take(const QVariant& value) {
  // 0 no preference, 1 dark, 2 light; any other value counts as no preference.
  const uint number = unwrapped(value).toUInt();
  m_preference = number == 1 ? Preference::Dark : number == 2 ? Preference::Light : Preference::None;
  Q_EMIT changed(*m_preference);
}

}  // namespace zolt
