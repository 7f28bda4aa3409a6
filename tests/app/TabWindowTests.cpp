// Tabs, splits and what was closed, in windows of the full emulation.
#include <QApplication>
#include <QMessageBox>
#include <algorithm>
#include <csignal>

#include "AppFixture.h"
#include "app/EmulationWindowController.h"
#include "app/PaneLife.h"

namespace zolt {
namespace {

using test::waitFor;

class TabWindowTest : public test::AppDelegateTest {
 protected:
  void SetUp() override {
    defaults.setBool("fullEmulation", true);
    defaults.setString("startupShell", ZOLT_TEST_CHILD);  // prints its arguments and waits
    shownWindow = &delegate.openWindow(child({"wait"}));
    ASSERT_TRUE(QTest::qWaitForWindowActive(shownWindow, test::kPatience.count()));
  }

  static TerminalTabs& tabsOf(TerminalWindow& window) {
    return static_cast<TerminalTabs&>(window.contentViewController().rootView().area());
  }
  TerminalTabs& tabs() { return tabsOf(*shownWindow); }
  static std::unique_ptr<TerminalPane> waiting(EmulationSettingsStore& settings) {
    return std::make_unique<TerminalPane>(
        std::make_unique<TerminalController>(child({"wait"}).shell, TerminalController::Restart::Never),
        [&](TerminalController& terminal, QWidget* parent) {
          return std::make_unique<EmulationSurface>(terminal, TerminalSize{.rows = 24, .columns = 80}, settings,
                                                    parent);
        });
  }
  static bool waitForScreen(TerminalPane& pane, const std::string& text) {
    return waitFor([&] {
      TextCanvas& canvas = pane.surface().canvas();
      canvas.makeFrameNow();
      return canvas.visibleText().toStdString().find(text) != std::string::npos;
    });
  }
  /// A tab with a shell that waits, in front.
  TerminalPane& addWaitingTab() {
    auto pane = waiting(settings);
    TerminalPane& added = *pane;
    DetachedTab tab{.view = std::make_unique<SplitView>(*pane.release()), .name = {}, .current = &added};
    tabs().insertTab(std::move(tab), tabs().count());
    EXPECT_TRUE(waitForScreen(added, "waiting"));
    return added;
  }
  TerminalPane& addWaitingSplit() {
    auto pane = waiting(settings);
    TerminalPane& added = *pane;
    tabs().splitWith(tabs().currentPane(), Direction::Right, std::move(pane));
    EXPECT_TRUE(waitForScreen(added, "waiting"));
    return added;
  }
  static bool isRunning(TerminalPane& pane) { return pane.terminal().ptySession().isRunning(); }
  QMessageBox* question() {
    const auto boxes = shownWindow->findChildren<QMessageBox*>(QStringLiteral("closeQuestion"));
    const auto open = std::ranges::find_if(boxes, &QMessageBox::isVisible);
    return open == boxes.end() ? nullptr : *open;
  }
  static void answer(QMessageBox* box, QMessageBox::ButtonRole role) {
    const QList<QAbstractButton*> buttons = box->buttons();
    for (QAbstractButton* each : buttons) {
      if (box->buttonRole(each) == role) return each->click();
    }
  }
  void letTimePass() { delegateClock.advance(std::chrono::minutes(2)); }

