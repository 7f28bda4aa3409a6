#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>
#include <map>

class QDBusPendingCallWatcher;

namespace zolt {

/// What is shown to a user who looks elsewhere.
struct DesktopNotification {
  QString title;
  QString body;  ///< plain text; may be empty

  friend bool operator==(const DesktopNotification&, const DesktopNotification&) = default;
};

/// Notifications of the desktop (the Desktop Notifications Specification, on the session bus). Without a session bus or
/// a desktop that shows them nothing happens. Nothing waits for the desktop. Main thread.
class DesktopNotifications : public QObject {
  Q_OBJECT

 public:
  /// Called when the user clicks the notification, with the desktop's permission to take the focus (XDG Activation),
  /// which may be empty.
  using Clicked = std::function<void(const QString& activationToken)>;

  /// On the session bus, which is connected to when it is first needed.
  DesktopNotifications() = default;
  explicit DesktopNotifications(const QDBusConnection& bus) : m_bus(bus) {}

  /// Shows a notification on behalf of `owner`, in place of an earlier one of the same owner that is still there. Once
  /// the owner is gone, a click does nothing.
  void show(QObject& owner, const DesktopNotification& notification, Clicked clicked);

 private Q_SLOTS:
  void actionInvoked(uint id, const QString& action);
  void activationTokenGiven(uint id, const QString& token);
  void notificationClosed(uint id, uint reason);

 private:
  struct Shown {
    uint id = 0;  // 0: the desktop has not told it yet
    QString token;
    Clicked clicked;
  };
  void connectToBus();
  void sent(QObject* owner, QDBusPendingCallWatcher& call);
  std::map<QObject*, Shown>::iterator find(uint id);

  bool m_isListening = false;
  bool m_takesMarkup = true;  // in bodies; as long as the desktop has not said otherwise
  QDBusConnection m_bus{QString()};
  std::map<QObject*, Shown> m_shown;  // by their owners
};

}  // namespace zolt
