// How far programs are, as the desktop's dock is told on a session bus of the tests' own.
#include "app/LauncherProgress.h"

#include <QDBusConnection>
#include <QVariantMap>

#include "AppFixture.h"
#include "support/PrivateBus.h"

namespace zolt {
namespace {

using test::waitFor;

/// Listens as a dock does.
class FakeDock : public QObject {
  Q_OBJECT

 public:
  QStringList told;  // the progress, or "none"
  QString application;

 public Q_SLOTS:
  void update(const QString& uri, const QVariantMap& properties) {
    application = uri;
    const bool isShown = properties.value(QStringLiteral("progress-visible")).toBool();
    told.push_back(isShown ? QString::number(properties.value(QStringLiteral("progress")).toDouble())
                           : QStringLiteral("none"));
  }
};

class LauncherProgressTest : public test::AppDelegateTest {
 protected:
  void SetUp() override {
    if (!bus.isThere()) GTEST_SKIP() << "dbus-daemon is not installed";
    ASSERT_TRUE(dockBus().connect(QString(), QString(), QStringLiteral("com.canonical.Unity.LauncherEntry"),
                                  QStringLiteral("Update"), &dock, SLOT(update(QString, QVariantMap))));
    launcher =
        std::make_unique<LauncherProgress>(LauncherEntry(QStringLiteral("org.zolt.Zolt.desktop"), bus.connect()));
    defaults.setBool("fullEmulation", true);
    delegate.openWindow(child({"wait"}));
    launcher->follow(tabs());
  }
  QDBusConnection& dockBus() {
    if (!m_dockBus) m_dockBus = std::make_unique<QDBusConnection>(bus.connect());
    return *m_dockBus;
  }
  TerminalTabs& tabs() { return static_cast<TerminalTabs&>(window(0).contentViewController().rootView().area()); }
  bool isTold(const QString& last) {
    return waitFor([&] {
      for (TerminalPane* pane : tabs().panes()) {
        pane->surface().canvas().makeFrameNow();
      }
      return !dock.told.isEmpty() && dock.told.back() == last;
    });
  }
  static void print(TerminalPane& pane, const std::string& output) {
    TerminalTabs::surfaceOf(pane).display().emulator().feed(Bytes(output));
  }

  test::PrivateBus bus;
  FakeDock dock;
  std::unique_ptr<LauncherProgress> launcher;

 private:
  std::unique_ptr<QDBusConnection> m_dockBus;
};

TEST_F(LauncherProgressTest, IsWhatTheProgramTellsUntilItIsDone) {
  print(tabs().currentPane(), "\033]9;4;1;40\033\\");
  ASSERT_TRUE(isTold(QStringLiteral("0.4")));
  EXPECT_EQ(dock.application, QStringLiteral("application://org.zolt.Zolt.desktop"));
  print(tabs().currentPane(), "\033]9;4;2;70\033\\");  // an error
  EXPECT_TRUE(isTold(QStringLiteral("0.7")));
  print(tabs().currentPane(), "\033]9;4;3\033\\");  // no end that is known
  EXPECT_TRUE(isTold(QStringLiteral("none")));
  print(tabs().currentPane(), "\033]9;4;1;100\033\\");
  EXPECT_TRUE(isTold(QStringLiteral("1")));
  print(tabs().currentPane(), "\033]9;4;0\033\\");
  EXPECT_TRUE(isTold(QStringLiteral("none")));
  EXPECT_EQ(dock.told.size(), 5);
}

TEST_F(LauncherProgressTest, IsThatWhichHasTheMostLeftOfAllInWindowsOnTheScreen) {
  TerminalPane& first = tabs().currentPane();
  print(first, "\033]9;4;1;80\033\\");
  ASSERT_TRUE(isTold(QStringLiteral("0.8")));
  TerminalPane* second = tabs().openTab({.folder = {}, .program = child({"wait"}).shell});
  ASSERT_NE(second, nullptr);
  print(*second, "\033]9;4;4;20\033\\");  // paused
  ASSERT_TRUE(isTold(QStringLiteral("0.2")));
  const DetachedTab taken = tabs().takeTab(1);
  EXPECT_TRUE(isTold(QStringLiteral("0.8")));
  window(0).hide();
  EXPECT_TRUE(isTold(QStringLiteral("none")));
  window(0).show();
  EXPECT_TRUE(isTold(QStringLiteral("0.8")));
}

}  // namespace
}  // namespace zolt

#include "LauncherProgressTests.moc"
