// Tabs and splits of the full emulation, with real programs in them.
#include "view/TerminalTabs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/ProcessFolder.h"
#include "settings/EmulationSettingsStore.h"
#include "support/ProcessFacts.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

using test::waitFor;

class TerminalTabsTest : public testing::Test {
 protected:
  void SetUp() override {
    tabs = std::make_unique<TerminalTabs>(make("cat"), [this](const TerminalTabs::NewPane& wanted) {
      lastWanted = wanted;
      return make("cat", wanted.folder);
    });
    tabs->resize(805, 600);
    tabs->show();
    tabs->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(tabs.get(), test::kPatience.count()));
    tabs->currentPane().setFocus();
  }
  void TearDown() override {
    tabs.reset();
    EXPECT_TRUE(waitFor([] { return test::childProcesses().empty(); }));
  }

  std::unique_ptr<TerminalPane> make(const std::string& script, const std::string& in = {}) {
    auto terminal = std::make_unique<TerminalController>(
        Shell{.name = "sh", .executable = "/bin/sh", .args = {"-c", script}, .icon = "terminal"},
        TerminalController::Restart::Never, TerminalSize{.rows = 24, .columns = 80}, in);
    return std::make_unique<TerminalPane>(std::move(terminal), [this](TerminalController& controller, QWidget* parent) {
      return std::make_unique<EmulationSurface>(controller, TerminalSize{.rows = 24, .columns = 80}, settings, parent);
    });
  }
  // A tab behind the others.
  TerminalPane& addBehind(const std::string& script) {
    const int current = tabs->currentIndex();
    auto pane = make(script);
    TerminalPane& added = *pane;
    DetachedTab tab{.view = std::make_unique<SplitView>(*pane.release()), .name = {}, .current = &added};
    tabs->insertTab(std::move(tab), tabs->count());
    tabs->setCurrentIndex(current);
    return added;
  }
  static std::string textOf(TerminalPane& pane) {
    pane.surface().canvas().makeFrameNow();
    return pane.surface().canvas().visibleText().toStdString();
  }
  static bool shows(TerminalPane& pane, const std::string& text) {
    return waitFor([&] { return textOf(pane).find(text) != std::string::npos; });
  }
  static void print(TerminalPane& pane, const std::string& bytes) {
    TerminalTabs::surfaceOf(pane).display().emulator().feed(Bytes(bytes));
  }
  TerminalPane* focused() const {
    for (TerminalPane* pane : tabs->panes()) {
      if (pane->isAncestorOf(QApplication::focusWidget())) return pane;
    }
    return nullptr;
  }
  TabMarks marks(int index) { return tabs->strip().marks(index); }

  QTemporaryDir folder;
  UserDefaults defaults{folder.filePath(QStringLiteral("zolt.ini")).toStdString()};
  Config config{defaults};
  EmulationSettingsStore settings{config, defaults};
  TerminalTabs::NewPane lastWanted{};
  std::unique_ptr<TerminalTabs> tabs;
};

TEST_F(TerminalTabsTest, TakesAllPanesOfATabBesideOneOfItsOwn) {
  TerminalPane& first = tabs->currentPane();
  TerminalPane& second = addBehind("cat");
  tabs->splitWith(second, Direction::Down, make("cat"));
  TerminalPane& third = tabs->currentPane();
  DetachedTab tab = tabs->takeTab(1);
  QSignalSpy added(tabs.get(), &TerminalTabs::paneAdded);
  tabs->splitWith(first, Direction::Right, std::move(tab));
  EXPECT_EQ(added.count(), 2);
  EXPECT_EQ(tabs->count(), 1);
  EXPECT_EQ(tabs->panesOf(0), (std::vector{&first, &second, &third}));
  EXPECT_EQ(second.x(), third.x());
  EXPECT_LT(second.y(), third.y());
  EXPECT_EQ(focused(), &third);
  print(second, "still here");
  EXPECT_TRUE(shows(second, "still here"));
}

