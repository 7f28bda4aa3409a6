#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QStringList>
#include <QUuid>

#include "support/WaitFor.h"

namespace zolt::test {

/// A message bus of the tests' own, as long as it lives, and connections to it.
class PrivateBus {
 public:
  PrivateBus() {
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    if (m_daemon.waitForReadyRead(kPatience.count())) m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
  }
  ~PrivateBus() {
    for (const QString& name : m_names) {
      QDBusConnection::disconnectFromBus(name);
    }
    m_daemon.kill();
    m_daemon.waitForFinished();
  }
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  /// False if dbus-daemon is not installed.
  bool isThere() const { return !m_address.isEmpty(); }
  const QString& address() const { return m_address; }
  /// One more connection.
  QDBusConnection connect() {
    m_names.push_back(QUuid::createUuid().toString());
    return QDBusConnection::connectToBus(m_address, m_names.back());
  }

 private:
  QProcess m_daemon;
  QString m_address;
  QStringList m_names;
};

}  // namespace zolt::test
