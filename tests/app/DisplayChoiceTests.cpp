// How the user comes to the full emulation: the bar of the first window, the switch in the menu, the replaced window.
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <filesystem>

#include "AppFixture.h"
#include "app/ProgramRun.h"
#include "platform/ProcessFolder.h"
#include "support/TextSize.h"

namespace zolt {
namespace {

using test::waitFor;

class DisplayChoiceTest : public test::AppDelegateTest {
 protected:
  void launch(TerminalLaunch first = child({"wait"})) {
    delegate.applicationDidFinishLaunching(first);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window(0), test::kPatience.count()));
  }
  DisplayBar* bar() { return window(0).findChild<DisplayBar*>(); }
  void choose(const char* button) { bar()->findChild<QPushButton*>(QLatin1String(button))->click(); }
  /// The button of the question that is open over a window.
  QPushButton* answer(TerminalWindow& over, const char* text) {
    const auto* box = over.findChild<QMessageBox*>(QStringLiteral("replaceQuestion"));
    if (box == nullptr) return nullptr;
    const auto buttons = box->findChildren<QPushButton*>();
    for (QPushButton* each : buttons) {
      if (each->text().remove(QLatin1Char('&')) == QLatin1String(text)) return each;
    }
    return nullptr;
  }
  Display displayOf(std::size_t index) { return window(index).kind().display; }
};

TEST_F(DisplayChoiceTest, OffersBothDisplaysInABarBelowTheTerminal) {
  launch();
  ASSERT_NE(bar(), nullptr);
  EXPECT_EQ(bar()->findChild<QLabel*>()->text(),
            QStringLiteral("Output is shown as a log. Editors, pagers and columns need the full emulation."));
  const TextCanvas& canvas = window(0).contentViewController().rootView().surface().canvas();
  EXPECT_EQ(bar()->mapTo(&window(0), QPoint(0, bar()->height())).y(), window(0).height());
  EXPECT_EQ(canvas.mapTo(&window(0), QPoint(0, canvas.height())).y(), window(0).height() - bar()->height());
  EXPECT_TRUE(canvas.hasFocus());
}

TEST_F(DisplayChoiceTest, KeepsTheLogAndRemembersThat) {
  launch();
  choose("keepLog");
  EXPECT_TRUE(waitFor([this] { return bar() == nullptr; }));
  EXPECT_TRUE(defaults.boolForKey("displayChosen"));
  EXPECT_EQ(defaults.stringForKey("fullEmulation"), std::nullopt);
  EXPECT_EQ(delegate.windows().size(), 1U);
  EXPECT_EQ(displayOf(0), Display::Log);
}

TEST_F(DisplayChoiceTest, OpensAWindowOfTheFullEmulationInPlaceOfTheFirst) {
  launch();
  window(0).setGeometry(QRect(window(0).geometry().topLeft() + QPoint(9, 7), QSize(640, 420)));
  const QRect place = window(0).geometry();
  choose("useFullEmulation");
  ASSERT_EQ(delegate.windows().size(), 1U);
  EXPECT_EQ(displayOf(0), Display::FullEmulation);
  EXPECT_EQ(window(0).geometry(), place);
  EXPECT_TRUE(window(0).isVisible());
  EXPECT_TRUE(defaults.boolForKey("fullEmulation"));
  EXPECT_TRUE(defaults.boolForKey("displayChosen"));
  EXPECT_EQ(bar(), nullptr);
  EXPECT_TRUE(waitFor([] { return test::childProcesses().size() == 1; })) << "the first window's program has ended";
}

TEST_F(DisplayChoiceTest, OffersNothingOnceOneWasChosen) {
  for (const char* key : {"displayChosen", "fullEmulation"}) {
    UserDefaults chosen(folder.filePath(QLatin1String(key)).toStdString());
    chosen.setBool(key, false);
    Config settings(chosen);
    AppDelegate other(settings, chosen, [](TerminalWindow&) {});
    other.applicationDidFinishLaunching(child({"wait"}));
    EXPECT_EQ(other.windows().front()->findChild<DisplayBar*>(), nullptr) << key;
  }
}

TEST_F(DisplayChoiceTest, OffersNothingToAProgramNorInARunOfOneDisplay) {
  TerminalLaunch program = child({"wait"});
  program.isForProgram = true;
  launch(program);
  EXPECT_EQ(bar(), nullptr);
  for (const Display display : {Display::Log, Display::FullEmulation}) {
    AppDelegate other(config, defaults, [](TerminalWindow&) {});
    other.setDisplayOfThisRun(display);
    other.applicationDidFinishLaunching(child({"wait"}));
    EXPECT_EQ(other.windows().front()->kind().display, display);
    EXPECT_EQ(other.windows().front()->findChild<DisplayBar*>(), nullptr);
  }
}