TEST_F(TerminalTabsTest, ShowsTheStripOnlyForSeveralTabs) {
  EXPECT_FALSE(tabs->strip().isVisible());
  tabs->addTab();
  EXPECT_TRUE(tabs->strip().isVisible());
  EXPECT_EQ(tabs->currentIndex(), 1);
  EXPECT_EQ(focused(), &tabs->currentPane());
  tabs->takeTab(0).view.reset();
  EXPECT_FALSE(tabs->strip().isVisible());
}

TEST_F(TerminalTabsTest, OpensATabBesideTheCurrentOneInItsFolder) {
  tabs->addTab();
  tabs->setCurrentIndex(0);
  const std::string here = folder.path().toStdString();
  print(tabs->currentPane(), "\033]7;file://" + here + "\033\\");
  ASSERT_TRUE(waitFor([&] {
    textOf(tabs->currentPane());
    return tabs->surface().folder() == here;
  }));
  tabs->addTab();
  EXPECT_EQ(tabs->currentIndex(), 1) << "between the two";
  EXPECT_EQ(lastWanted.folder, here);
  const auto shell = tabs->terminal().ptySession().shellProcess();
  ASSERT_TRUE(shell);
  EXPECT_TRUE(waitFor([&] {
    return std::filesystem::weakly_canonical(processFolder(*shell)) == std::filesystem::weakly_canonical(here);
  }));
}

TEST_F(TerminalTabsTest, TakesTheFolderOfTheProcessIfTheProgramSaysNoneOrThatOfAnotherMachine) {
  const std::string own = std::filesystem::current_path().string();
  EXPECT_TRUE(waitFor([&] { return tabs->surface().folder() == own; }));
  print(tabs->currentPane(), "\033]7;file://elsewhere.example/\033\\here");
  ASSERT_TRUE(shows(tabs->currentPane(), "here"));
  EXPECT_EQ(tabs->surface().folder(), own);
}

TEST_F(TerminalTabsTest, CyclesThroughTheTabsAndSelectsThemByNumber) {
  tabs->addTab();
  tabs->addTab();
  tabs->nextTab();
  EXPECT_EQ(tabs->currentIndex(), 0);
  tabs->previousTab();
  EXPECT_EQ(tabs->currentIndex(), 2);
  tabs->selectTab2();
  EXPECT_EQ(tabs->currentIndex(), 1);
  tabs->selectTab7();
  EXPECT_EQ(tabs->currentIndex(), 1) << "there is none";
  tabs->selectLastTab();
  EXPECT_EQ(tabs->currentIndex(), 2);
  EXPECT_EQ(focused(), &tabs->currentPane());
}

TEST_F(TerminalTabsTest, MovesATabWithItsPanes) {
  tabs->addTab();
  tabs->addTab();
  TerminalPane& last = tabs->currentPane();
  tabs->moveTabBackward();
  EXPECT_EQ(tabs->indexOf(last), 1);
  EXPECT_EQ(&tabs->currentPane(), &last);
  tabs->moveTabForward();
  tabs->moveTabForward();
  EXPECT_EQ(tabs->indexOf(last), 2);
}

TEST_F(TerminalTabsTest, NamesTabsAsTheUserSaysOrElseTheProgram) {
  tabs->addTab();
  EXPECT_EQ(tabs->strip().shownTitle(1), QStringLiteral("sh"));
  print(tabs->currentPane(), "\033]2;a title\033\\");
  EXPECT_TRUE(waitFor([&] { return tabs->strip().shownTitle(1) == QStringLiteral("a title"); }));
  EXPECT_EQ(tabs->title(), QStringLiteral("a title"));
  Q_EMIT tabs->strip().named(1, QStringLiteral("mine"));
  EXPECT_EQ(tabs->strip().shownTitle(1), QStringLiteral("mine"));
  EXPECT_EQ(tabs->title(), QStringLiteral("mine"));
  Q_EMIT tabs->strip().named(1, QString());
  EXPECT_EQ(tabs->title(), QStringLiteral("a title"));
}

