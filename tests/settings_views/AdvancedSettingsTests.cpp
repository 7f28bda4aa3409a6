#include "settings/views/AdvancedSettings.h"

#include "controls/ControlColors.h"
#include "controls/DestructiveButton.h"
#include "controls/NumberField.h"
#include "controls/Switch.h"
#include "settings_views/PreferencesFixture.h"

namespace zolt {
namespace {

class AdvancedSettingsTest : public test::PreferencesTest {
 protected:
  void SetUp() override {
    PreferencesTest::SetUp();
    config.setupDefaults();
    open(test::Advanced);
  }

  NumberField& lines() const { return find<NumberField>("scrollbackLines"); }
  void type(const char* text) { replaceText(lines(), QLatin1String(text)); }
  void reset() { test::click(find<DestructiveButton>("resetToDefaults")); }
  void changeEverything() {
    config.fontSize = 20;
    config.fontFamily = "Other";
    config.theme = Config::ColorScheme::Light;
    config.cursorStyle = Config::CursorStyle::Bar;
    config.cursorBlink = false;
    config.scrollbackLines = 77;
    config.opacity = 0.5;
    config.blurBackground = true;
    config.lineSpacing = 1.7;
    turn();
  }
};

TEST_F(AdvancedSettingsTest, ShowsItsSectionsAndRowsInOrder) {
  EXPECT_EQ(
      test::textsOf(form()).join(QLatin1Char('|')),
      QStringLiteral("Terminal|Scrollback Lines|Use alternate screen buffer|Enable mouse reporting|Performance|GPU "
                     "Acceleration (Metal)|Disable transparency for fullscreen|Debug|Show FPS counter|Log terminal "
                     "output"));
  EXPECT_EQ(find<DestructiveButton>("resetToDefaults").text(), QStringLiteral("Reset to Defaults"));
}

TEST_F(AdvancedSettingsTest, ShowsTheNumberWithoutSeparatorsRightAlignedInAFieldAHundredWide) {
  config.scrollbackLines = 1234567;
  turn();
  EXPECT_EQ(lines().text(), QStringLiteral("1234567"));
  EXPECT_TRUE(lines().alignment().testFlag(Qt::AlignRight));
  const QImage image = lines().grab().toImage();
  int first = 0;
  int last = lines().width() - 1;
  const QColor outside = image.pixelColor(0, lines().height() / 2);
  while (image.pixelColor(first, lines().height() / 2) == outside) {
    ++first;
  }
  while (image.pixelColor(last, lines().height() / 2) == outside) {
    --last;
  }
  EXPECT_EQ(last - first + 1, 100);
}

TEST_F(AdvancedSettingsTest, CommitsTheNumberOnReturnAndNotBefore) {
  type("500");
  EXPECT_EQ(config.scrollbackLines, 10000);
  test::press(*window, Qt::Key_Return);
  EXPECT_EQ(config.scrollbackLines, 500);
  EXPECT_EQ(lines().text(), QStringLiteral("500"));
}

TEST_F(AdvancedSettingsTest, CommitsTheNumberWhenTheFieldLosesTheFocus) {
  type("-5");
  test::press(*window, Qt::Key_Tab);
  EXPECT_EQ(config.scrollbackLines, -5);
  type("600");
  test::click(find<Switch>("enableMouseReporting"));
  EXPECT_EQ(config.scrollbackLines, 600);
}

TEST_F(AdvancedSettingsTest, RoundsAFractionAndRevertsInvalidInput) {
  const std::tuple<const char*, const char*, std::int64_t> cases[] = {
      {"12.7", "13", 13},
      {"12.5", "12", 12},
      {"abc", "12", 12},
      {"10,000", "12", 12},
      {"", "12", 12},
      {"1e9", "12", 12},
      {" 40 ", "40", 40},
      {"99999999999999999999", "40", 40},
      {"9223372036854775807", "9223372036854775807", 9223372036854775807},
      {"0", "0", 0}};
  for (const auto& [typed, shown, number] : cases) {
    type(typed);
    test::press(*window, Qt::Key_Return);
    EXPECT_EQ(config.scrollbackLines, number) << typed;
    EXPECT_EQ(lines().text(), QLatin1String(shown)) << typed;
  }
}

TEST_F(AdvancedSettingsTest, EditingTheNumberNeverSaves) {
  type("500");
  test::press(*window, Qt::Key_Return);
  turn();
  EXPECT_EQ(saves, 0);
  EXPECT_TRUE(fileContent().empty());
  config.opacity = 0.5;
  turn();
  EXPECT_EQ(fileContent()["scrollbackLines"], "500");
}

TEST_F(AdvancedSettingsTest, AnUnchangedNumberIsNotAssignedAgain) {
  int announced = 0;
  QObject::connect(&config, &Config::objectWillChange, window.get(), [&] { ++announced; });
  test::click(lines());
  test::press(*window, Qt::Key_Tab);
  EXPECT_EQ(announced, 0);
  type("10000");
  test::press(*window, Qt::Key_Return);
  EXPECT_EQ(announced, 0);
}

TEST_F(AdvancedSettingsTest, KeepsUncommittedInputWhenTheStoreChanges) {
  type("50");
  config.scrollbackLines = 300;
  turn();
  EXPECT_EQ(lines().text(), QStringLiteral("50"));
  QTest::keyClicks(window->focusWidget(), QStringLiteral("x"));
  test::press(*window, Qt::Key_Return);
  EXPECT_EQ(lines().text(), QStringLiteral("300"));
  EXPECT_EQ(config.scrollbackLines, 300);
}

TEST_F(AdvancedSettingsTest, FollowsTheStore) {
  config.scrollbackLines = -42;
  turn();
  EXPECT_EQ(lines().text(), QStringLiteral("-42"));
}

TEST_F(AdvancedSettingsTest, EscapeRevertsUncommittedInputAndClosesTheWindow) {
  type("500");
  test::press(*window, Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(config.scrollbackLines, 10000);
  EXPECT_EQ(lines().text(), QStringLiteral("10000"));
}

TEST_F(AdvancedSettingsTest, ShowsItsFixedSwitchesAndNeverMovesThem) {
  const std::tuple<const char*, bool, bool> switches[] = {
      {"useAlternateScreenBuffer", true, true}, {"enableMouseReporting", true, true},
      {"gpuAcceleration", true, false},         {"disableTransparencyForFullscreen", true, true},
      {"showFpsCounter", false, true},          {"logTerminalOutput", false, true}};
  for (const auto& [name, isOn, isEnabled] : switches) {
    EXPECT_EQ(find<Switch>(name).isEnabled(), isEnabled) << name;
    expectFixed(name, isOn);
  }
  turn();
  EXPECT_TRUE(fileContent().empty());
}

TEST_F(AdvancedSettingsTest, TheLabelOfTheDisabledSwitchLooksDisabled) {
  for (const QLabel* label : form().findChildren<QLabel*>()) {
    EXPECT_EQ(label->isEnabled(), label->text() != QStringLiteral("GPU Acceleration (Metal)"));
  }
}

TEST_F(AdvancedSettingsTest, ResetSetsTheDefaultsInOrderAndThenSaves) {
  changeEverything();
  struct Snapshot {
    double fontSize;
    std::string fontFamily;
    Config::ColorScheme theme;
    Config::CursorStyle cursorStyle;
    bool cursorBlink;
    std::int64_t scrollbackLines;
    double opacity;
    bool blurBackground;
    bool operator==(const Snapshot&) const = default;
  };
  std::vector<Snapshot> before;
  saves = 0;
  QObject::connect(&config, &Config::objectWillChange, window.get(), [&] {
    before.push_back({config.fontSize, config.fontFamily, config.theme, config.cursorStyle, config.cursorBlink,
                      config.scrollbackLines, config.opacity, config.blurBackground});
    EXPECT_EQ(saves, 0);
  });
  find<DestructiveButton>("resetToDefaults").click();
  EXPECT_EQ(saves, 1);  // by its own call, before the appearance tab reacts

  Snapshot expected{20, "Other", Config::ColorScheme::Light, Config::CursorStyle::Bar, false, 77, 0.5, true};
  const std::vector<std::function<void()>> steps{[&] { expected.fontSize = 14; },
                                                 [&] { expected.fontFamily = "SF Mono"; },
                                                 [&] { expected.theme = Config::ColorScheme::Dark; },
                                                 [&] { expected.cursorStyle = Config::CursorStyle::Block; },
                                                 [&] { expected.cursorBlink = true; },
                                                 [&] { expected.scrollbackLines = 10000; },
                                                 [&] { expected.opacity = 1; }};
  ASSERT_EQ(before.size(), 8U);
  for (std::size_t i = 0; i < before.size(); ++i) {
    EXPECT_TRUE(before[i] == expected) << i;
    if (i < steps.size()) steps[i]();
  }
  EXPECT_FALSE(config.blurBackground);
}

TEST_F(AdvancedSettingsTest, ResetStoresTheDefaultsAndLeavesOtherSettingsAlone) {
  changeEverything();
  defaults.setString("startupShell", "/bin/zsh");
  defaults.setString("startupCommand", "tmux");
  reset();
  turn();
  const std::map<std::string, std::string> expected{
      {"theme", "Dark"},         {"fontSize", "14"},          {"fontFamily", "SF Mono"},
      {"cursorStyle", "Block"},  {"cursorBlink", "true"},     {"scrollbackLines", "10000"},
      {"opacity", "1"},          {"blurBackground", "false"}, {"startupShell", "/bin/zsh"},
      {"startupCommand", "tmux"}};
  EXPECT_EQ(fileContent(), expected);
  EXPECT_EQ(config.lineSpacing, 1.7);
  EXPECT_EQ(lines().text(), QStringLiteral("10000"));
}

TEST_F(AdvancedSettingsTest, ResetSavesEvenIfNothingDiffers) {
  config.cursorBlink = true;
  turn();
  saves = 0;
  reset();
  turn();
  EXPECT_EQ(saves, 1);
}

TEST_F(AdvancedSettingsTest, ResetByMouseOverridesUncommittedInput) {
  type("500");
  reset();
  turn();
  EXPECT_EQ(config.scrollbackLines, 10000);
  EXPECT_EQ(lines().text(), QStringLiteral("10000"));
}

TEST_F(AdvancedSettingsTest, TheResetButtonsTextIsRed) {
  auto& button = find<DestructiveButton>("resetToDefaults");
  const QColor red = ControlColors(button.palette()).destructive;
  const QImage image = button.grab().toImage();
  int pixels = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y).rgb() == red.rgb()) ++pixels;
    }
  }
  EXPECT_GT(pixels, 20);
}

}  // namespace
}  // namespace zolt