TEST_F(DisplayChoiceTest, OffersItInTheFirstWindowOnly) {
  launch();
  delegate.openWindow(child({"wait"}));
  EXPECT_EQ(window(1).findChild<DisplayBar*>(), nullptr);
}

TEST_F(DisplayChoiceTest, IsOfferedInTheFirstWindowOfAServiceWheneverThatIsWanted) {
  delegate.serviceDidFinishLaunching();
  EXPECT_TRUE(delegate.windows().empty());
  delegate.openWindow(child({"wait"}));
  EXPECT_NE(bar(), nullptr);
  delegate.openWindow(child({"wait"}));
  EXPECT_EQ(window(1).findChild<DisplayBar*>(), nullptr);
}

TEST_F(DisplayChoiceTest, TakesTheBarAwayWhenTheChoiceIsMadeInTheMenu) {
  launch();
  delegate.toggleFullEmulation();
  EXPECT_TRUE(waitFor([this] { return bar() == nullptr; }));
}

TEST_F(DisplayChoiceTest, GivesTheBarTheKeyboardByF6AndTakesItBackByEscape) {
  launch();
  const QWidget* terminal = QApplication::focusWidget();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("useFullEmulation"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("keepLog"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
  EXPECT_EQ(QApplication::focusWidget(), terminal);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_EQ(QApplication::focusWidget(), terminal);
}

TEST_F(DisplayChoiceTest, KeepsTheButtonsOfTheBarInANarrowWindow) {
  DisplayBar narrow;
  narrow.resize(narrow.minimumSizeHint().width(), narrow.height());
  narrow.show();
  EXPECT_EQ(narrow.height(), DisplayBar().height());
  for (const QPushButton* button : narrow.findChildren<QPushButton*>()) {
    EXPECT_GE(button->width(), button->sizeHint().width());
    EXPECT_TRUE(narrow.rect().contains(button->geometry()));
  }
}

TEST_F(DisplayChoiceTest, ShowsTheWholeSentenceOfTheBarInLargeText) {
  const test::TextSize size(2);
  launch();
  const auto* sentence = bar()->findChild<QLabel*>(QStringLiteral("displayBarText"));
  EXPECT_TRUE(sentence->wordWrap());
  EXPECT_GE(sentence->height(), sentence->heightForWidth(sentence->width()));
  for (const QPushButton* button : bar()->findChildren<QPushButton*>()) {
    EXPECT_GE(button->width(), button->sizeHint().width());
    EXPECT_TRUE(bar()->rect().contains(button->geometry()));
    EXPECT_FALSE(sentence->geometry().intersects(button->geometry()));
  }
}

TEST_F(DisplayChoiceTest, StartsTheNewWindowInTheFolderOfTheShellThatItReplaces) {
  const std::string place = std::filesystem::canonical(folder.path().toStdString()).string();
  for (const bool byTheBar : {true, false}) {
    UserDefaults own(folder.filePath(byTheBar ? QStringLiteral("bar") : QStringLiteral("menu")).toStdString());
    Config settings(own);
    own.setString("startupShell", "/bin/sh");
    AppDelegate other(settings, own, [](TerminalWindow&) {});
    TerminalLaunch shell = child({"-i"});
    shell.shell->executable = "/bin/sh";
    other.applicationDidFinishLaunching(shell);
    TerminalWindow& first = *other.windows().front();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&first, test::kPatience.count()));
    PTYSession& before = first.contentViewController().rootView().terminal().ptySession();
    before.write("cd '" + place + "'\r");
    ASSERT_TRUE(waitFor([&] { return processFolder(*before.shellProcess()) == place; }));
    if (byTheBar) {
      first.findChild<QPushButton*>(QStringLiteral("useFullEmulation"))->click();
    } else {
      other.toggleFullEmulation();
      answer(first, "Replace This Window")->click();
    }
    ASSERT_EQ(other.windows().front()->kind().display, Display::FullEmulation);
    PTYSession& after = other.windows().front()->contentViewController().rootView().terminal().ptySession();
    ASSERT_TRUE(after.shellProcess());
    EXPECT_TRUE(waitFor([&] { return processFolder(*after.shellProcess()) == place; })) << byTheBar;
  }
}