  EmulationSettingsStore settings{config, defaults};
  TerminalWindow* shownWindow = nullptr;
};

TEST_F(TabWindowTest, NewTabShowsOneMoreTerminalInTheKeyWindow) {
  delegate.newTab();
  EXPECT_EQ(tabs().count(), 2);
  EXPECT_TRUE(isRunning(tabs().currentPane()));
  EXPECT_TRUE(shownWindow->contentViewController().terminals().empty()) << "none runs unseen";
}

TEST_F(TabWindowTest, BringsBackAClosedTabWithItsShellAlive) {
  TerminalPane& pane = addWaitingTab();
  addWaitingTab();
  tabs().setCurrentIndex(1);
  const auto shell = pane.terminal().ptySession().shellProcess();
  tabs().closeTab();
  EXPECT_EQ(tabs().count(), 2);
  EXPECT_TRUE(delegate.validate("reopenClosed"));
  delegate.reopenClosed();
  EXPECT_EQ(tabs().count(), 3);
  EXPECT_EQ(tabs().indexOf(pane), 1);
  EXPECT_EQ(&tabs().currentPane(), &pane);
  EXPECT_EQ(pane.terminal().ptySession().shellProcess(), shell);
  EXPECT_TRUE(waitForScreen(pane, "waiting")) << "with its screen";
  EXPECT_FALSE(delegate.validate("reopenClosed"));
}

TEST_F(TabWindowTest, BringsBackAClosedSplitWhereItWas) {
  TerminalPane& pane = addWaitingSplit();
  const QRect place = pane.geometry();
  tabs().closePane();
  EXPECT_EQ(tabs().panes().size(), 1U);
  delegate.reopenClosed();
  EXPECT_EQ(tabs().count(), 1);
  EXPECT_EQ(pane.geometry(), place);
  EXPECT_TRUE(isRunning(pane));
}

TEST_F(TabWindowTest, BringsBackAClosedWindowWithAllItsTabs) {
  TerminalPane& first = tabs().currentPane();
  addWaitingTab();
  shownWindow->close();
  EXPECT_TRUE(delegate.windows().empty());
  delegate.reopenClosed();
  ASSERT_EQ(delegate.windows().size(), 1U);
  EXPECT_EQ(delegate.windows().front().get(), shownWindow);
  EXPECT_TRUE(shownWindow->isVisible());
  EXPECT_EQ(tabs().count(), 2);
  EXPECT_TRUE(isRunning(first));
  shownWindow->close();
  EXPECT_TRUE(delegate.windows().empty()) << "it closes as before";
}

TEST_F(TabWindowTest, OpensAWindowForATabWhoseWindowIsGone) {
  TerminalPane& pane = addWaitingTab();
  tabs().closeTab();
  shownWindow->close();
  delegate.reopenClosed();
  delegate.reopenClosed();
  ASSERT_EQ(delegate.windows().size(), 1U);
  EXPECT_EQ(tabs().indexOf(pane), 1) << "the window came back first";

  tabs().closeTab();
  tabs().currentPane().terminal().ptySession().sendSignal(SIGKILL);
  ASSERT_TRUE(waitForScreen(tabs().currentPane(), "The shell ended with status 137."));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  ASSERT_TRUE(waitFor([this] { return delegate.windows().empty(); }));
  delegate.reopenClosed();
  ASSERT_EQ(delegate.windows().size(), 1U);
  EXPECT_EQ(tabsOf(window(0)).indexOf(pane), 0);
  EXPECT_TRUE(isRunning(pane));
}

TEST_F(TabWindowTest, EndsTheShellsOfWhatNobodyBringsBack) {
  addWaitingTab();
  addWaitingSplit();
  tabs().closePane();
  letTimePass();
  EXPECT_FALSE(delegate.validate("reopenClosed"));
  EXPECT_TRUE(waitFor([] { return test::childProcesses().size() == 2; }));
  tabs().closeTab();
  letTimePass();
  EXPECT_TRUE(waitFor([] { return test::childProcesses().size() == 1; }));
  shownWindow->close();
  letTimePass();
  EXPECT_TRUE(waitFor([] { return test::childProcesses().empty(); }));
  delegate.reopenClosed();
  EXPECT_TRUE(delegate.windows().empty());
}

TEST_F(TabWindowTest, DoesNotBringBackWhatHasEndedByItself) {
  TerminalPane& pane = addWaitingTab();
  test::ManualClock clock;
  const auto* life = new PaneLife(pane, settings, clock);
  clock.advance(PaneLife::shortestLife);
  tabs().closeTab();
  pane.terminal().ptySession().sendSignal(SIGKILL);
  ASSERT_TRUE(waitFor([&] { return life->isOver(); }));
  delegate.reopenClosed();
  EXPECT_EQ(tabs().count(), 1);
  EXPECT_FALSE(delegate.validate("reopenClosed"));
}

TEST_F(TabWindowTest, ClosesThePaneTheTabAndThenTheWindow) {
  addWaitingTab();
  addWaitingSplit();
  tabs().closePane();
  EXPECT_EQ(tabs().panesOf(1).size(), 1U);
  EXPECT_EQ(tabs().count(), 2);
  tabs().closePane();
  EXPECT_EQ(tabs().count(), 1);
  tabs().closePane();
  EXPECT_TRUE(delegate.windows().empty());
}

TEST_F(TabWindowTest, AsksBeforeItClosesATabInWhichAProgramRuns) {
  const Shell shell{.name = "sh", .executable = "/bin/sh", .args = {"-i"}, .icon = "terminal"};
  auto pane = std::make_unique<TerminalPane>(
      std::make_unique<TerminalController>(shell, TerminalController::Restart::Never),
      [this](TerminalController& terminal, QWidget* parent) {
        return std::make_unique<EmulationSurface>(terminal, TerminalSize{.rows = 24, .columns = 80}, settings, parent);
      });
  TerminalPane& running = *pane;
  tabs().insertTab({.view = std::make_unique<SplitView>(*pane.release()), .name = {}, .current = &running}, 1);
  PTYSession& session = running.terminal().ptySession();
  session.write(std::string(ZOLT_TEST_CHILD) + " wait\r");
  ASSERT_TRUE(waitFor([&] { return session.foregroundProgram().has_value(); }));
  tabs().closeTab();
  ASSERT_NE(question(), nullptr);
  EXPECT_EQ(question()->text(), QStringLiteral("“testchild” is running."));
  EXPECT_TRUE(question()->informativeText().contains(QStringLiteral("60 seconds")));
  answer(question(), QMessageBox::RejectRole);
  ASSERT_TRUE(waitFor([this] { return question() == nullptr; }));
  EXPECT_EQ(tabs().count(), 2);
  tabs().setCurrentIndex(0);
  tabs().closeTab();
  EXPECT_EQ(tabs().count(), 1) << "in the other only a shell runs";
  delegate.reopenClosed();
  tabs().setCurrentIndex(tabs().indexOf(running));
  tabs().closeTab();
  answer(question(), QMessageBox::AcceptRole);
  EXPECT_EQ(tabs().indexOf(running), -1);
}

TEST_F(TabWindowTest, ClosesATabWhoseShellEndsAndKeepsTheOthers) {
  delegateClock.advance(PaneLife::shortestLife);
  TerminalPane& first = tabs().currentPane();
  addWaitingTab();
  tabs().setCurrentIndex(0);
  first.terminal().ptySession().sendSignal(SIGKILL);
  ASSERT_TRUE(waitForScreen(first, "The shell ended with status 137."));
  EXPECT_EQ(tabs().strip().marks(0).exitStatus, 137);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(tabs().count(), 1);
  EXPECT_TRUE(shownWindow->isVisible());
  EXPECT_FALSE(delegate.validate("reopenClosed")) << "nothing runs in it";
}

TEST_F(TabWindowTest, KeepsTheStatusOfAProgramThatHasEndedWhereverItsTabGoes) {
  TerminalPane& pane = addWaitingTab();
  new PaneLife(pane, settings);
  tabs().closeTab();
  tabs().currentPane();
  pane.terminal().ptySession().sendSignal(SIGKILL);
  ASSERT_TRUE(waitFor([&] { return PaneLife::of(pane)->status().has_value(); }));
  delegate.reopenClosed();
  EXPECT_EQ(tabs().strip().marks(1).exitStatus, 137);
}

TEST_F(TabWindowTest, BringsASplitBackIntoItsTabInAnotherWindow) {
  addWaitingTab();
  TerminalPane& pane = addWaitingSplit();
  tabs().closePane();
  tabs().moveTabToNewWindow();
  ASSERT_EQ(delegate.windows().size(), 2U);
  delegate.reopenClosed();
  EXPECT_EQ(tabsOf(window(1)).indexOf(pane), 0);
}

TEST_F(TabWindowTest, ReplacingAWindowEndsAllItsShells) {
  addWaitingTab();
  delegate.toggleFullEmulation();
  const auto boxes = shownWindow->findChildren<QMessageBox*>(QStringLiteral("replaceQuestion"));
  ASSERT_EQ(boxes.size(), 1);
  answer(boxes.front(), QMessageBox::AcceptRole);
  EXPECT_FALSE(delegate.validate("reopenClosed"));
  EXPECT_TRUE(waitFor([] { return test::childProcesses().size() == 1; })) << "that of the new window";
}

TEST_F(TabWindowTest, MovesATabToAWindowOfItsOwnAndMergesThemAgain) {
  TerminalPane& pane = addWaitingTab();
  tabs().moveTabToNewWindow();
  ASSERT_EQ(delegate.windows().size(), 2U);
  TerminalWindow& other = window(1);
  EXPECT_EQ(tabsOf(other).indexOf(pane), 0);
  EXPECT_EQ(other.subtitle(), QStringLiteral("Child"));
  EXPECT_EQ(tabs().count(), 1);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other, test::kPatience.count()));
  EXPECT_TRUE(delegate.validate("mergeAllWindows"));
  delegate.mergeAllWindows();
  EXPECT_EQ(tabsOf(other).count(), 2);
  EXPECT_TRUE(waitFor([this] { return delegate.windows().size() == 1; })) << "the empty one is gone";
  EXPECT_TRUE(isRunning(pane));
}

