// What comes back of the windows of an earlier session.
#include "app/SessionStore.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QScreen>
#include <future>

#include "AppFixture.h"

namespace zolt {
namespace {

using test::waitFor;

class SessionStoreTest : public test::AppDelegateTest {
 protected:
  void SetUp() override {
    defaults.setBool("fullEmulation", true);
    defaults.setString("startupShell", "/bin/sh");
    delegate.openWindow({});
    print(tabs().currentPane(), "the first text\r\n");
  }

  static TerminalTabs& tabsOf(TerminalWindow& window) {
    return static_cast<TerminalTabs&>(window.contentViewController().rootView().area());
  }
  TerminalTabs& tabs() { return tabsOf(window(0)); }
  static void print(TerminalPane& pane, const std::string& text) {
    TerminalTabs::surfaceOf(pane).display().emulator().feed(Bytes(text));
  }
  // Whether the pane comes to show the text; a shell clears nothing of it.
  static testing::AssertionResult shows(TerminalPane& pane, const std::string& text) {
    if (waitFor([&] { return textOf(pane).find(text) != std::string::npos; })) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "it shows: " << textOf(pane);
  }
  static std::string textOf(TerminalPane& pane) {
    std::string text;
    bool isShown = false;
    pane.surface().whenShown([&] {
      const EmulationSource& source = TerminalTabs::surfaceOf(pane).display().source();
      text = source.text({.begin = source.begin(), .end = source.end()});
      isShown = true;
    });
    EXPECT_TRUE(waitFor([&] { return isShown; }));
    return text;
  }
  std::vector<TerminalWindow*> windows() {
    std::vector<TerminalWindow*> all;
    for (const auto& each : delegate.windows()) {
      all.push_back(each.get());
    }
    return all;
  }
  void save() {
    SessionStore store(sessionFolder, settings);
    store.capture(windows());
    store.write();
  }
  // The windows of another start.
  const std::vector<std::unique_ptr<TerminalWindow>>& restart() {
    next = std::make_unique<AppDelegate>(config, defaults, [](TerminalWindow&) {});
    next->keepSessionIn(sessionFolder);
    next->applicationDidFinishLaunching();
    return next->windows();
  }
  int savedTerminals() const {
    return static_cast<int>(
        QDir(QString::fromStdString(sessionFolder)).entryList({QStringLiteral("*.terminal")}).size());
  }

