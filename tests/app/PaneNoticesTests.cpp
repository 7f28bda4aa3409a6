// What a user who looks elsewhere is told, with a fake desktop on a session bus of the tests' own.
#include "app/PaneNotices.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include "AppFixture.h"
#include "app/PaneMaker.h"
#include "support/PrivateBus.h"

namespace zolt {
namespace {

using test::waitFor;

/// Takes notifications as a desktop does.
class FakeDesktop : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

 public:
  struct Note {
    uint id;
    uint replaced;
    QString title;
    QString body;
    QStringList actions;
    QVariantMap hints;
  };
  std::vector<Note> notes;
  QStringList capabilities{QStringLiteral("body-markup")};

 public Q_SLOTS:
  QStringList GetCapabilities() { return capabilities; }
  uint Notify(const QString&, uint replaced, const QString&, const QString& title, const QString& body,
              const QStringList& actions, const QVariantMap& hints, int) {
    const uint id = replaced != 0 ? replaced : ++m_lastId;
    notes.push_back({id, replaced, title, body, actions, hints});
    return id;
  }

 Q_SIGNALS:
  void ActionInvoked(uint id, const QString& action);
  void ActivationToken(uint id, const QString& token);
  void NotificationClosed(uint id, uint reason);

 private:
  uint m_lastId = 40;
};

class PaneNoticesTest : public test::AppDelegateTest {
 protected:
  void SetUp() override {
    if (!bus.isThere()) GTEST_SKIP() << "dbus-daemon is not installed";
    QDBusConnection desktopBus = bus.connect();
    ASSERT_TRUE(desktopBus.registerService(QStringLiteral("org.freedesktop.Notifications")));
    ASSERT_TRUE(desktopBus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), &desktop,
                                          QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
    notifications = std::make_unique<DesktopNotifications>(bus.connect());
    PaneMaker maker(settings, *notifications, processEnvironment());
    pane = maker.make({.shell = child({"wait"}).shell, .size = {.rows = 24, .columns = 80}});
    window.resize(500, 300);
    pane->setParent(&window);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, test::kPatience.count()));
    lookElsewhere();
  }
  void TearDown() override {
    pane.reset();
    notifications.reset();
  }
  void lookElsewhere() {
    other.show();
    QApplication::setActiveWindow(&other);
    ASSERT_TRUE(waitFor([this] { return !window.isActiveWindow(); }));
  }
  EmulationSurface& surface() { return static_cast<EmulationSurface&>(pane->surface()); }
  void print(const std::string& output) { surface().display().emulator().feed(Bytes(output)); }
  bool isTold(std::size_t count) {
    return waitFor([&] {
      surface().canvas().makeFrameNow();
      return desktop.notes.size() >= count;
    });
  }
  /// Nothing is on its way: what is asked for afterwards comes first.
  void expectNothingTold() {
    const std::size_t before = desktop.notes.size();
    lookElsewhere();
    defaults.setBool("desktopNotifications", true);
    surface().notificationWanted(QString(), QStringLiteral("sentinel"));
    ASSERT_TRUE(isTold(before + 1));
    EXPECT_EQ(desktop.notes.back().body, QStringLiteral("sentinel"));
    EXPECT_EQ(desktop.notes.size(), before + 1);
  }

  test::PrivateBus bus;
  FakeDesktop desktop;
  EmulationSettingsStore settings{config, defaults};
  std::unique_ptr<DesktopNotifications> notifications;
  QWidget window;
  QWidget other;
  std::unique_ptr<TerminalPane> pane;
};

