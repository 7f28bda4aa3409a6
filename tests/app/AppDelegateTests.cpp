#include "app/AppDelegate.h"

#include <QApplication>
#include <QScreen>
#include <QTcpServer>
#include <QToolBar>
#include <QWidget>
#include <algorithm>
#include <cstdlib>

#include "AppFixture.h"
#include "app/ProgramRun.h"
#include "session/ShellManager.h"

namespace zolt {
namespace {

using test::AppDelegateTest;
using test::waitFor;

// Before the catalogue is made: a default that is not the first of the shells that are installed, on any machine.
const bool kLoginShellIsSh = setenv("SHELL", "/bin/sh", 1) == 0;

// Where a window of this size stands: in the middle, or at the corner in a direction in which the screen is too small.
QPoint middleOf(const QScreen& screen, QSize size) {
  const QRect available = screen.availableGeometry();
  QRect frame(QPoint(), size);
  frame.moveCenter(available.center());
  return {std::max(frame.left(), available.left()), std::max(frame.top(), available.top())};
}

TEST_F(AppDelegateTest, OpensOneWindowWhenLaunchingHasFinished) {
  EXPECT_TRUE(delegate.windows().empty());
  delegate.applicationDidFinishLaunching();
  ASSERT_EQ(delegate.windows().size(), 1U);
  EXPECT_TRUE(window(0).isVisible());
  EXPECT_EQ(prepared, 1);
}

TEST_F(AppDelegateTest, LoadsTheSettingsOnceBeforeTheFirstWindow) {
  defaults.setString("theme", "Light");
  std::vector<Config::ColorScheme> themes;
  AppDelegate loading(config, defaults, [&](TerminalWindow&) { themes.push_back(config.theme); });
  EXPECT_EQ(config.theme, Config::ColorScheme::Dark);
  loading.applicationDidFinishLaunching(child({"wait"}));
  config.theme = Config::ColorScheme::Dark;  // not stored yet: loading again would bring Light back
  loading.openWindow(child({"wait"}));
  EXPECT_EQ(themes, (std::vector{Config::ColorScheme::Light, Config::ColorScheme::Dark}));
}

TEST_F(AppDelegateTest, StartsTheUpdateServiceWithItself) {
  EXPECT_TRUE(defaults.boolForKey("SUHasLaunchedBefore")) << "the service has noted that it was started";
}

// A feed that accepts the connection and never answers keeps a check under way.
class AppDelegateWithSilentFeedTest : public AppDelegateTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(feed.listen(QHostAddress::LocalHost));
    defaults.setString("SUFeedURL", "https://127.0.0.1:" + std::to_string(feed.serverPort()) + "/feed.xml");
    defaults.setString("SUPublicEDKey", QByteArray(32, 'k').toBase64().toStdString());
  }

  QTcpServer feed;
};

TEST_F(AppDelegateWithSilentFeedTest, ChecksForUpdatesWhenAskedTo) {
  EXPECT_TRUE(delegate.updaterController().canCheckForUpdates());
  delegate.checkForUpdates();
  EXPECT_TRUE(waitFor([this] { return feed.hasPendingConnections(); }));
}

TEST_F(AppDelegateWithSilentFeedTest, OffersNoCheckWhileOneIsUnderWay) {
  EXPECT_TRUE(delegate.validate("checkForUpdates"));
  delegate.checkForUpdates();
  EXPECT_FALSE(delegate.validate("checkForUpdates"));
  EXPECT_TRUE(delegate.validate("newWindow"));
}

TEST_F(AppDelegateTest, GivesAWindowItsSizePlaceAndNames) {
  delegate.newWindow();
  EXPECT_EQ(window(0).size(), QSize(900, 600));
  EXPECT_EQ(window(0).windowTitle(), QStringLiteral("Zolt"));
  ASSERT_TRUE(kLoginShellIsSh);
  EXPECT_EQ(window(0).subtitle(), QStringLiteral("Sh"));
  EXPECT_EQ(window(0).geometry().topLeft(), middleOf(*window(0).screen(), window(0).size()));
}

TEST_F(AppDelegateTest, CentresAWindowOfAnySize) {
  TerminalWindow& opened = delegate.openWindow(child({"wait"}));
  const QRect available = opened.screen()->availableGeometry();
  for (const QSize size : {available.size() / 2, available.size() * 2, QSize(available.width() * 2, 500)}) {
    opened.resize(size);
    opened.move(available.topLeft() + QPoint(7, 9));
    opened.center();
    EXPECT_EQ(opened.geometry().topLeft(), middleOf(*opened.screen(), opened.size()))
        << size.width() << " by " << size.height();
  }
}

TEST_F(AppDelegateTest, NamesTheProgramBesideTheTitleWhereOneRunsInsteadOfTheShell) {
  TerminalLaunch launch{.shell = shellForProgram({ZOLT_TEST_CHILD, "wait"}),
                        .restart = TerminalController::Restart::Never,
                        .workingDirectory = {}};
  EXPECT_EQ(delegate.openWindow(launch).subtitle(), QStringLiteral("testchild"));
  delegate.newWindow();
  EXPECT_EQ(window(1).subtitle().toStdString(), ShellManager::shared().defaultShell().name);
}

// The variable stands in this process's environment while a window is shown, and no shell sees it.
TEST_F(AppDelegateTest, ShowsAWindowWithItsActivationTokenAndKeepsThatFromTheShell) {
  qputenv("XDG_ACTIVATION_TOKEN", "own");
  QByteArray atShow;
  AppDelegate activating(config, defaults, [&](TerminalWindow& window) {
    window.installEventFilter(new test::OnEvent(
        QEvent::Show, [&] { atShow = qgetenv("XDG_ACTIVATION_TOKEN"); }, &window));
  });
  TerminalLaunch launch = child({"environment"});
  launch.activationToken = "another start's";
  EXPECT_TRUE(waitForText(activating.openWindow(launch), "XDG_ACTIVATION_TOKEN=own"));
  EXPECT_EQ(atShow, "another start's");
  EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "own");
  EXPECT_TRUE(waitForText(activating.openWindow(child({"environment"})), "XDG_ACTIVATION_TOKEN=own"));

  qunsetenv("XDG_ACTIVATION_TOKEN");
  activating.openWindow(launch);
  EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

TEST_F(AppDelegateTest, GivesEveryShellTheEnvironmentThatItWasMadeWith) {
  AppDelegate other(config, defaults, [](TerminalWindow&) {}, {{"ONLY", "this"}});
  TerminalWindow& opened = other.openWindow(child({"environment"}));
  EXPECT_TRUE(waitForText(opened, "ONLY=this"));
  EXPECT_EQ(shown(opened).find("HOME="), std::string::npos);
  opened.contentViewController().addTab();
  EXPECT_EQ(opened.contentViewController().terminals().front()->ptySession().environment,
            (Environment{{"ONLY", "this"}}));
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

TEST_F(AppDelegateTest, KeepsRunningWithoutWindowsAndOpensANewOne) {
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
  ASSERT_TRUE(QTest::qWaitForWindowActive(&opened, test::kPatience.count()));
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

TEST_F(AppDelegateTest, IgnoresANewTabWhenTheKeyWindowIsNotATerminal) {
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other, test::kPatience.count()));
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