  EmulationSettingsStore settings{config, defaults};
  std::string sessionFolder = folder.filePath(QStringLiteral("state/session")).toStdString();
  std::unique_ptr<AppDelegate> next;
};

TEST_F(SessionStoreTest, TabsComeBackWithTheirNamesSplitsAndText) {
  ASSERT_TRUE(tabs().addTab());
  tabs().setName(1, QStringLiteral("the name"));
  TerminalPane& left = tabs().currentPane();
  print(left, "left\r\n");
  window(0).resize(1000, 700);
  TerminalPane* right = tabs().openSplit(left, Direction::Right, {});
  ASSERT_NE(right, nullptr);
  print(*right, "right\r\n");
  right->surface().canvas().setZoom(3);
  tabs().bringUp(left);
  tabs().setCurrentIndex(0);
  save();

  const auto& restored = restart();
  ASSERT_EQ(restored.size(), 1U);
  TerminalTabs& again = tabsOf(*restored[0]);
  ASSERT_EQ(again.count(), 2);
  EXPECT_EQ(again.currentIndex(), 0);
  EXPECT_EQ(again.name(0), QString());
  EXPECT_EQ(again.name(1), QStringLiteral("the name"));
  EXPECT_TRUE(shows(again.currentPane(), "the first text"));
  EXPECT_TRUE(shows(again.currentPane(), "Restored from "));
  ASSERT_EQ(again.panesOf(1).size(), 2U);
  EXPECT_EQ(&again.currentPaneOf(1), again.panesOf(1)[0]);
  again.setCurrentIndex(1);
  EXPECT_TRUE(shows(*again.panesOf(1)[0], "left"));
  EXPECT_TRUE(shows(*again.panesOf(1)[1], "right"));
  EXPECT_EQ(again.panesOf(1)[0]->surface().canvas().zoom(), 0);
  EXPECT_EQ(again.panesOf(1)[1]->surface().canvas().zoom(), 3);
  EXPECT_EQ(again.view(1).zoomed(), nullptr);
}

TEST_F(SessionStoreTest, ASplitThatWasShownAloneIsAgain) {
  window(0).resize(1000, 700);
  ASSERT_NE(tabs().openSplit(tabs().currentPane(), Direction::Down, {}), nullptr);
  tabs().zoomPane();
  save();
  TerminalTabs& again = tabsOf(*restart().at(0));
  EXPECT_EQ(again.view(0).zoomed(), again.panesOf(0)[1]);
}

TEST_F(SessionStoreTest, WindowsComeBackInTheirPlacesAndStates) {
  window(0).setGeometry(30, 50, 640, 400);
  TerminalWindow& second = delegate.openWindow({});
  second.setGeometry(10, 20, 500, 300);
  second.showMaximized();
  ASSERT_TRUE(waitFor([&] { return second.isMaximized(); }));
  save();
  const auto& restored = restart();
  ASSERT_EQ(restored.size(), 2U);
  EXPECT_EQ(restored[0]->geometry(), QRect(30, 50, 640, 400));
  EXPECT_FALSE(restored[0]->isMaximized());
  EXPECT_TRUE(restored[1]->isMaximized());
}

TEST_F(SessionStoreTest, AWindowOutOfReachStandsInTheMiddleOfTheScreen) {
  window(0).setGeometry(20'000, 20'000, 640, 400);
  save();
  const QRect place = restart().at(0)->geometry();
  EXPECT_EQ(place.size(), QSize(640, 400));
  EXPECT_TRUE(QApplication::primaryScreen()->availableGeometry().intersects(place));
}

TEST_F(SessionStoreTest, ShellsStartInTheirFoldersOrAtHome) {
  const std::string there = folder.path().toStdString();
  const std::string gone = folder.filePath(QStringLiteral("gone")).toStdString();
  QDir().mkdir(QString::fromStdString(gone));
  ASSERT_NE(tabs().openTab({.folder = there}), nullptr);
  ASSERT_NE(tabs().openTab({.folder = gone}), nullptr);
  save();
  QDir().rmdir(QString::fromStdString(gone));
  TerminalTabs& again = tabsOf(*restart().at(0));
  ASSERT_EQ(again.count(), 3);
  EXPECT_EQ(again.panesOf(1)[0]->terminal().ptySession().workingDirectory, there);
  EXPECT_EQ(again.panesOf(2)[0]->terminal().ptySession().workingDirectory, QDir::homePath().toStdString());
}

TEST_F(SessionStoreTest, TheTextOfABusyTerminalIsLeftOut) {
  ASSERT_TRUE(tabs().addTab());
  print(tabs().currentPane(), "another text\r\n");
  std::promise<void> release;
  TerminalTabs::surfaceOf(*tabs().panesOf(0)[0])
      .display()
      .emulator()
      .change([done = release.get_future().share()](vt::Terminal&) { done.wait(); });
  save();
  release.set_value();
  EXPECT_EQ(savedTerminals(), 1);
  TerminalTabs& again = tabsOf(*restart().at(0));
  ASSERT_EQ(again.count(), 2);
  EXPECT_TRUE(shows(*again.panesOf(1)[0], "another text"));
  again.setCurrentIndex(0);
  EXPECT_TRUE(shows(*again.panesOf(0)[0], "What was shown here before is lost: "));
}

TEST_F(SessionStoreTest, APlainWindowOpensWhereNothingWasKept) {
  const auto& opened = restart();
  ASSERT_EQ(opened.size(), 1U);
  EXPECT_EQ(textOf(tabsOf(*opened[0]).currentPane()).find("Restored"), std::string::npos);
}

TEST_F(SessionStoreTest, AFolderThatWasAskedForGetsAWindowOfItsOwn) {
  save();
  next = std::make_unique<AppDelegate>(config, defaults, [](TerminalWindow&) {});
  next->keepSessionIn(sessionFolder);
  next->applicationDidFinishLaunching({.workingDirectory = folder.path().toStdString()});
  ASSERT_EQ(next->windows().size(), 2U);
  EXPECT_EQ(tabsOf(*next->windows()[1]).terminal().ptySession().workingDirectory, folder.path().toStdString());
}

TEST_F(SessionStoreTest, WindowsOfTheLogAreNotKeptAndChangeNothingThatWas) {
  save();
  ASSERT_EQ(savedTerminals(), 1);
  defaults.setBool("fullEmulation", false);
  const auto& opened = restart();
  ASSERT_EQ(opened.size(), 1U);
  EXPECT_EQ(opened[0]->kind().display, Display::Log);
  save();
  EXPECT_EQ(savedTerminals(), 1);
}

TEST_F(SessionStoreTest, ASessionWithoutWindowsLeavesNothing) {
  save();
  SessionStore store(sessionFolder, settings);
  store.capture({});
  store.write();
  EXPECT_EQ(savedTerminals(), 0);
  EXPECT_FALSE(QFile::exists(QString::fromStdString(sessionFolder + "/layout")));
}

TEST_F(SessionStoreTest, TurningItOffRemovesWhatWasKeptAtOnce) {
  save();
  const SessionStore store(sessionFolder, settings);
  ASSERT_EQ(savedTerminals(), 1);
  defaults.setBool("restorePreviousSession", false);
  EXPECT_TRUE(waitFor([&] { return savedTerminals() == 0; }));
  save();
  EXPECT_EQ(savedTerminals(), 0);
}

}  // namespace
}  // namespace zolt