TEST_F(TerminalTabsTest, MarksNewOutputAndABellInATabBehindUntilItIsLookedAt) {
  TerminalPane& behind = addBehind("cat");
  EXPECT_EQ(marks(1), TabMarks());
  // What it prints at first may be taken for a drawing anew.
  EXPECT_TRUE(waitFor([&] {
    print(behind, "output");
    return marks(1).hasActivity;
  }));
  EXPECT_FALSE(marks(1).hasBell);
  print(behind, "\a");
  EXPECT_TRUE(waitFor([&] { return marks(1).hasBell; }));
  print(tabs->currentPane(), "output\a");
  ASSERT_TRUE(shows(tabs->currentPane(), "output"));
  EXPECT_EQ(marks(0), TabMarks()) << "this one is in view";
  tabs->setCurrentIndex(1);
  EXPECT_EQ(marks(1), TabMarks());
}

TEST_F(TerminalTabsTest, DoesNotTakeOurOwnChangesForNewOutput) {
  TerminalPane& behind = addBehind("cat");
  ASSERT_TRUE(waitFor([&] { return TerminalTabs::surfaceOf(behind).display().emulator().isSettled(); }));
  config.theme = Config::ColorScheme::Light;
  ASSERT_TRUE(waitFor([&] { return !TerminalTabs::surfaceOf(behind).isDark(); }));
  ASSERT_TRUE(waitFor([&] { return TerminalTabs::surfaceOf(behind).display().emulator().isSettled(); }));
  EXPECT_FALSE(marks(1).hasActivity);
}

TEST_F(TerminalTabsTest, DoesNotMarkOutputThatWasPrintedInView) {
  TerminalPane& first = tabs->currentPane();
  // It changes nothing on the screen.
  print(first, "\033]133;A\033\\");
  ASSERT_TRUE(waitFor([&] { return TerminalTabs::surfaceOf(first).display().emulator().isSettled(); }));
  tabs->addTab();
  config.theme = Config::ColorScheme::Light;
  ASSERT_TRUE(waitFor([&] { return !tabs->surface().isDark(); }));
  ASSERT_TRUE(waitFor([&] { return TerminalTabs::surfaceOf(first).display().emulator().isSettled(); }));
  EXPECT_FALSE(marks(0).hasActivity);
}

TEST_F(TerminalTabsTest, DoesNotTakeARedrawAfterAResizeForNewOutput) {
  TerminalPane& first = tabs->currentPane();
  tabs->addTab();
  Q_EMIT first.surface().canvas().gridSizeChanged(first.surface().canvas().gridSize());
  print(first, "drawn anew");
  ASSERT_TRUE(waitFor([&] { return TerminalTabs::surfaceOf(first).display().emulator().isSettled(); }));
  EXPECT_FALSE(marks(0).hasActivity);
  test::runLoopFor(std::chrono::milliseconds(1100));
  print(first, "output");
  EXPECT_TRUE(waitFor([&] { return marks(0).hasActivity; }));
}

TEST_F(TerminalTabsTest, ShowsAProgramsProgress) {
  TerminalPane& behind = addBehind("cat");
  print(behind, "\033]9;4;1;40\033\\");
  EXPECT_TRUE(
      waitFor([&] { return marks(1).progress == TabProgress{.kind = TabProgress::Kind::Value, .percent = 40}; }));
  print(behind, "\033]9;4;0\033\\");
  EXPECT_TRUE(waitFor([&] { return marks(1).progress.kind == TabProgress::Kind::None; }));
}

TEST_F(TerminalTabsTest, SplitsTheCurrentPaneAndGivesTheNewOneTheKeyboard) {
  TerminalPane& first = tabs->currentPane();
  tabs->splitRight();
  TerminalPane& second = tabs->currentPane();
  EXPECT_NE(&first, &second);
  EXPECT_EQ(lastWanted.area, QSize(400, 600));
  EXPECT_EQ(focused(), &second);
  tabs->splitDown();
  EXPECT_EQ(lastWanted.area.width(), 400);
  EXPECT_LT(lastWanted.area.height(), 300);
  EXPECT_EQ(tabs->panesOf(0).size(), 3U);
  tabs->goLeft();
  EXPECT_EQ(focused(), &first);
  EXPECT_EQ(&tabs->currentPane(), &first);
  tabs->goRight();
  EXPECT_NE(&tabs->currentPane(), &first);
}

