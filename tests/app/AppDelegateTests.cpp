#include "app/AppDelegate.h"

#include <QApplication>
#include <QScreen>
#include <QToolBar>
#include <QWidget>

#include "AppFixture.h"
#include "session/ShellManager.h"

namespace zolt {
namespace {

using test::AppDelegateTest;
using test::waitFor;

TEST_F(AppDelegateTest, OpensOneWindowWhenLaunchingHasFinished) {
  EXPECT_TRUE(delegate.windows().empty());
  delegate.applicationDidFinishLaunching();
  ASSERT_EQ(delegate.windows().size(), 1U);
  EXPECT_TRUE(window(0).isVisible());
  EXPECT_EQ(prepared, 1);
}

TEST_F(AppDelegateTest, LoadsTheSettingsBeforeTheFirstWindow) {
  defaults.setString("theme", "Light");
  EXPECT_EQ(config.theme, Config::ColorScheme::Dark);
  delegate.applicationDidFinishLaunching();
  EXPECT_EQ(config.theme, Config::ColorScheme::Light);
}

TEST_F(AppDelegateTest, GivesAWindowItsSizePlaceAndNames) {
  delegate.newWindow();
  EXPECT_EQ(window(0).size(), QSize(900, 600));
  EXPECT_EQ(window(0).windowTitle(), QStringLiteral("Zolt"));
  EXPECT_EQ(window(0).subtitle().toStdString(), ShellManager::shared().defaultShell().name);
  const QRect available = QApplication::primaryScreen()->availableGeometry();
  EXPECT_GE(window(0).geometry().left(), available.left());
  EXPECT_GE(window(0).geometry().top(), available.top());
  if (available.width() > 900) {
    EXPECT_NEAR(window(0).geometry().center().x(), available.center().x(), 1);
  }
}

TEST_F(AppDelegateTest, GivesAWindowAToolBarWithoutItems) {
  delegate.newWindow();
  auto* toolBar = window(0).findChild<QToolBar*>(QStringLiteral("mainToolbar"));
  ASSERT_NE(toolBar, nullptr);
  EXPECT_TRUE(toolBar->actions().isEmpty());
  EXPECT_FALSE(toolBar->isVisible());
}

TEST_F(AppDelegateTest, RunsTheDefaultShellInANewWindow) {
  delegate.newWindow();
  ContentView& content = window(0).contentViewController().rootView();
  EXPECT_EQ(content.terminal().title(), ShellManager::shared().defaultShell().name);
  EXPECT_TRUE(content.terminal().ptySession().isRunning());
}

TEST_F(AppDelegateTest, StartsTheProgramInTheFolderThatWasAskedFor) {
  TerminalLaunch launch = child({"-c", "pwd; sleep 100"});
  launch.shell->executable = "/bin/sh";
  launch.workingDirectory = folder.path().toStdString();
  EXPECT_TRUE(waitForText(delegate.openWindow(launch), folder.path().toStdString()));
}

TEST_F(AppDelegateTest, KeepsAClosedWindowAndItsShell) {
  TerminalWindow& opened = delegate.openWindow(child({"cat"}));
  ASSERT_TRUE(waitForText(opened, "ready"));
  opened.close();
  EXPECT_FALSE(opened.isVisible());
  ASSERT_EQ(delegate.windows().size(), 1U);
  TerminalController& terminal = opened.contentViewController().rootView().terminal();
  EXPECT_TRUE(terminal.ptySession().isRunning());
  terminal.sendInput("still here");
  EXPECT_TRUE(waitForText(opened, "still here"));
}

TEST_F(AppDelegateTest, GoesOnWithoutWindowsAndOpensAFreshOne) {
  EXPECT_FALSE(AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
  delegate.openWindow(child({"wait"})).close();
  delegate.newWindow();
  ASSERT_EQ(delegate.windows().size(), 2U);
  EXPECT_EQ(window(1).size(), QSize(900, 600));
  EXPECT_TRUE(window(1).isVisible());
}

TEST_F(AppDelegateTest, OpensAWindowForATabWhereNoneIsKey) {
  ASSERT_EQ(QApplication::activeWindow(), nullptr);
  delegate.newTab();
  EXPECT_EQ(delegate.windows().size(), 1U);
}

TEST_F(AppDelegateTest, StartsOneMoreShellForATabAndShowsNothingOfIt) {
  TerminalWindow& opened = delegate.openWindow(child({"wait"}));
  ASSERT_TRUE(waitForText(opened, "waiting"));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&opened));
  const std::size_t before = test::childProcesses().size();
  opened.contentViewController().rootView().textView().makeFrameNow();
  const QImage picture = opened.grab().toImage();
  delegate.newTab();
  EXPECT_EQ(delegate.windows().size(), 1U);
  ASSERT_EQ(opened.contentViewController().terminals().size(), 1U);
  EXPECT_EQ(opened.contentViewController().currentTerminal(), nullptr);
  EXPECT_TRUE(waitFor([&] { return test::childProcesses().size() == before + 1; }));
  test::runLoopFor(std::chrono::milliseconds(300));
  EXPECT_EQ(opened.grab().toImage(), picture);
}

TEST_F(AppDelegateTest, DoesNothingForATabWhereTheKeyWindowIsOfAnotherKind) {
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  const std::size_t before = test::childProcesses().size();
  delegate.newTab();
  EXPECT_TRUE(delegate.windows().empty());
  EXPECT_EQ(test::childProcesses().size(), before);
}

TEST(AppDelegate, EndsEveryShellWithItself) {
  QTemporaryDir folder;
  UserDefaults defaults(folder.filePath(QStringLiteral("zolt.ini")).toStdString());
  Config config(defaults);
  auto delegate = std::make_unique<AppDelegate>(config, defaults, [](TerminalWindow&) {});
  delegate->newWindow();
  delegate->newWindow();
  delegate->windows().front()->close();
  delegate->windows().back()->contentViewController().addTab();
  ASSERT_TRUE(waitFor([] { return test::childProcesses().size() == 3; }));
  delegate.reset();
  EXPECT_TRUE(waitFor([] { return test::childProcesses().empty(); }));
}

}  // namespace
}  // namespace zolt
