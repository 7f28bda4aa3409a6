#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTcpServer>

#include "AppFixture.h"
#include "app/ZoltApp.h"
#include "platform/NotificationCenter.h"
#include "support/TextSize.h"
#include "view/Notifications.h"

namespace zolt {
namespace {

QString plain(QString text) {
  return text.remove(QLatin1Char('&'));
}

class MenuTest : public testing::Test {
 protected:
  void SetUp() override { open({"wait"}); }

  void open(std::vector<std::string> mode) {
    window = &app.appDelegate().openWindow(
        {.shell = Shell{.name = "Child", .executable = ZOLT_TEST_CHILD, .args = std::move(mode), .icon = "terminal"},
         .restart = TerminalController::Restart::Never,
         .workingDirectory = {}});
    ASSERT_TRUE(QTest::qWaitForWindowActive(window, test::kPatience.count()));
  }
  QMenu* menu(const char* title) {
    const QList<QAction*> actions = window->menuBar()->actions();
    for (QAction* each : actions) {
      if (plain(each->text()) == QLatin1String(title)) return each->menu();
    }
    return nullptr;
  }
  QAction* item(const char* inMenu, const char* title) {
    const QList<QAction*> actions = menu(inMenu)->actions();
    for (QAction* each : actions) {
      if (plain(each->text()) == QLatin1String(title)) return each;
    }
    return nullptr;
  }
  // Each item with its shortcut, "-" for a separator.
  QStringList items(const char* inMenu) {
    QStringList found;
    const QList<QAction*> actions = menu(inMenu)->actions();
    for (const QAction* each : actions) {
      found << (each->isSeparator() ? QStringLiteral("-")
                                    : plain(each->text()) + QLatin1Char('|') + each->shortcut().toString());
    }
    return found;
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier | Qt::ShiftModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  int posted(const char* name, const std::function<void()>& action) {
    int count = 0;
    const QObject observer;
    NotificationCenter::defaultCenter().addObserver(&observer, name, [&] { ++count; });
    action();
    return count;
  }

  QTemporaryDir folder;
  UserDefaults defaults{folder.filePath(QStringLiteral("zolt.ini")).toStdString()};
  Config config{defaults};
  ZoltApp app{config, defaults};
  TerminalWindow* window = nullptr;
};

TEST_F(MenuTest, HoldTheItemsOfTheApplicationWithTheirShortcuts) {
  EXPECT_EQ(items("File"),
            (QStringList{QStringLiteral("New Window|Ctrl+Shift+N"), QStringLiteral("New Tab|Ctrl+Shift+T"),
                         QStringLiteral("-"), QStringLiteral("Save Output As...|Ctrl+Shift+S"), QStringLiteral("-"),
                         QStringLiteral("Close Window|Ctrl+Shift+W"), QStringLiteral("-"),
                         QStringLiteral("Quit|Ctrl+Shift+Q")}));
  EXPECT_EQ(items("Edit"),
            (QStringList{QStringLiteral("Copy|Ctrl+Shift+C"), QStringLiteral("Paste|Ctrl+Shift+V"),
                         QStringLiteral("Select All|Ctrl+Shift+A"), QStringLiteral("-"),
                         QStringLiteral("Find...|Ctrl+Shift+F"), QStringLiteral("Find Next|Ctrl+Shift+G"),
                         QStringLiteral("Find Previous|Ctrl+Shift+H"), QStringLiteral("Use Selection for Find|"),
                         QStringLiteral("-"), QStringLiteral("Preferences...|Ctrl+,")}));
  EXPECT_EQ(items("Terminal"), (QStringList{QStringLiteral("Clear Screen|Ctrl+Shift+K"),
                                            QStringLiteral("Toggle Homebrew Sidebar|Ctrl+Shift+B"), QStringLiteral("-"),
                                            QStringLiteral("Full Emulation|Ctrl+Shift+E")}));
  EXPECT_EQ(items("View"), (QStringList{QStringLiteral("Zoom In|Ctrl+Shift++"), QStringLiteral("Zoom Out|Ctrl+Shift+-"),
                                        QStringLiteral("Actual Size|Ctrl+Shift+0")}));
  EXPECT_EQ(items("Help"), (QStringList{QStringLiteral("About Zolt|"), QStringLiteral("Check for Updates...|")}));
  EXPECT_EQ(window->menuBar()->actions().size(), 6);
  EXPECT_EQ(items("Window"), (QStringList{QStringLiteral("Minimize|Ctrl+Shift+M"), QStringLiteral("Full Screen|F11"),
                                          QStringLiteral("-")}));
}

TEST_F(MenuTest, OpenAWindowByTheCommandKey) {
  press(Qt::Key_N);
  EXPECT_EQ(app.appDelegate().windows().size(), 2U);
  press(Qt::Key_N, Qt::MetaModifier);
  EXPECT_EQ(app.appDelegate().windows().size(), 3U);
}

TEST_F(MenuTest, AddATabByTheCommandKey) {
  press(Qt::Key_T);
  EXPECT_EQ(window->contentViewController().terminals().size(), 1U);
}

TEST_F(MenuTest, PostTheNotificationsOfTheTerminalMenu) {
  EXPECT_EQ(posted(clearTerminal, [this] { press(Qt::Key_K); }), 1);
  EXPECT_EQ(posted(toggleBrewSidebar, [this] { press(Qt::Key_B); }), 1);
  EXPECT_EQ(posted(toggleBrewSidebar, [this] { press(Qt::Key_B, Qt::MetaModifier | Qt::ShiftModifier); }), 1);
}

TEST_F(MenuTest, PostThemWithNoTerminalWindowOpen) {
  window->close();
  EXPECT_EQ(posted(clearTerminal, [this] { item("Terminal", "Clear Screen")->trigger(); }), 1);
  EXPECT_EQ(posted(toggleBrewSidebar, [this] { item("Terminal", "Toggle Homebrew Sidebar")->trigger(); }), 1);
}

TEST_F(MenuTest, CopyWhatIsSelectedInTheTerminal) {
  ASSERT_TRUE(
      test::waitFor([&] { return window->contentViewController().rootView().textView().textStorage().size() >= 7; }));
  QApplication::clipboard()->clear();
  press(Qt::Key_A);
  press(Qt::Key_C);
  EXPECT_TRUE(QApplication::clipboard()->text().startsWith(QStringLiteral("waiting")));
}

TEST_F(MenuTest, PasteIntoTheTerminalOnce) {
  open({"cat"});
  TerminalNSTextView& view = window->contentViewController().rootView().textView();
  const auto shown = [&] { return view.textStorage().text({}, view.textStorage().end()); };
  ASSERT_TRUE(test::waitFor([&] { return shown().find("ready") != std::string::npos; }));
  QApplication::clipboard()->setText(QStringLiteral("pasted;"));
  press(Qt::Key_V);
  ASSERT_TRUE(test::waitFor([&] { return shown().find("pasted;") != std::string::npos; }));
  test::runLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(shown().find("pasted;"), shown().rfind("pasted;"));
}

TEST_F(MenuTest, CloseTheWindowAndKeepIt) {
  press(Qt::Key_W);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(app.appDelegate().windows().size(), 1U);
}

TEST_F(MenuTest, LeaveControlAloneToTheShell) {
  press(Qt::Key_N, Qt::ControlModifier);
  press(Qt::Key_W, Qt::ControlModifier);
  EXPECT_EQ(app.appDelegate().windows().size(), 1U);
  EXPECT_TRUE(window->isVisible());
}

TEST_F(MenuTest, AreOpenedByF10WithTheirFirstItemChosen) {
  press(Qt::Key_F10, Qt::NoModifier);
  ASSERT_TRUE(menu("File")->isVisible());
  EXPECT_EQ(menu("File")->activeAction(), item("File", "New Window"));
  QTest::keyClick(menu("File"), Qt::Key_T);
  EXPECT_FALSE(menu("File")->isVisible());
  EXPECT_EQ(window->contentViewController().terminals().size(), 1U) << "its letters choose its items";
}

TEST_F(MenuTest, GiveTheKeyboardBackWhenTheyAreLeft) {
  QWidget* terminal = QApplication::focusWidget();
  press(Qt::Key_F10, Qt::NoModifier);
  QTest::keyClick(menu("File"), Qt::Key_Escape);
  EXPECT_FALSE(menu("File")->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), terminal);
}

TEST_F(MenuTest, LeaveAltToTheProgramInTheTerminal) {
  open({"hex"});
  QWidget* terminal = QApplication::focusWidget();
  const TerminalNSTextView& view = window->contentViewController().rootView().textView();
  const auto shown = [&] { return view.textStorage().text({}, view.textStorage().end()); };
  ASSERT_TRUE(test::waitFor([&] { return shown().find("ready") != std::string::npos; }));
  QTest::keyClick(terminal, Qt::Key_Alt);
  EXPECT_EQ(QApplication::focusWidget(), terminal);
  for (const char letter : {'f', 'e', 't', 'w', 'h'}) {
    QTest::keyClick(QApplication::focusWidget(), letter, Qt::AltModifier);
  }
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_TRUE(test::waitFor([&] { return shown().ends_with(" 66 65 74 77 68"); })) << shown();
}

TEST_F(MenuTest, ZoomTheTerminalAndLeaveControlMinusToTheProgram) {
  const TextCanvas& canvas = window->contentViewController().rootView().surface().canvas();
  const int rows = canvas.gridSize().rows;
  press(Qt::Key_Plus);
  press(Qt::Key_Equal);
  EXPECT_EQ(canvas.textFont().size, 16);
  EXPECT_LT(canvas.gridSize().rows, rows);
  press(Qt::Key_Minus);
  EXPECT_EQ(canvas.textFont().size, 15);
  press(Qt::Key_Minus, Qt::MetaModifier);
  EXPECT_EQ(canvas.textFont().size, 14);
  press(Qt::Key_Minus, Qt::MetaModifier);
  press(Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_EQ(canvas.textFont().size, 13) << "Control alone belongs to the shell";
  press(Qt::Key_0);
  EXPECT_EQ(canvas.textFont().size, 14);
  EXPECT_EQ(canvas.gridSize().rows, rows);
}

TEST_F(MenuTest, CheckTheFullEmulationWhileItIsOn) {
  const auto isChecked = [this] {
    Q_EMIT menu("Terminal")->aboutToShow();
    const bool checked = item("Terminal", "Full Emulation")->isChecked();
    Q_EMIT menu("Terminal")->aboutToHide();
    return checked;
  };
  EXPECT_TRUE(item("Terminal", "Full Emulation")->isCheckable());
  EXPECT_FALSE(isChecked());
  press(Qt::Key_E);
  EXPECT_TRUE(defaults.boolForKey("fullEmulation"));
  EXPECT_TRUE(isChecked());
  app.appDelegate().toggleFullEmulation();
  EXPECT_EQ(defaults.stringForKey("fullEmulation"), "false");
  EXPECT_FALSE(isChecked());
}

TEST_F(MenuTest, DisableItemsWhoseActionIsUnavailable) {
  QTcpServer feed;  // accepts the connection and never answers: the check stays under way
  ASSERT_TRUE(feed.listen(QHostAddress::LocalHost));
  defaults.setString("SUFeedURL", "https://127.0.0.1:" + std::to_string(feed.serverPort()) + "/feed.xml");
  defaults.setString("SUPublicEDKey", QByteArray(32, 'k').toBase64().toStdString());
  const auto isEnabledInTheOpenMenu = [this] {
    Q_EMIT menu("Help")->aboutToShow();
    const bool enabled = item("Help", "Check for Updates...")->isEnabled();
    Q_EMIT menu("Help")->aboutToHide();
    return enabled;
  };
  EXPECT_TRUE(isEnabledInTheOpenMenu());
  item("Help", "Check for Updates...")->trigger();
  EXPECT_FALSE(isEnabledInTheOpenMenu());
  EXPECT_TRUE(item("Help", "Check for Updates...")->isEnabled()) << "shortcuts work while the menu is closed";
}

TEST_F(MenuTest, ListTheWindowsOnScreen) {
  TerminalWindow* first = window;
  open({"wait"});
  open({"wait"});
  window->close();
  window = first;
  Q_EMIT menu("Window")->aboutToShow();
  QStringList titles;
  const QList<QAction*> actions = menu("Window")->findChildren<QAction*>(QStringLiteral("windowItem"));
  for (const QAction* each : actions) {
    titles << plain(each->text()) + (each->isChecked() ? QStringLiteral("*") : QString());
  }
  const QString subtitle = first->subtitle();
  EXPECT_EQ(titles, (QStringList{QStringLiteral("1  Zolt – ") + subtitle + QLatin1Char('*'),
                                 QStringLiteral("2  Zolt – ") + subtitle}));
  actions.back()->trigger();
  EXPECT_TRUE(QTest::qWaitForWindowActive(app.appDelegate().windows()[1].get(), test::kPatience.count()));
}

TEST_F(MenuTest, DoNotResizeTheTerminalOfARunningShell) {
  EXPECT_EQ(window->contentViewController().rootView().textView().gridSize(), terminalSizeOfNewWindow());
}

TEST_F(MenuTest, TellTheProgramOneSizeOnly) {
  open({"size"});
  const TerminalNSTextView& view = window->contentViewController().rootView().textView();
  const auto shown = [&] { return view.textStorage().text({}, view.textStorage().end()); };
  ASSERT_TRUE(test::waitFor([&] { return shown().find('x') != std::string::npos; }));
  test::runLoopFor(std::chrono::milliseconds(200));
  EXPECT_EQ(shown(), std::to_string(view.gridSize().rows) + "x" + std::to_string(view.gridSize().columns));
}

TEST_F(MenuTest, TellTheProgramItsSizeWithABarBelowItAndOnceMoreWithoutTheBar) {
  app.appDelegate().applicationDidFinishLaunching(
      {.shell = Shell{.name = "Child", .executable = ZOLT_TEST_CHILD, .args = {"size"}, .icon = "terminal"},
       .restart = TerminalController::Restart::Never});
  window = app.appDelegate().windows().back().get();
  const TerminalNSTextView& view = window->contentViewController().rootView().textView();
  const auto shown = [&] { return view.textStorage().text({}, view.textStorage().end()); };
  const auto size = [&] {
    return std::to_string(view.gridSize().rows) + "x" + std::to_string(view.gridSize().columns);
  };
  const std::string withBar = size();
  ASSERT_TRUE(test::waitFor([&] { return !shown().empty(); }));
  test::runLoopFor(std::chrono::milliseconds(200));
  EXPECT_EQ(shown(), withBar);
  window->findChild<QPushButton*>(QStringLiteral("keepLog"))->click();
  ASSERT_TRUE(test::waitFor([&] { return shown().size() > withBar.size(); }));
  test::runLoopFor(std::chrono::milliseconds(200));
  EXPECT_NE(size(), withBar);
  EXPECT_EQ(shown(), withBar + size());
}

TEST_F(MenuTest, TellTheProgramOneSizeOnlyWithABarOfLargeTextBelowIt) {
  const test::TextSize size(2);
  app.appDelegate().applicationDidFinishLaunching(
      {.shell = Shell{.name = "Child", .executable = ZOLT_TEST_CHILD, .args = {"size"}, .icon = "terminal"},
       .restart = TerminalController::Restart::Never});
  const TerminalNSTextView& view = app.appDelegate().windows().back()->contentViewController().rootView().textView();
  const auto shown = [&] { return view.textStorage().text({}, view.textStorage().end()); };
  ASSERT_TRUE(test::waitFor([&] { return !shown().empty(); }));
  test::runLoopFor(std::chrono::milliseconds(200));
  EXPECT_EQ(shown(), std::to_string(view.gridSize().rows) + "x" + std::to_string(view.gridSize().columns));
}

TEST_F(MenuTest, ShowTheSubtitleBesideThem) {
  const auto* label = window->findChild<QLabel*>(QStringLiteral("subtitle"));
  ASSERT_NE(label, nullptr);
  EXPECT_TRUE(label->isVisible());
  EXPECT_EQ(label->text(), window->subtitle());
}

// The lowest row of `area` in which something is painted on the bar's black.
int lowestInk(const QImage& bar, const QRect& area) {
  const auto factor = static_cast<int>(bar.devicePixelRatio());
  for (int y = (area.bottom() + 1) * factor - 1; y >= area.top() * factor; --y) {
    for (int x = area.left() * factor; x < (area.right() + 1) * factor; ++x) {
      if (qGray(bar.pixel(x, y)) > 60) return y;
    }
  }
  return -1;
}

TEST_F(MenuTest, StandOnOneBaselineWithTheSubtitle) {
  QMenuBar& bar = *window->menuBar();
  const auto* label = window->findChild<QLabel*>(QStringLiteral("subtitle"));
  const QImage image = bar.grab().toImage();
  const int title = lowestInk(image, bar.actionGeometry(bar.actions().first()));  // "File"
  ASSERT_GT(title, 0);
  EXPECT_EQ(lowestInk(image, label->geometry()), title);  // "Child", which has no descender either
}

}  // namespace
}  // namespace zolt