TEST_F(TerminalTabsTest, FollowsTheKeyboardFromPaneToPane) {
  TerminalPane& first = tabs->currentPane();
  tabs->splitRight();
  first.surface().canvas().setFocus();
  EXPECT_EQ(&tabs->currentPane(), &first);
  EXPECT_EQ(&tabs->terminal(), &first.terminal());
}

// The share of the brightest text that is left.
int brightest(TerminalPane& pane) {
  const QImage image = pane.surface().canvas().viewport()->grab().toImage();
  int most = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      most = std::max(most, qGray(image.pixel(x, y)));
    }
  }
  return most;
}

TEST_F(TerminalTabsTest, DimsThePanesWithoutTheKeyboardIfTheUserWantsThat) {
  TerminalPane& first = tabs->currentPane();
  print(first, "\033[?25ltext");
  ASSERT_TRUE(shows(first, "text"));
  const int full = brightest(first);
  tabs->splitRight();
  EXPECT_LT(brightest(first), full);
  tabs->setDimsOthers(false);
  EXPECT_EQ(brightest(first), full);
  tabs->setDimsOthers(true);
  tabs->goLeft();
  EXPECT_EQ(brightest(first), full);
}

TEST_F(TerminalTabsTest, MovesDividersByTheCellAndZoomsAndSwaps) {
  TerminalPane& first = tabs->currentPane();
  tabs->splitRight();
  TerminalPane& second = tabs->currentPane();
  const int before = first.width();
  tabs->moveDividerRight();
  EXPECT_GT(first.width(), before);
  tabs->equalisePanes();
  EXPECT_EQ(first.width(), before);
  EXPECT_FALSE(tabs->isOn("zoomPane"));
  tabs->zoomPane();
  EXPECT_TRUE(tabs->isOn("zoomPane"));
  EXPECT_FALSE(first.isVisible());
  EXPECT_EQ(tabs->strip().shownTitle(0), QStringLiteral("sh (1 of 2)"));
  EXPECT_EQ(focused(), &second);
  tabs->goLeft();
  EXPECT_TRUE(first.isVisible()) << "the zoom goes with the keyboard";
  EXPECT_FALSE(second.isVisible());
  tabs->zoomPane();
  EXPECT_TRUE(second.isVisible());
  tabs->swapPanes();
  EXPECT_GT(first.x(), second.x());
}

TEST_F(TerminalTabsTest, OffersOnlyWhatThereIsSomethingFor) {
  for (const char* action : {"nextTab", "renameTab", "moveTabToNewWindow", "goLeft", "zoomPane", "selectTab2"}) {
    EXPECT_FALSE(tabs->validate(action)) << action;
  }
  EXPECT_TRUE(tabs->validate("splitRight"));
  QSignalSpy changed(tabs.get(), &TerminalTabs::arrangementChanged);
  tabs->addTab();
  tabs->splitRight();
  EXPECT_GE(changed.count(), 2);
  for (const char* action : {"nextTab", "renameTab", "moveTabToNewWindow", "goLeft", "zoomPane", "selectTab2"}) {
    EXPECT_TRUE(tabs->validate(action)) << action;
  }
  EXPECT_FALSE(tabs->validate("selectTab3"));
}

