// What a window of the full emulation does besides showing its terminal.
#include "app/PaneLife.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <csignal>

#include "AppFixture.h"
#include "support/ManualClock.h"

namespace zolt {
namespace {

using test::waitFor;

class EmulationWindowTest : public test::AppDelegateTest {
 protected:
  void SetUp() override { defaults.setBool("fullEmulation", true); }

  /// What was closed cannot be brought back any more.
  void forgetClosed() { delegateClock.advance(std::chrono::minutes(2)); }

  void open(std::vector<std::string> mode) { open(child(std::move(mode))); }
  void open(const TerminalLaunch& launch) {
    shownWindow = &delegate.openWindow(launch);
    ASSERT_TRUE(QTest::qWaitForWindowActive(shownWindow, test::kPatience.count()));
  }
  /// A shell with job control.
  void openShell() {
    TerminalLaunch launch = child({"-i"});
    launch.shell->executable = "/bin/sh";
    open(launch);
  }
  static std::string textOf(TerminalWindow& window) {
    TextCanvas& canvas = window.contentViewController().rootView().surface().canvas();
    canvas.makeFrameNow();
    return canvas.visibleText().toStdString();
  }
  static bool waitForScreen(TerminalWindow& window, const std::string& text) {
    return waitFor([&] { return textOf(window).find(text) != std::string::npos; });
  }
  PTYSession& session() { return shownWindow->contentViewController().rootView().terminal().ptySession(); }
  /// Runs the test child from the shell, and waits until it is in the foreground.
  void runInShell() {
    session().write(std::string(ZOLT_TEST_CHILD) + " wait\r");
    ASSERT_TRUE(waitFor([this] { return session().foregroundProgram().has_value(); }));
    ASSERT_TRUE(waitForScreen(*shownWindow, "waiting"));
  }
  /// The question that is open; null if there is none of that name.
  QMessageBox* question(const char* name) {
    const auto boxes = shownWindow->findChildren<QMessageBox*>(QLatin1String(name));
    const auto open = std::ranges::find_if(boxes, &QMessageBox::isVisible);
    return open == boxes.end() ? nullptr : *open;
  }
  static void answer(QMessageBox* box, QMessageBox::ButtonRole role) {
    const QList<QAbstractButton*> buttons = box->buttons();
    for (QAbstractButton* each : buttons) {
      if (box->buttonRole(each) == role) return each->click();
    }
  }

