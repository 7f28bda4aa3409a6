#include "settings/views/GeneralSettings.h"

#include <QAbstractItemView>

#include "controls/Switch.h"
#include "controls/TextField.h"
#include "settings/views/ShellPicker.h"
#include "settings_views/PreferencesFixture.h"

namespace zolt {
namespace {

class GeneralSettingsTest : public test::PreferencesTest {
 protected:
  void openGeneral() { open(test::General); }
  PopUpPicker& picker() const { return find<PopUpPicker>("startupShell"); }
  TextField& command() const { return find<TextField>("startupCommand"); }
  // The catalogue is probed only once, so its change is simulated, announcement included.
  void setShells(std::vector<Shell> catalogue) {
    Q_EMIT shells.objectWillChange();
    const_cast<std::vector<Shell>&>(shells.availableShells()) = std::move(catalogue);
  }
  QStringList entries() const {
    QStringList texts;
    for (int i = 0; i < picker().count(); ++i) {
      texts.append(picker().itemText(i) + QLatin1Char('=') + picker().itemData(i).toString());
    }
    return texts;
  }
};

TEST_F(GeneralSettingsTest, ShowsItsSectionsAndRowsInOrder) {
  openGeneral();
  EXPECT_EQ(test::textsOf(form()),
            QStringList({QStringLiteral("Shell"), QStringLiteral("Default Shell"), QStringLiteral("Startup Command"),
                         QStringLiteral("Behavior"), QStringLiteral("Close window when shell exits"),
                         QStringLiteral("Warn before closing"), QStringLiteral("Restore previous session")}));
}

TEST_F(GeneralSettingsTest, OffersTheShellsInTheCataloguesOrder) {
  openGeneral();
  QStringList expected;
  for (const Shell& shell : shells.availableShells()) {
    expected.append(QString::fromStdString(shell.name + "=" + shell.executable));
  }
  EXPECT_GE(expected.size(), 4);
  EXPECT_EQ(entries(), expected);
}

TEST_F(GeneralSettingsTest, ShowsNoSelectionWhileNothingIsStoredAndStoresNothingUnasked) {
  openGeneral();
  turn();
  EXPECT_EQ(picker().currentIndex(), -1);
  EXPECT_EQ(picker().currentText(), QString());
  EXPECT_EQ(command().text(), QString());
  EXPECT_TRUE(fileContent().empty());
}

TEST_F(GeneralSettingsTest, ShowsTheStoredShell) {
  defaults.setString("startupShell", "/bin/bash");
  openGeneral();
  EXPECT_EQ(picker().currentText(), QStringLiteral("Bash"));
}

TEST_F(GeneralSettingsTest, KeepsAStoredShellThatIsNotInTheCatalogue) {
  for (const char* path : {"/opt/odd/shell", "/BIN/BASH", "/bin/bash "}) {
    defaults.setString("startupShell", path);
    openGeneral();
    turn();
    EXPECT_EQ(picker().currentIndex(), -1);
    EXPECT_EQ(picker().currentText(), QString());
    EXPECT_EQ(fileContent()["startupShell"], path);
  }
}

TEST_F(GeneralSettingsTest, StoresTheShellPickedInTheMenu) {
  openGeneral();
  test::click(picker());
  ASSERT_TRUE(test::waitFor([&] { return picker().view()->isVisible(); }));
  QAbstractItemView* menu = picker().view();
  QTest::qWait(QApplication::doubleClickInterval());  // the menu ignores clicks this soon after the one that opened it
  const int last = picker().count() - 1;
  const QPoint place = menu->visualRect(menu->model()->index(last, 0)).center();
  QTest::mouseMove(menu->viewport(), place);
  QTest::mouseClick(menu->viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(fileContent()["startupShell"], "/bin/sh");
  EXPECT_EQ(saves, 0);
  turn();
  EXPECT_EQ(picker().currentText(), QString::fromStdString(shells.availableShells().back().name));
}

TEST_F(GeneralSettingsTest, StoresTheShellPickedWithTheKeyboard) {
  openGeneral();
  picker().setFocus(Qt::TabFocusReason);
  test::press(*window, Qt::Key_Down);
  EXPECT_EQ(fileContent()["startupShell"], shells.availableShells().front().executable);
  test::press(*window, Qt::Key_Down);
  EXPECT_EQ(fileContent()["startupShell"], shells.availableShells()[1].executable);
}

TEST_F(GeneralSettingsTest, FollowsTheCatalogueAndTheStoredShell) {
  openGeneral();
  defaults.setString("startupShell", "/opt/new");
  turn();
  EXPECT_EQ(picker().currentIndex(), -1);
  setShells({Shell{.name = "Old", .executable = "/opt/old", .args = {}, .icon = ""},
             Shell{.name = "New", .executable = "/opt/new", .args = {}, .icon = ""}});
  turn();
  EXPECT_EQ(entries(), QStringList({QStringLiteral("Old=/opt/old"), QStringLiteral("New=/opt/new")}));
  EXPECT_EQ(picker().currentText(), QStringLiteral("New"));
  EXPECT_EQ(defaults.stringForKey("startupShell"), "/opt/new");
  defaults.setString("startupShell", "/opt/old");
  turn();
  EXPECT_EQ(picker().currentText(), QStringLiteral("Old"));
}

TEST_F(GeneralSettingsTest, HasNoEntriesIfTheCatalogueIsEmpty) {
  setShells({});
  openGeneral();
  EXPECT_EQ(picker().count(), 0);
  test::click(picker());
  test::press(*window, Qt::Key_Down);
  turn();
  EXPECT_TRUE(fileContent().empty());
}

TEST_F(GeneralSettingsTest, StoresTheCommandAsItIsTyped) {
  openGeneral();
  test::click(command());
  QTest::keyClicks(window->focusWidget(), QStringLiteral("tmux"));
  EXPECT_EQ(defaults.stringForKey("startupCommand"), "tmux");
  test::press(*window, Qt::Key_Backspace);
  EXPECT_EQ(fileContent()["startupCommand"], "tmu");
  EXPECT_EQ(std::ranges::count(written, std::string("startupCommand")), 5);
  EXPECT_EQ(saves, 0);
}

TEST_F(GeneralSettingsTest, AcceptsAnyTextAsACommand) {
  openGeneral();
  for (const char* text : {"echo \"a, b\"; x=\\n", "  spaces  ", "@ByteArray(x)", "grün ⌘", ""}) {
    command().setFocus();
    command().selectAll();
    command().insert(QString::fromUtf8(text));
    EXPECT_EQ(fileContent()["startupCommand"], text);
    EXPECT_EQ(command().text(), QString::fromUtf8(text));
  }
}

TEST_F(GeneralSettingsTest, ShowsTheStoredCommandAndFollowsItWithoutWritingItBack) {
  defaults.setString("startupCommand", "htop");
  openGeneral();
  EXPECT_EQ(command().text(), QStringLiteral("htop"));
  written.clear();
  defaults.setString("startupCommand", "top");
  EXPECT_EQ(command().text(), QStringLiteral("top"));
  defaults.removeObject("startupCommand");
  EXPECT_EQ(command().text(), QString());
  turn();
  EXPECT_EQ(std::ranges::count(written, std::string("startupCommand")), 2);
  EXPECT_EQ(defaults.stringForKey("startupCommand"), std::nullopt);
}

TEST_F(GeneralSettingsTest, ExplainsTheCommandInATooltip) {
  openGeneral();
  EXPECT_EQ(command().toolTip(), QStringLiteral("Command to run when terminal starts (optional)"));
}

TEST_F(GeneralSettingsTest, ShowsItsFixedSwitchesAndNeverMovesThem) {
  openGeneral();
  const std::pair<const char*, bool> switches[] = {
      {"closeWindowWhenShellExits", true}, {"warnBeforeClosing", true}, {"restorePreviousSession", false}};
  for (const auto& [name, isOn] : switches) {
    expectFixed(name, isOn);
  }
  turn();
  EXPECT_TRUE(fileContent().empty());
}

}  // namespace
}  // namespace zolt
