// All commands by their names, and shortcuts of the user's own.
#include "app/Commands.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>

#include "AppFixture.h"
#include "app/OwnShortcuts.h"
#include "app/ZoltApp.h"
#include "view/CommandPalette.h"

namespace zolt {
namespace {

const MenuItem& itemNamed(const char* name) {
  const std::span<const MenuItem> items = menuItems();
  return *std::ranges::find_if(items, [name](const MenuItem& each) { return std::string(each.name) == name; });
}

class CommandsTest : public testing::Test {
 protected:
  void SetUp() override {
    defaults.setBool("fullEmulation", true);
    window = &app.appDelegate().openWindow(
        {.shell = Shell{.name = "Child", .executable = ZOLT_TEST_CHILD, .args = {"wait"}, .icon = "terminal"},
         .restart = TerminalController::Restart::Never,
         .workingDirectory = {}});
    ASSERT_TRUE(QTest::qWaitForWindowActive(window, test::kPatience.count()));
  }
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  CommandPalette* palette() {
    for (auto* each : window->findChildren<CommandPalette*>()) {
      if (each->isVisible()) return each;
    }
    return nullptr;
  }
  void open(const char* typed) {
    app.showCommands();
    ASSERT_NE(palette(), nullptr);
    QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(typed));
  }
  QString help() { return palette()->findChild<QLabel*>()->text(); }
  QList<QKeySequence> shortcutsInMenu(const char* name) {
    return window->findChild<QAction*>(QString::fromLatin1(name))->shortcuts();
  }
  TerminalTabs& tabs() { return static_cast<TerminalTabs&>(window->contentViewController().rootView().area()); }