  TerminalWindow* shownWindow = nullptr;
};

TEST_F(EmulationWindowTest, HasTheProgramsTitle) {
  defaults.setBool("closeWindowWhenShellExits", false);
  open({"raw", R"(\e]2;one & [*] two\x07)"});
  EXPECT_TRUE(waitFor([this] { return shownWindow->windowTitle() == QStringLiteral("one & [*][*] two"); }))
      << shownWindow->windowTitle().toStdString();
}

TEST_F(EmulationWindowTest, ClosesWithItsShellAndIsGone) {
  open({"wait"});
  ASSERT_TRUE(waitForScreen(*shownWindow, "waiting"));
  session().sendSignal(SIGKILL);
  // It lived for a moment only, and failed.
  ASSERT_TRUE(waitForScreen(*shownWindow, "The shell ended with status 137."));
  EXPECT_TRUE(shownWindow->isVisible());

  const auto before = delegate.windows().size();
  delegate.openWindow(child({"exit", "0"}));
  EXPECT_TRUE(waitFor([&] { return delegate.windows().size() == before; }));
}

TEST_F(EmulationWindowTest, ShowsHowAShellEndedThatFailedAtOnceAndClosesByReturn) {
  open({"exit", "3"});
  ASSERT_TRUE(waitForScreen(*shownWindow, "The shell ended with status 3."));
  const std::string before = textOf(*shownWindow);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_A);
  test::runLoopFor(std::chrono::milliseconds(50));
  EXPECT_TRUE(shownWindow->isVisible());
  EXPECT_EQ(textOf(*shownWindow), before) << "nothing echoes";
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(delegate.windows().empty());
}

TEST_F(EmulationWindowTest, StaysOpenWhenItsShellEndsIfTheUserSaysSo) {
  defaults.setBool("closeWindowWhenShellExits", false);
  open({"exit", "0"});
  EXPECT_TRUE(waitForScreen(*shownWindow, "The shell ended with status 0."));
  EXPECT_TRUE(shownWindow->isVisible());
}

TEST_F(EmulationWindowTest, SaysThatTheShellCouldNotBeStarted) {
  TerminalLaunch launch = child({});
  launch.shell->executable = "/no/such/shell";
  open(launch);
  EXPECT_TRUE(waitForScreen(*shownWindow, "The shell could not be started."));
}

TEST_F(EmulationWindowTest, EndsItsTerminalAWhileAfterItIsClosed) {
  open({"wait"});
  ASSERT_TRUE(waitForScreen(*shownWindow, "waiting"));
  shownWindow->close();
  EXPECT_TRUE(delegate.windows().empty());
  EXPECT_EQ(test::childProcesses().size(), 1U);
  forgetClosed();
  EXPECT_TRUE(waitFor([] { return test::childProcesses().empty(); }));
}

TEST_F(EmulationWindowTest, ClosesWithoutAQuestionAtTheShellsPrompt) {
  openShell();
  ASSERT_TRUE(waitFor([this] { return session().isRunning(); }));
  shownWindow->close();
  EXPECT_TRUE(delegate.windows().empty());
}

TEST_F(EmulationWindowTest, NamesTheProgramThatRunsBeforeItCloses) {
  openShell();
  runInShell();
  shownWindow->close();
  ASSERT_TRUE(shownWindow->isVisible());
  ASSERT_NE(question("closeQuestion"), nullptr);
  EXPECT_EQ(question("closeQuestion")->text(), QStringLiteral("“testchild” is running."));
  shownWindow->close();
  EXPECT_EQ(shownWindow->findChildren<QMessageBox*>().size(), 1) << "one question at a time";
  answer(question("closeQuestion"), QMessageBox::RejectRole);
  EXPECT_TRUE(shownWindow->isVisible());
  ASSERT_TRUE(waitFor([this] { return question("closeQuestion") == nullptr; }));
  shownWindow->close();
  answer(question("closeQuestion"), QMessageBox::AcceptRole);
  EXPECT_TRUE(delegate.windows().empty());
  forgetClosed();
  EXPECT_TRUE(waitFor([] { return test::childProcesses().empty(); }));
}

TEST_F(EmulationWindowTest, ClosesWithoutAQuestionIfTheUserWantsNone) {
  defaults.setBool("warnBeforeClosing", false);
  openShell();
  runInShell();
  shownWindow->close();
  EXPECT_TRUE(delegate.windows().empty());
}

TEST_F(EmulationWindowTest, QuitAsksWhereAProgramRuns) {
  openShell();
  runInShell();
  delegate.quit();
  ASSERT_NE(question("quitQuestion"), nullptr);
  EXPECT_EQ(question("quitQuestion")->text(), QStringLiteral("“testchild” is running."));
  answer(question("quitQuestion"), QMessageBox::RejectRole);
  EXPECT_TRUE(shownWindow->isVisible());
  ASSERT_TRUE(waitFor([this] { return question("quitQuestion") == nullptr; }));
  QTimer::singleShot(0, &delegate, [this] {
    delegate.quit();
    answer(question("quitQuestion"), QMessageBox::AcceptRole);
  });
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_TRUE(delegate.windows().empty());
}

TEST_F(EmulationWindowTest, AsksBeforeItEndsAProgramOfTheCommandLine) {
  TerminalLaunch program = child({"wait"});
  program.isForProgram = true;
  open(program);
  ASSERT_TRUE(waitForScreen(*shownWindow, "waiting"));
  shownWindow->close();
  ASSERT_NE(question("closeQuestion"), nullptr);
  EXPECT_EQ(question("closeQuestion")->text(), QStringLiteral("“testchild” is running."));
  EXPECT_EQ(question("closeQuestion")->informativeText().indexOf(QStringLiteral("Reopen")), -1)
      << question("closeQuestion")->informativeText().toStdString();
  answer(question("closeQuestion"), QMessageBox::RejectRole);
  EXPECT_TRUE(shownWindow->isVisible());
  delegate.quit();
  ASSERT_NE(question("quitQuestion"), nullptr);
  answer(question("quitQuestion"), QMessageBox::RejectRole);
  session().sendSignal(SIGKILL);
  ASSERT_TRUE(waitFor([this] { return !session().isRunning(); }));
  shownWindow->close();
  EXPECT_FALSE(shownWindow->isVisible()) << "nothing runs in it any more";
}

TEST_F(EmulationWindowTest, QuitAsksNothingOtherwise) {
  openShell();
  QTimer::singleShot(0, &delegate, [this] { delegate.quit(); });
  EXPECT_EQ(QApplication::exec(), 0);
}

TEST_F(EmulationWindowTest, TypesTheStartupCommandOnce) {
  defaults.setString("startupCommand", "ls");
  open({"hex"});
  ASSERT_TRUE(waitForScreen(*shownWindow, "6C 73 0D"));
  session().write("!");
  ASSERT_TRUE(waitForScreen(*shownWindow, "6C 73 0D 21")) << textOf(*shownWindow);
  EXPECT_EQ(textOf(*shownWindow).find("6C"), textOf(*shownWindow).rfind("6C"));
}

TEST_F(EmulationWindowTest, TypesNothingIntoAProgram) {
  defaults.setString("startupCommand", "ls");
  TerminalLaunch program = child({"hex"});
  program.isForProgram = true;
  open(program);
  ASSERT_TRUE(waitForScreen(*shownWindow, "ready"));
  session().write("!");
  ASSERT_TRUE(waitForScreen(*shownWindow, "21"));
  EXPECT_EQ(textOf(*shownWindow).find("6C"), std::string::npos) << textOf(*shownWindow);
}

TEST_F(EmulationWindowTest, RunsTheShellThatIsSet) {
  defaults.setString("startupShell", ZOLT_TEST_CHILD);
  open(TerminalLaunch());
  EXPECT_EQ(shownWindow->subtitle(), QStringLiteral("testchild"));
  EXPECT_EQ(textOf(*shownWindow).find("default shell"), std::string::npos);
}

TEST_F(EmulationWindowTest, RunsTheDefaultShellWithANoticeIfTheOneThatIsSetCannotBeRun) {
  for (const std::string& path : {std::string("/no/such/shell"), folder.path().toStdString()}) {
    defaults.setString("startupShell", path);
    open(TerminalLaunch());
    EXPECT_TRUE(waitForScreen(*shownWindow, "the default shell.")) << textOf(*shownWindow);
    EXPECT_TRUE(session().isRunning());
  }
}

// A shell that has lived for a while closes its window whatever its status: that is often the last command's.
TEST_F(EmulationWindowTest, IsOverWithAShellThatFailsLater) {
  config.setupDefaults();
  EmulationSettingsStore settings(config, defaults);
  test::ManualClock clock;
  TerminalPane pane(std::make_unique<TerminalController>(child({"wait"}).shell, TerminalController::Restart::Never),
                    [&](TerminalController& terminal, QWidget* parent) {
                      return std::make_unique<EmulationSurface>(terminal, TerminalSize{.rows = 24, .columns = 80},
                                                                settings, parent);
                    });
  auto* life = new PaneLife(pane, settings, clock);
  bool isOver = false;
  QObject::connect(life, &PaneLife::over, [&isOver] { isOver = true; });
  TextCanvas& canvas = pane.surface().canvas();
  pane.resize(600, 400);
  pane.show();
  ASSERT_TRUE(waitFor([&] {
    canvas.makeFrameNow();
    return canvas.visibleText().contains(QStringLiteral("waiting"));
  }));
  clock.advance(PaneLife::shortestLife);
  pane.terminal().ptySession().sendSignal(SIGKILL);
  EXPECT_TRUE(waitFor([&] { return isOver; }));
  EXPECT_TRUE(life->isOver());
}

}  // namespace
}  // namespace zolt
