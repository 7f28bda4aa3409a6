// The preferences while the full emulation is on, and what they do when it is switched.
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <algorithm>
#include <functional>

#include "controls/ControlColors.h"
#include "controls/DestructiveButton.h"
#include "controls/NumberField.h"
#include "controls/SecondaryLabel.h"
#include "controls/SliderRow.h"
#include "controls/Switch.h"
#include "settings/views/FontFamilyPicker.h"
#include "settings/views/PreferencesTabBar.h"
#include "settings_views/PreferencesFixture.h"

namespace zolt {
namespace {

constexpr const char* kDebugRows = "Debug|Show FPS counter|Log terminal output";
constexpr const char* kEmulationRows =
    "Full Emulation|Minimum Contrast|Word Separators|Keep Closed Terminals|Use ligatures|Show bold text in bright "
    "colors|Ask before risky paste|Let programs move and resize the window|Let scripts type into any terminal|Shell "
    "integration|Always show tab bar|Dim "
    "inactive splits|Audible bell|Visual bell|Show notifications";

struct SwitchCase {
  int tab;
  const char* name;
  bool isOn;
  bool isFixedOn;  // without the full emulation
};
constexpr SwitchCase kMovable[] = {
    {test::General, "closeWindowWhenShellExits", true, true}, {test::General, "warnBeforeClosing", true, true},
    {test::General, "restorePreviousSession", true, false},   {test::Keys, "optionSendsMeta", kAltIsUsuallyMeta, false},
    {test::Keys, "commandActsAsMeta", false, false},          {test::Advanced, "useAlternateScreenBuffer", true, true},
    {test::Advanced, "enableMouseReporting", true, true}};
constexpr SwitchCase kAlwaysFixed[] = {{test::Advanced, "gpuAcceleration", true, true},
                                       {test::Advanced, "disableTransparencyForFullscreen", true, true},
                                       {test::Advanced, "showFpsCounter", false, false},
                                       {test::Advanced, "logTerminalOutput", false, false}};

class FullEmulationSettingsTest : public test::PreferencesTest {
 protected:
  void SetUp() override {
    PreferencesTest::SetUp();
    config.setupDefaults();
    defaults.setBool("fullEmulation", true);
  }
  void turnOff() {
    defaults.setBool("fullEmulation", false);
    turn();
  }
  void turnOn() {
    defaults.setBool("fullEmulation", true);
    turn();
  }
  QString rows() const { return test::textsOf(form()).join(QLatin1Char('|')); }
  void select(int tab) {
    window->view().setSelectedTab(tab);
    turn();
  }
  FontFamilyPicker& families() const { return find<FontFamilyPicker>("fontFamily"); }
  NumberField& lines() const { return find<NumberField>("scrollbackLines"); }
  void typeLines(const char* text) {
    replaceText(lines(), QLatin1String(text));
    test::press(*window, Qt::Key_Return);
  }
};

TEST_F(FullEmulationSettingsTest, SwitchesThatMeanSomethingCanBeMovedAndAreStored) {
  open(test::General);
  for (const auto& [tab, name, isOn, isFixedOn] : kMovable) {
    SCOPED_TRACE(name);
    select(tab);
    Switch& control = find<Switch>(name);
    EXPECT_FALSE(control.isFixed());
    EXPECT_EQ(control.isChecked(), isOn);
    EXPECT_EQ(defaults.stringForKey(name), std::nullopt);
    test::click(control);
    EXPECT_EQ(control.isChecked(), !isOn);
    EXPECT_EQ(fileContent()[name], isOn ? "false" : "true");
    defaults.setBool(name, isOn);
    turn();
    EXPECT_EQ(control.isChecked(), isOn) << "follows the stored value";
  }
  EXPECT_EQ(saves, 0);
}

TEST_F(FullEmulationSettingsTest, OtherSwitchesStayFixed) {
  open(test::General);
  for (const auto& [tab, name, isOn, isFixedOn] : kAlwaysFixed) {
    SCOPED_TRACE(name);
    select(tab);
    expectFixed(name, isOn);
  }
  EXPECT_EQ(fileContent().size(), 1U);
}

TEST_F(FullEmulationSettingsTest, WithItOffSwitchesAreFixedWhateverIsStored) {
  for (const SwitchCase& each : kMovable) {
    defaults.setBool(each.name, !each.isOn);
  }
  open(test::General);
  turnOff();
  for (const SwitchCase& each : kMovable) {
    SCOPED_TRACE(each.name);
    select(each.tab);
    EXPECT_TRUE(find<Switch>(each.name).isFixed());
    EXPECT_EQ(find<Switch>(each.name).isChecked(), each.isFixedOn);
  }
}

TEST_F(FullEmulationSettingsTest, HasASectionOfItsOwnBeforeTheReset) {
  open(test::Advanced);
  EXPECT_TRUE(rows().endsWith(QLatin1String(kDebugRows) + QLatin1Char('|') + QLatin1String(kEmulationRows)))
      << rows().toStdString();
  const auto top = [&](const QWidget& each) { return each.mapTo(form().widget(), QPoint()).y(); };
  EXPECT_GT(top(find("resetToDefaults")), top(find("visualBell")));
}

TEST_F(FullEmulationSettingsTest, TheSectionComesAndGoesAsTheEmulationIsSwitched) {
  open(test::Advanced);
  turnOff();
  EXPECT_TRUE(rows().endsWith(QLatin1String(kDebugRows))) << rows().toStdString();
  turnOn();
  EXPECT_TRUE(rows().endsWith(QLatin1String(kEmulationRows))) << rows().toStdString();
}

TEST_F(FullEmulationSettingsTest, ItsSwitchesStoreAndFollowTheirSettings) {
  open(test::Advanced);
  const std::pair<const char*, bool> switches[] = {{"ligatures", true},           {"boldIsBright", false},
                                                   {"askBeforeRiskyPaste", true}, {"allowWindowRequests", false},
                                                   {"messagesMayType", false},    {"audibleBell", true},
                                                   {"visualBell", false},         {"desktopNotifications", true}};
  for (const auto& [name, isOn] : switches) {
    SCOPED_TRACE(name);
    Switch& control = find<Switch>(name);
    EXPECT_EQ(control.isChecked(), isOn);
    test::click(control);
    EXPECT_EQ(fileContent()[name], isOn ? "false" : "true");
    defaults.removeObject(name);
    turn();
    EXPECT_EQ(control.isChecked(), isOn);
    EXPECT_EQ(defaults.stringForKey(name), std::nullopt) << "showing a value stores nothing";
  }
}

TEST_F(FullEmulationSettingsTest, TheMinimumContrastRangesFromOffToSeven) {
  open(test::Advanced);
  auto& row = find<SliderRow>("minimumContrast");
  EXPECT_EQ(row.valueText(), QStringLiteral("4.5:1"));
  row.slider().setFocus(Qt::TabFocusReason);
  test::press(*window, Qt::Key_Right);
  EXPECT_EQ(row.valueText(), QStringLiteral("5.0:1"));
  EXPECT_EQ(fileContent()["minimumContrast"], "5");
  test::press(*window, Qt::Key_End);
  turn();
  EXPECT_EQ(row.valueText(), QStringLiteral("7.0:1"));
  EXPECT_EQ(fileContent()["minimumContrast"], "7");
  test::press(*window, Qt::Key_Home);
  EXPECT_EQ(fileContent()["minimumContrast"], "1");
  defaults.setDouble("minimumContrast", 6.5);
  turn();
  EXPECT_EQ(row.valueText(), QStringLiteral("6.5:1"));
}

TEST_F(FullEmulationSettingsTest, WordSeparatorsAreStoredAsTheyAreTyped) {
  open(test::Advanced);
  auto& field = find<QLineEdit>("wordSeparators");
  EXPECT_FALSE(field.text().isEmpty());
  replaceText(field, QStringLiteral(" :;"));
  EXPECT_EQ(fileContent()["wordSeparators"], " :;");
  test::press(*window, Qt::Key_Left);
  QTest::keyClicks(window->focusWidget(), QStringLiteral(","));
  turn();
  QTest::keyClicks(window->focusWidget(), QStringLiteral("."));
  EXPECT_EQ(field.text(), QStringLiteral(" :,.;")) << "the cursor stays where it is";
  defaults.setString("wordSeparators", "\u2502");
  turn();
  EXPECT_EQ(field.text(), QStringLiteral("\u2502"));
}

TEST_F(FullEmulationSettingsTest, OffersTheFixedPitchFontsOfTheSystem) {
  open(test::Appearance);
  QStringList offered;
  for (int i = 0; i < families().count(); ++i) {
    offered.append(families().itemText(i));
  }
  QStringList expected{QStringLiteral("SF Mono")};
  for (const QString& family : QFontDatabase::families(QFontDatabase::Latin)) {
    const bool isExpected = QFontDatabase::isFixedPitch(family) && !QFontDatabase::isPrivateFamily(family);
    if (isExpected && family != expected.front()) expected.append(family);
  }
  offered.sort();
  expected.sort();
  EXPECT_EQ(offered, expected);
}

TEST_F(FullEmulationSettingsTest, KeepsAndShowsAFontThatIsNotInstalled) {
  config.fontFamily = "No Such Mono";
  open(test::Appearance);
  const int count = families().count();
  EXPECT_EQ(families().currentText(), QStringLiteral("No Such Mono"));
  EXPECT_EQ(families().currentIndex(), 0);
  config.fontFamily = "Nor This";
  turn();
  EXPECT_EQ(families().currentText(), QStringLiteral("Nor This"));
  EXPECT_EQ(families().count(), count) << "a name that is neither selected nor installed is not offered";
  config.fontFamily = "";
  turn();
  EXPECT_EQ(families().currentText(), QString());
  EXPECT_EQ(families().count(), count - 1);
  EXPECT_EQ(config.fontFamily.value(), "");
}

TEST_F(FullEmulationSettingsTest, AChosenFontIsStoredAtOnce) {
  open(test::Appearance);
  families().setFocus(Qt::TabFocusReason);
  ASSERT_GT(families().count(), 1) << "no fixed-pitch font";
  const std::string second = families().itemText(1).toStdString();
  test::press(*window, Qt::Key_Down);
  turn();
  EXPECT_EQ(config.fontFamily.value(), second);
  EXPECT_EQ(families().currentText().toStdString(), second);
  EXPECT_EQ(saves, 1);
  EXPECT_EQ(fileContent()["fontFamily"], second);
}

TEST_F(FullEmulationSettingsTest, ShowsTheFontInTheSecondaryColour) {
  open(test::Appearance);
  const ControlColors colors(families().palette());
  // Without the border and the arrows.
  const QRect inside = families().rect().adjusted(12, 8, -40, -8);
  const QRect area(families().mapTo(window.get(), inside.topLeft()), inside.size());
  const double strongest = test::strongestContrast(window->grab(area).toImage(), colors.field);
  EXPECT_GT(strongest, 2);
  EXPECT_LE(strongest, contrastRatio(colors.secondary, colors.field) + 0.05);
}

TEST_F(FullEmulationSettingsTest, TheFontIsPlainTextWithItOff) {
  open(test::Appearance);
  turnOff();
  EXPECT_EQ(form().findChild<FontFamilyPicker*>(), nullptr);
  EXPECT_EQ(find<SecondaryLabel>("fontFamily").text(), QStringLiteral("SF Mono"));
  config.fontFamily = "Other";
  turn();
  EXPECT_EQ(find<SecondaryLabel>("fontFamily").text(), QStringLiteral("Other"));
  turnOn();
  EXPECT_EQ(families().currentText(), QStringLiteral("Other"));
}

TEST_F(FullEmulationSettingsTest, AnEmptyNumberOfScrollbackLinesIsNoLimit) {
  open(test::Advanced);
  EXPECT_EQ(lines().text(), QStringLiteral("10000"));
  EXPECT_EQ(lines().placeholderText(), QStringLiteral("No limit"));
  for (const char* typed : {"", "  ", "0", "-1", "-42"}) {
    config.scrollbackLines = 500;
    turn();
    typeLines(typed);
    EXPECT_EQ(config.scrollbackLines, -1) << typed;
    EXPECT_EQ(lines().text(), QString()) << typed;
  }
  typeLines("600");
  EXPECT_EQ(config.scrollbackLines, 600);
  typeLines("many");
  EXPECT_EQ(config.scrollbackLines, 600);
}

TEST_F(FullEmulationSettingsTest, ANegativeNumberOfScrollbackLinesIsKept) {
  config.scrollbackLines = -5;
  open(test::Advanced);
  EXPECT_EQ(lines().text(), QString());
  test::click(lines());
  test::press(*window, Qt::Key_Tab);
  EXPECT_EQ(config.scrollbackLines, -5);
  turnOff();
  EXPECT_EQ(lines().text(), QStringLiteral("-5"));
}

TEST_F(FullEmulationSettingsTest, AResetIncludesItsSettings) {
  open(test::Advanced);
  defaults.setBool("ligatures", false);
  defaults.setDouble("minimumContrast", 6.5);
  defaults.setString("wordSeparators", "x");
  defaults.setBool("warnBeforeClosing", false);
  defaults.setString("startupCommand", "tmux");
  config.fontSize = 20;
  turn();
  test::click(find<DestructiveButton>("resetToDefaults"));
  turn();
  EXPECT_TRUE(find<Switch>("ligatures").isChecked());
  EXPECT_EQ(find<SliderRow>("minimumContrast").valueText(), QStringLiteral("4.5:1"));
  EXPECT_NE(find<QLineEdit>("wordSeparators").text(), QStringLiteral("x"));
  const auto stored = fileContent();
  for (const char* key : {"ligatures", "minimumContrast", "wordSeparators", "warnBeforeClosing"}) {
    EXPECT_FALSE(stored.contains(key)) << key;
  }
  EXPECT_EQ(stored.at("startupCommand"), "tmux");
  EXPECT_EQ(stored.at("fullEmulation"), "true");
  EXPECT_EQ(config.fontSize, 14);
}

TEST_F(FullEmulationSettingsTest, AResetWithItOffLeavesItsSettingsAlone) {
  defaults.setBool("ligatures", false);
  open(test::Advanced);
  turnOff();
  test::click(find<DestructiveButton>("resetToDefaults"));
  EXPECT_EQ(fileContent()["ligatures"], "false");
}

TEST_F(FullEmulationSettingsTest, ATooltipSaysWhichSettingsOnlyItReads) {
  open(test::Appearance);
  const auto says = [&](const char* name) {
    return find(name).toolTip().endsWith(QStringLiteral("Takes effect in the full emulation only"));
  };
  for (const bool isOn : {true, false}) {
    if (!isOn) turnOff();
    select(test::Appearance);
    for (const char* name : {"theme", "fontFamily", "fontSize", "cursorStyle", "opacity", "blurBackground"}) {
      EXPECT_TRUE(says(name)) << name;
    }
    select(test::Advanced);
    EXPECT_TRUE(says("scrollbackLines"));
    EXPECT_EQ(says("enableMouseReporting"), isOn) << "a fixed switch has no effect at all";
    EXPECT_EQ(find("showFpsCounter").toolTip(), QString());
    select(test::General);
    EXPECT_TRUE(says("startupShell"));
    EXPECT_TRUE(
        find("startupCommand").toolTip().startsWith(QStringLiteral("Command to run when terminal starts (optional)")));
    EXPECT_EQ(says("startupCommand"), isOn) << "the field itself";
    const auto labels = window->findChildren<QLabel*>();
    const auto label = std::ranges::find(labels, &find("startupCommand"), &QLabel::buddy);
    ASSERT_NE(label, labels.end());
    EXPECT_TRUE((*label)->toolTip().endsWith(QStringLiteral("Takes effect in the full emulation only")));
  }
}

TEST_F(FullEmulationSettingsTest, StoresALineSpacingOfItsOwn) {
  open(test::Appearance);
  auto& row = find<SliderRow>("lineSpacing");
  EXPECT_EQ(row.valueText(), QStringLiteral("1.2"));
  row.slider().setFocus(Qt::TabFocusReason);
  test::press(*window, Qt::Key_Right);
  EXPECT_EQ(fileContent()["lineSpacing"], "1.3");
  EXPECT_EQ(config.lineSpacing, 1.2) << "the log's is never stored";
  Config next(defaults);
  next.setupDefaults();
  EXPECT_EQ(emulationSettings(next, defaults).lineSpacing, 1.3);
  turnOff();
  EXPECT_EQ(find<SliderRow>("lineSpacing").valueText(), QStringLiteral("1.2"));
}

TEST_F(FullEmulationSettingsTest, SavesEveryChangeOfAStoredSettingOnlyWhileItIsOn) {
  open(test::Advanced);
  const std::function<void()> changes[] = {
      [this] { config.fontFamily = "Other Mono"; }, [this] { config.cursorStyle = Config::CursorStyle::Bar; },
      [this] { config.blurBackground = !config.blurBackground; }, [this] { config.scrollbackLines = 1234; }};
  int expected = 0;
  for (const auto& change : changes) {
    change();
    turn();
    EXPECT_EQ(saves, ++expected);
  }
  EXPECT_EQ(fileContent()["scrollbackLines"], "1234");
  config.lineSpacing = 1.5;
  turn();
  EXPECT_EQ(saves, expected) << "it is never stored";
  turnOff();
  config.fontFamily = "Third Mono";
  config.scrollbackLines = 5;
  turn();
  EXPECT_EQ(saves, expected);
}

TEST_F(FullEmulationSettingsTest, ASettingThatChangesInTheSameTurnIsStillSaved) {
  open(test::Appearance);
  config.opacity = 0.5;
  defaults.setBool("fullEmulation", false);
  turn();
  EXPECT_EQ(saves, 1);
  EXPECT_EQ(fileContent()["opacity"], "0.5");
  defaults.setBool("fullEmulation", true);
  config.opacity = 0.6;
  turn();
  EXPECT_EQ(saves, 2);
}

TEST_F(FullEmulationSettingsTest, SwitchingItKeepsTheFormsPlaceAndFocusAndANumberThatIsBeingTyped) {
  open(test::Advanced);
  replaceText(lines(), QStringLiteral("500"));
  form().verticalScrollBar()->setValue(40);
  turnOff();
  EXPECT_EQ(config.scrollbackLines, 500);
  EXPECT_EQ(lines().text(), QStringLiteral("500"));
  EXPECT_EQ(window->focusWidget(), &lines());
  form().verticalScrollBar()->setValue(40);
  turnOn();
  EXPECT_EQ(form().verticalScrollBar()->value(), 40);
}

TEST_F(FullEmulationSettingsTest, TheTabKeyReachesItsControlsFromTopToBottom) {
  open(test::General);
  turnOff();
  turnOn();
  for (int tab = 0; tab < 4; ++tab) {
    SCOPED_TRACE(tab);
    select(tab);
    QWidget* first = nullptr;
    for (auto* each : window->findChildren<TabButton*>()) {
      if (each->isChecked()) first = each;
    }
    ASSERT_NE(first, nullptr);
    first->setFocus(Qt::TabFocusReason);
    std::vector<int> tops;
    for (test::press(*window, Qt::Key_Tab); window->focusWidget() != first; test::press(*window, Qt::Key_Tab)) {
      ASSERT_LT(tops.size(), 30U);
      tops.push_back(window->focusWidget()->mapTo(form().widget(), QPoint()).y());
      EXPECT_FALSE(window->focusWidget()->accessibleName().isEmpty() &&
                   QAccessible::queryAccessibleInterface(window->focusWidget())->text(QAccessible::Name).isEmpty());
    }
    EXPECT_TRUE(std::ranges::is_sorted(tops));
    EXPECT_FALSE(tops.empty());
  }
}

TEST_F(FullEmulationSettingsTest, ClipsNoText) {
  open(test::Advanced);
  EXPECT_EQ(form().horizontalScrollBar()->maximum(), 0);
  for (const QLabel* label : form().findChildren<QLabel*>()) {
    EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
  }
}

}  // namespace
}  // namespace zolt