TEST_F(TabWindowTest, ATornOffTabOpensWhereItIsDropped) {
  addWaitingTab();
  Q_EMIT tabs().strip().tornOff(1, QPoint(40, 60));
  ASSERT_EQ(delegate.windows().size(), 2U);
  EXPECT_EQ(window(1).geometry().topLeft(), QPoint(40, 60));
  EXPECT_EQ(window(1).size(), shownWindow->size());
}

TEST_F(TabWindowTest, OpensAWindowInTheFolderOfTheKeyOne) {
  const std::string here = folder.path().toStdString();
  tabs().surface().display().emulator().feed(Bytes("\033]7;file://" + here + "\033\\"));
  ASSERT_TRUE(waitFor([&] {
    tabs().surface().canvas().makeFrameNow();
    return tabs().surface().folder() == here;
  }));
  delegate.newWindow();
  EXPECT_EQ(window(1).contentViewController().rootView().terminal().ptySession().workingDirectory, here);
}

TEST_F(TabWindowTest, ShowsTheTitleOfTheTabInView) {
  addWaitingTab();
  tabs().surface().display().emulator().feed(Bytes("\033]2;second\033\\"));
  EXPECT_TRUE(waitFor([this] { return shownWindow->windowTitle() == QStringLiteral("second"); }));
  tabs().setCurrentIndex(0);
  EXPECT_EQ(shownWindow->windowTitle(), QStringLiteral("Zolt"));
}

TEST_F(TabWindowTest, AWindowForAProgramOffersNoMoreTerminals) {
  TerminalLaunch program = child({"wait"});
  program.isForProgram = true;
  TerminalWindow& window = delegate.openWindow(program);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window, test::kPatience.count()));
  delegate.newTab();
  tabsOf(window).splitRight();
  EXPECT_EQ(tabsOf(window).panes().size(), 1U);
  EXPECT_TRUE(window.contentViewController().terminals().empty());
  tabsOf(window).closePane();
  EXPECT_TRUE(window.isVisible()) << "its program runs: the user is asked";
  defaults.setBool("warnBeforeClosing", false);
  tabsOf(window).closePane();
  EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace zolt