TEST_F(TerminalTabsTest, TypesIntoAllPanesOfTheTabToEachInItsModesAndSaysSo) {
  auto* bar = tabs->findChild<QLabel*>(QStringLiteral("typingIntoAll"));
  ASSERT_NE(bar, nullptr);
  TerminalPane& elsewhere = addBehind("stty raw -echo; printf READY; exec cat -uv");
  tabs->splitWith(tabs->currentPane(), Direction::Right, make("stty raw -echo; printf READY; exec cat -uv"));
  TerminalPane& first = tabs->currentPane();
  tabs->splitWith(first, Direction::Down, make("stty raw -echo; printf 'READY\\033[?1h'; exec cat -uv"));
  TerminalPane& second = tabs->currentPane();
  for (TerminalPane* pane : {&first, &second, &elsewhere}) {
    ASSERT_TRUE(shows(*pane, "READY"));
  }
  EXPECT_FALSE(bar->isVisible());
  tabs->typeIntoAll();
  EXPECT_TRUE(tabs->isOn("typeIntoAll"));
  EXPECT_TRUE(bar->isVisible());
  EXPECT_TRUE(bar->text().contains(QStringLiteral("all 3 splits"))) << bar->text().toStdString();
  QTest::keyClick(&second.surface().canvas(), Qt::Key_Up);
  EXPECT_TRUE(shows(first, "READY^[[A"));
  EXPECT_TRUE(shows(second, "READY^[OA")) << "it has set application cursor keys";
  tabs->goUp();
  QTest::keyClick(&first.surface().canvas(), Qt::Key_X);
  EXPECT_TRUE(shows(second, "READY^[OAx"));
  EXPECT_TRUE(shows(first, "READY^[[Ax"));

  // A pane that comes follows, one that goes does not.
  tabs->splitRight();
  EXPECT_TRUE(bar->text().contains(QStringLiteral("all 4 splits"))) << bar->text().toStdString();
  const DetachedPane taken = tabs->takePane(second);
  tabs->bringUp(first);
  QTest::keyClick(&first.surface().canvas(), Qt::Key_Y);
  EXPECT_TRUE(shows(first, "READY^[[Axy"));
  EXPECT_EQ(textOf(elsewhere).find_first_not_of("READY\n"), std::string::npos) << "another tab: " << textOf(elsewhere);
  tabs->typeIntoAll();
  EXPECT_FALSE(bar->isVisible());
  second.setParent(nullptr);
  EXPECT_EQ(textOf(second).find('y'), std::string::npos);
}

TEST_F(TerminalTabsTest, StopsTypingIntoAllWithTheLastSplit) {
  tabs->splitRight();
  tabs->typeIntoAll();
  tabs->takePane(tabs->currentPane()).pane.reset();
  EXPECT_FALSE(tabs->isOn("typeIntoAll"));
  tabs->splitRight();
  EXPECT_FALSE(tabs->isOn("typeIntoAll"));
}

TEST_F(TerminalTabsTest, NamesTheFolderWhereTheProgramSetsNoTitle) {
  tabs->addTab();
  print(tabs->currentPane(), "\033]7;file:///usr/share\033\\");
  EXPECT_TRUE(waitFor([&] { return tabs->strip().title(1) == QString::fromUtf8("share – sh"); }))
      << tabs->strip().title(1).toStdString();
}

TEST_F(TerminalTabsTest, ShowsTheStripForOneTabThatHidesSplitsOrIfTheUserWantsIt) {
  tabs->splitRight();
  EXPECT_FALSE(tabs->strip().isVisible());
  tabs->zoomPane();
  EXPECT_TRUE(tabs->strip().isVisible());
  tabs->zoomPane();
  EXPECT_FALSE(tabs->strip().isVisible());
  tabs->setAlwaysShowsStrip(true);
  EXPECT_TRUE(tabs->strip().isVisible());
  EXPECT_TRUE(tabs->validate("renameTab"));
}

TEST_F(TerminalTabsTest, MovesASplitToATabOfItsOwn) {
  tabs->splitRight();
  TerminalPane& moved = tabs->currentPane();
  tabs->movePaneToNewTab();
  EXPECT_EQ(tabs->count(), 2);
  EXPECT_EQ(tabs->indexOf(moved), 1);
  EXPECT_EQ(focused(), &moved);
}

TEST_F(TerminalTabsTest, DoesNotSplitAPaneThatIsTooSmall) {
  tabs->resize(150, 100);
  tabs->splitRight();
  tabs->splitRight();
  tabs->splitRight();
  EXPECT_EQ(tabs->panes().size(), 2U);
}

TEST_F(TerminalTabsTest, TellsTheProgramItsSizeWhenADividerDragIsCutShort) {
  tabs->splitRight();
  SplitView& split = tabs->view(0);
  QTest::mousePress(&split, Qt::LeftButton, {}, QPoint(402, 300));
  tabs->zoomPane();
  QTest::mouseRelease(&split, Qt::LeftButton, {}, QPoint(402, 300));
  const int columns = tabs->surface().canvas().gridSize().columns;
  EXPECT_GT(columns, 60);
  EXPECT_TRUE(waitFor([&] {
    tabs->surface().canvas().makeFrameNow();
    return tabs->surface().display().source().screen()->size.columns == columns;
  }));
}

