// A desktop's settings portal for tests and pictures, on the session bus. Usage: fakeportal [--version-1] PREFERENCE
//
// PREFERENCE is the number that "color-scheme" has: 0 none, 1 dark, 2 light. Prints "ready" once it can be asked. Each
// line of standard input is a new preference; it ends with its input. With --version-1 it knows only the older method.
#include <unistd.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QSocketNotifier>
#include <cstdio>

namespace {

constexpr char kInterface[] = "org.freedesktop.portal.Settings";
constexpr char kGroup[] = "org.freedesktop.appearance";
constexpr char kKey[] = "color-scheme";

class Portal : public QDBusVirtualObject {
 public:
  Portal(bool oldVersion, uint preference) : m_oldVersion(oldVersion), m_preference(preference) {}

  QString introspect(const QString&) const override { return {}; }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    const QList<QVariant> arguments = message.arguments();
    const bool asksForScheme =
        arguments.size() == 2 && arguments[0] == QLatin1String(kGroup) && arguments[1] == QLatin1String(kKey);
    if (message.interface() != QLatin1String(kInterface) || !asksForScheme) return false;
    const QVariant value = QVariant::fromValue(QDBusVariant(m_preference));
    if (message.member() == QLatin1String("ReadOne") && !m_oldVersion) return bus.send(message.createReply(value));
    // The older method wraps its value in two variants.
    if (message.member() == QLatin1String("Read")) {
      return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
    }
    return bus.send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no such method")));
  }

  void change(uint preference, const QDBusConnection& bus) {
    m_preference = preference;
    QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                     QLatin1String(kInterface), QStringLiteral("SettingChanged"));
    signal << QLatin1String(kGroup) << QLatin1String(kKey) << QVariant::fromValue(QDBusVariant(preference));
    bus.send(signal);
  }

 private:
  bool m_oldVersion;
  uint m_preference;
};

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  QDBusConnection bus = QDBusConnection::sessionBus();
  Portal portal(arguments.contains(QStringLiteral("--version-1")), arguments.last().toUInt());
  const bool ready = bus.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal) &&
                     bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
  std::puts(ready ? "ready" : "failed");
  std::fflush(stdout);
  if (!ready) return 1;
  QSocketNotifier input(0, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, &application, [&] {
    char buffer[256];
    const ssize_t got = read(STDIN_FILENO, buffer, sizeof buffer);
    if (got <= 0) {
      QCoreApplication::quit();
      return;
    }
    // Several lines may have arrived at once.
    const QList<QByteArray> lines = QByteArray(buffer, static_cast<qsizetype>(got)).trimmed().split('\n');
    for (const QByteArray& line : lines) {
      portal.change(line.toUInt(), bus);
    }
  });
  return QCoreApplication::exec();
}