TEST(NoticeOfACommand, TellsHowItEndedAndHowLongItTook) {
  const auto title = [](int milliseconds, int status) {
    return noticeOf({.took = vt::Milliseconds(milliseconds), .exitStatus = status}, {}).title.toStdString();
  };
  EXPECT_EQ(title(12'900, 0), "Command finished after 12 s");
  EXPECT_EQ(title(125'000, 2), "Command failed with status 2 after 2 min 5 s");
  EXPECT_EQ(title(2 * 3'600'000 + 180'000, 130), "Command failed with status 130 after 2 h 3 min");
  EXPECT_EQ(noticeOf({}, QStringLiteral("make all")).body, QStringLiteral("make all"));
}

TEST_F(PaneNoticesTest, TellsWhatAProgramAsksToBeTold) {
  print("\033]777;notify;Mail;from <b>Ada</b>\033\\");
  ASSERT_TRUE(isTold(1));
  EXPECT_EQ(desktop.notes[0].title, QStringLiteral("Mail"));
  EXPECT_EQ(desktop.notes[0].body, QStringLiteral("from &lt;b&gt;Ada&lt;/b&gt;")) << "markup is the desktop's";
  EXPECT_EQ(desktop.notes[0].hints.value(QStringLiteral("desktop-entry")), QStringLiteral("org.zolt.Zolt"));
  EXPECT_EQ(desktop.notes[0].actions.value(0), QStringLiteral("default"));
}

TEST_F(PaneNoticesTest, ReplacesTheNoticeThatIsThere) {
  print("\033]9;one\033\\");
  ASSERT_TRUE(isTold(1));
  EXPECT_EQ(desktop.notes[0].replaced, 0U);
  ASSERT_TRUE(waitFor([&] {
    print("\033]9;two\033\\");
    isTold(desktop.notes.size() + 1);
    return desktop.notes.back().replaced == desktop.notes[0].id;
  }));
}

TEST_F(PaneNoticesTest, TellsThatALongCommandHasEnded) {
  surface().commandEnded({.took = vt::Milliseconds(10'000), .exitStatus = 0});
  expectNothingTold();
  print("\033]133;A\033\\$ \033]133;B\033\\make all\r\n\033]133;C\033\\done\r\n\033]133;D;2\033\\");
  ASSERT_TRUE(waitFor([this] {
    surface().canvas().makeFrameNow();
    return surface().lastCommand() == QStringLiteral("make all");
  })) << surface().lastCommand().toStdString();
  surface().commandEnded({.took = vt::Milliseconds(11'000), .exitStatus = 2});
  ASSERT_TRUE(isTold(2));
  EXPECT_EQ(desktop.notes[1].title, QStringLiteral("Command failed with status 2 after 11 s"));
  EXPECT_EQ(desktop.notes[1].body, QStringLiteral("make all"));
}

TEST_F(PaneNoticesTest, TellsNothingToWhoLooksAtTheWindowOrDoesNotWantIt) {
  QApplication::setActiveWindow(&window);
  ASSERT_TRUE(waitFor([this] { return window.isActiveWindow(); }));
  surface().notificationWanted(QString(), QStringLiteral("seen"));
  expectNothingTold();
  defaults.setBool("desktopNotifications", false);
  surface().notificationWanted(QString(), QStringLiteral("unwanted"));
  expectNothingTold();
  window.hide();
  surface().notificationWanted(QString(), QStringLiteral("of a window that is closed"));
  window.show();
  expectNothingTold();
}

TEST_F(PaneNoticesTest, BringsThePaneUpWhenItIsClicked) {
  QStringList tokens;
  QObject::connect(PaneNotices::of(*pane), &PaneNotices::clicked, &window,
                   [&](const QString& token) { tokens << token; });
  surface().notificationWanted(QStringLiteral("t"), QString());
  ASSERT_TRUE(isTold(1));
  const uint id = desktop.notes[0].id;
  // The desktop may answer to the call after it is clicked.
  ASSERT_TRUE(waitFor([&] {
    Q_EMIT desktop.ActivationToken(id, QStringLiteral("token"));
    Q_EMIT desktop.ActionInvoked(id + 1, QStringLiteral("default"));
    Q_EMIT desktop.ActionInvoked(id, QStringLiteral("other"));
    Q_EMIT desktop.ActionInvoked(id, QStringLiteral("default"));
    test::runLoopFor(std::chrono::milliseconds(20));
    return !tokens.isEmpty();
  }));
  EXPECT_EQ(tokens.first(), QStringLiteral("token"));
}

}  // namespace
}  // namespace zolt

#include "PaneNoticesTests.moc"