TEST_F(DisplayChoiceTest, PutsTheButtonsOfTheBarBelowEachOtherWhereTheyHaveNoRoomBesideEachOther) {
  QWidget window;
  DisplayBar bar(&window);
  window.show();
  const int wide = bar.minimumSizeHint().width();
  const int high = bar.sizeHint().height();
  const auto buttons = bar.findChildren<QPushButton*>();
  ASSERT_EQ(buttons.size(), 2);
  bar.resize(wide * 2 / 3, high);
  bar.resize(bar.width(), bar.sizeHint().height());
  EXPECT_GT(bar.height(), high);
  EXPECT_FALSE(buttons[0]->geometry().intersects(buttons[1]->geometry()));
  for (const QPushButton* button : buttons) {
    EXPECT_GE(button->width(), button->sizeHint().width());
    EXPECT_TRUE(bar.rect().contains(button->geometry()));
  }
  bar.resize(wide, bar.height());
  EXPECT_EQ(bar.sizeHint().height(), high);
  EXPECT_EQ(bar.height(), high);
}

TEST_F(DisplayChoiceTest, TheSwitchDecidesForWindowsToCome) {
  launch();
  delegate.toggleFullEmulation();
  EXPECT_EQ(displayOf(0), Display::Log);
  EXPECT_EQ(delegate.openWindow(child({"wait"})).kind().display, Display::FullEmulation);
  delegate.toggleFullEmulation();
  EXPECT_EQ(delegate.openWindow(child({"wait"})).kind().display, Display::Log);
}

TEST_F(DisplayChoiceTest, TheDisplayOfTheRunIsWhatTheMenuAndThePreferencesShow) {
  EmulationSettingsStore preferences(config, defaults);
  delegate.setDisplayOfThisRun(Display::FullEmulation);
  EXPECT_TRUE(delegate.isOn("toggleFullEmulation"));
  EXPECT_TRUE(preferences.isOn());
  defaults.synchronize();
  EXPECT_FALSE(UserDefaults(file).stringForKey(kFullEmulationKey)) << "for this run only";
  delegate.toggleFullEmulation();
  EXPECT_EQ(delegate.displayOfNewWindow(), Display::Log);
  EXPECT_FALSE(preferences.isOn());
}

TEST_F(DisplayChoiceTest, TheSwitchCountsMoreThanTheDisplayOfTheRun) {
  delegate.setDisplayOfThisRun(Display::Log);
  delegate.toggleFullEmulation();
  EXPECT_EQ(delegate.displayOfNewWindow(), Display::FullEmulation);
}

TEST_F(DisplayChoiceTest, AsksWhetherToReplaceTheWindowInFrontAndDoesSo) {
  launch();
  ASSERT_TRUE(waitForText(window(0), "waiting"));
  delegate.toggleFullEmulation();
  const QRect place = window(0).geometry();
  QPushButton* yes = answer(window(0), "Replace This Window");
  ASSERT_NE(yes, nullptr);
  yes->click();
  ASSERT_EQ(delegate.windows().size(), 1U);
  EXPECT_EQ(displayOf(0), Display::FullEmulation);
  EXPECT_EQ(window(0).geometry(), place);
  EXPECT_TRUE(waitFor([] { return test::childProcesses().size() == 1; }));
}

TEST_F(DisplayChoiceTest, KeepsTheWindowIfTheUserSaysSo) {
  launch();
  delegate.toggleFullEmulation();
  QPushButton* no = answer(window(0), "Keep This Window");
  ASSERT_NE(no, nullptr);
  EXPECT_TRUE(no->isDefault());
  no->click();
  EXPECT_EQ(delegate.windows().size(), 1U);
  EXPECT_EQ(displayOf(0), Display::Log);
  EXPECT_TRUE(window(0).contentViewController().rootView().terminal().ptySession().isRunning());
  EXPECT_TRUE(defaults.boolForKey("fullEmulation"));
}

TEST_F(DisplayChoiceTest, DoesNotAskWhereTheWindowShowsThatDisplayOrAProgram) {
  defaults.setBool("fullEmulation", true);
  launch();
  ASSERT_EQ(displayOf(0), Display::FullEmulation);
  defaults.setBool("fullEmulation", false);
  delegate.toggleFullEmulation();
  EXPECT_EQ(window(0).findChild<QMessageBox*>(), nullptr);
  TerminalLaunch program = child({"wait"});
  program.isForProgram = true;
  TerminalWindow& other = delegate.openWindow(program);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other, test::kPatience.count()));
  delegate.toggleFullEmulation();
  EXPECT_EQ(other.findChild<QMessageBox*>(), nullptr);
}

}  // namespace
}  // namespace zolt