TEST_F(TerminalTabsTest, PutsAPaneBackWhereItWas) {
  TerminalPane& first = tabs->currentPane();
  tabs->splitRight();
  TerminalPane& second = tabs->currentPane();
  const QRect place = second.geometry();
  DetachedPane taken = tabs->takePane(second);
  EXPECT_EQ(focused(), &first);
  EXPECT_EQ(first.width(), tabs->width());
  tabs->putBack(std::move(taken));
  EXPECT_EQ(second.geometry(), place);
  EXPECT_EQ(focused(), &second);
}

TEST_F(TerminalTabsTest, PutsAPaneIntoATabOfItsOwnIfItsPlaceIsGone) {
  tabs->splitRight();
  TerminalPane& second = tabs->currentPane();
  DetachedPane taken = tabs->takePane(second);
  tabs->splitDown();
  tabs->putBack(std::move(taken));
  EXPECT_EQ(tabs->count(), 2);
  EXPECT_EQ(tabs->indexOf(second), 1);
}

TEST_F(TerminalTabsTest, GivesATabToAnotherWindowWithItsProgramsRunning) {
  tabs->addTab();
  TerminalPane& moving = tabs->currentPane();
  moving.terminal().sendInput("before\r");
  ASSERT_TRUE(shows(moving, "before"));
  TerminalTabs other(make("cat"), nullptr);
  other.resize(400, 300);
  other.show();
  QSignalSpy left(tabs.get(), &TerminalTabs::paneLeaving);
  QSignalSpy came(&other, &TerminalTabs::paneAdded);
  other.insertTab(tabs->takeTab(1), 0);
  EXPECT_EQ(left.count(), 1);
  EXPECT_EQ(came.count(), 1);
  EXPECT_EQ(other.indexOf(moving), 0);
  moving.terminal().sendInput("after\r");
  EXPECT_TRUE(shows(moving, "after"));
  EXPECT_NE(textOf(moving).find("before"), std::string::npos);
  print(moving, "\a");
  QSignalSpy rang(tabs.get(), &TerminalTabs::bellRang);
  QSignalSpy rangThere(&other, &TerminalTabs::bellRang);
  EXPECT_TRUE(waitFor([&] { return rangThere.count() == 1; }));
  EXPECT_TRUE(rang.isEmpty());
}

TEST_F(TerminalTabsTest, SaysThatItIsEmpty) {
  QSignalSpy emptied(tabs.get(), &TerminalTabs::emptied);
  const DetachedTab last = tabs->takeTab(0);
  EXPECT_EQ(emptied.count(), 1);
  EXPECT_EQ(tabs->count(), 0);
}

TEST_F(TerminalTabsTest, LeavesTheSizeOfAHiddenTabAloneUntilItIsShown) {
  TerminalPane& behind = addBehind("cat");
  tabs->setCurrentIndex(1);
  ASSERT_TRUE(waitFor([&] { return behind.surface().canvas().gridSize().columns > 80; }));
  tabs->setCurrentIndex(0);
  tabs->resize(500, 400);
  tabs->setCurrentIndex(1);
  EXPECT_TRUE(waitFor([&] {
    return TerminalTabs::surfaceOf(behind).display().source().screen()->size == behind.surface().canvas().gridSize() &&
           behind.surface().canvas().gridSize().columns < 80;
  }));
}

TEST_F(TerminalTabsTest, ShowsATabThatWasBehindAsItIsNow) {
  TerminalPane& behind = addBehind("cat");
  print(behind, "printed unseen");
  ASSERT_TRUE(waitFor([&] { return TerminalTabs::surfaceOf(behind).display().emulator().isSettled(); }));
  tabs->setCurrentIndex(1);
  // Without any further frame.
  behind.surface().canvas().grab();
  EXPECT_TRUE(behind.surface().canvas().visibleText().contains(QStringLiteral("printed unseen")));
}

}  // namespace
}  // namespace zolt