  QTemporaryDir folder;
  UserDefaults defaults{folder.filePath(QStringLiteral("zolt.ini")).toStdString()};
  Config config{defaults};
  ZoltApp app{config, defaults};
  TerminalWindow* window = nullptr;
};

TEST_F(CommandsTest, RunsTheOneThatIsChosenAsItsMenuDoes) {
  open("new tab");
  press(Qt::Key_Return);
  EXPECT_EQ(palette(), nullptr);
  EXPECT_EQ(tabs().count(), 2);
}

TEST_F(CommandsTest, AreOpenedByTheirShortcutAndInTheFullEmulationOnly) {
  press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_NE(palette(), nullptr);
  press(Qt::Key_Escape);
  defaults.setBool("fullEmulation", false);
  TerminalWindow& log = app.appDelegate().openWindow({});
  ASSERT_TRUE(QTest::qWaitForWindowActive(&log, test::kPatience.count()));
  app.showCommands();
  EXPECT_EQ(log.findChild<CommandPalette*>(), nullptr);
}

TEST_F(CommandsTest, TellWhatIsAvailable) {
  app.showCommands();
  const auto command = [&](const char* title) {
    for (int i = 0;; ++i) {
      if (palette()->command(i).title == QLatin1String(title)) return palette()->command(i);
    }
  };
  EXPECT_TRUE(command("New Tab").isEnabled);
  EXPECT_FALSE(command("Next Tab").isEnabled) << "there is one";
  EXPECT_TRUE(command("Full Emulation").isOn);
  EXPECT_EQ(command("Split Right").place, QStringLiteral("Split"));
  EXPECT_EQ(command("Move Divider Left").place, QString());
}

TEST_F(CommandsTest, AShortcutIsChangedInAllWindowsAndStored) {
  open("equalize");
  press(Qt::Key_Tab);
  press(Qt::Key_F7);
  EXPECT_EQ(help(), QStringLiteral("The shortcut of “Equalize Sizes” is F7."));
  EXPECT_EQ(shortcutsInMenu("equalisePanes"), QList{QKeySequence(Qt::Key_F7)});
  EXPECT_EQ(defaults.stringForKey("shortcut.equalisePanes"), "F7");
  press(Qt::Key_Tab);
  press(Qt::Key_Backspace);
  EXPECT_TRUE(shortcutsInMenu("equalisePanes").isEmpty());
  press(Qt::Key_Tab);
  press(Qt::Key_Delete);
  EXPECT_EQ(defaults.stringForKey("shortcut.equalisePanes"), std::nullopt);
}

TEST_F(CommandsTest, AShortcutOfAnotherCommandIsTakenOnlyWhenItIsPressedTwice) {
  const QList<QKeySequence> usual = itemNamed("newTab").shortcuts();
  open("equalize");
  press(Qt::Key_Tab);
  press(Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(help().contains(QStringLiteral("is the shortcut of “New Tab”"))) << help().toStdString();
  EXPECT_EQ(shortcutsInMenu("newTab"), usual);
  EXPECT_TRUE(shortcutsInMenu("equalisePanes").isEmpty());
  press(Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(shortcutsInMenu("newTab").isEmpty());
  EXPECT_EQ(shortcutsInMenu("equalisePanes"), QList{QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T)});
}

TEST_F(CommandsTest, TheUsualShortcutThatAnotherCommandHasByNowIsTakenOnlyWhenItIsAskedForTwice) {
  const QList<QKeySequence> usual = itemNamed("newTab").shortcuts();
  setShortcut(itemNamed("newTab"), QKeySequence(), defaults);
  setShortcut(itemNamed("equalisePanes"), usual.front(), defaults);
  open("new tab");
  press(Qt::Key_Tab);
  press(Qt::Key_Delete);
  EXPECT_TRUE(help().contains(QStringLiteral("is the shortcut of “Equalize Sizes”"))) << help().toStdString();
  EXPECT_TRUE(shortcutsInMenu("newTab").isEmpty());
  press(Qt::Key_Delete);
  EXPECT_EQ(shortcutsInMenu("newTab"), usual);
  EXPECT_TRUE(shortcutsInMenu("equalisePanes").isEmpty());
}

TEST_F(CommandsTest, KeysThatTypeSomethingAreNoShortcut) {
  open("equalize");
  press(Qt::Key_Tab);
  press(Qt::Key_A);
  EXPECT_TRUE(help().contains(QStringLiteral("types something")));
  press(Qt::Key_A, Qt::ShiftModifier);
  EXPECT_TRUE(palette()->asksForShortcut());
  EXPECT_TRUE(shortcutsInMenu("equalisePanes").isEmpty());
}

TEST_F(CommandsTest, WhatIsStoredAndIsNoShortcutIsPassedOver) {
  const MenuItem& item = itemNamed("newTab");
  for (const char* stored : {"", "A", "Ctrl+", "Ctrl+K, Ctrl+L", "nonsense", "\xff"}) {
    defaults.setString(shortcutKey(item), stored);
    EXPECT_EQ(shortcutsOf(item, defaults), item.shortcuts()) << stored;
  }
  defaults.setString(shortcutKey(item), "none");
  EXPECT_TRUE(shortcutsOf(item, defaults).isEmpty());
}

TEST_F(CommandsTest, NoTwoCommandsHaveTheSameUsualShortcut) {
  for (const MenuItem& item : menuItems()) {
    if (!isIn(item, Display::FullEmulation)) continue;
    for (const QKeySequence& shortcut : item.shortcuts()) {
      const MenuItem* other = otherItemWith(shortcut, item, defaults);
      EXPECT_EQ(other, nullptr) << item.name << " and " << other->name;
    }
  }
}

TEST_F(CommandsTest, WindowsOfTheLogKeepTheUsualShortcuts) {
  defaults.setString("shortcut.newTab", "F7");
  defaults.setBool("fullEmulation", false);
  TerminalWindow& log = app.appDelegate().openWindow({});
  EXPECT_EQ(log.findChild<QAction*>(QStringLiteral("newTab"))->shortcuts(), itemNamed("newTab").shortcuts());
}

}  // namespace
}  // namespace zolt
