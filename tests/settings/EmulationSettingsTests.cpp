#include "settings/EmulationSettings.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <limits>
#include <set>

namespace zolt {
namespace {

class EmulationSettingsTest : public testing::Test {
 protected:
  EmulationSettings settings() const { return emulationSettings(config, defaults); }

  QTemporaryDir folder;
  UserDefaults defaults{folder.filePath(QStringLiteral("zolt.ini")).toStdString()};
  Config config{defaults};
};

TEST_F(EmulationSettingsTest, AreTheDefaultsWhileNothingIsStored) {
  EXPECT_EQ(settings(), EmulationSettings());
  EXPECT_TRUE(settings().ligatures);
  EXPECT_EQ(settings().minimumContrast, 4.5);
  EXPECT_TRUE(settings().askBeforeRiskyPaste);
  EXPECT_FALSE(settings().allowWindowRequests);
  EXPECT_FALSE(settings().messagesMayType);
  EXPECT_FALSE(settings().boldIsBright);
  EXPECT_EQ(settings().startupShell, kStartupShell.absent);
  EXPECT_EQ(settings().startupCommand, kStartupCommand.absent);
}

TEST_F(EmulationSettingsTest, AreThoseInMemoryEvenIfNeverSaved) {
  config.theme = Config::ColorScheme::System;
  config.fontSize = 20;
  config.fontFamily = "Some Mono";
  config.lineSpacing = 1.7;
  config.cursorStyle = Config::CursorStyle::Bar;
  config.cursorBlink = false;
  config.scrollbackLines = 77;
  config.opacity = 0.5;
  config.blurBackground = true;
  EmulationSettings expected;
  expected.colorScheme = Config::ColorScheme::System;
  expected.fontSize = 20;
  expected.fontFamily = "Some Mono";
  expected.lineSpacing = 1.7;
  expected.cursorStyle = Config::CursorStyle::Bar;
  expected.cursorBlink = false;
  expected.scrollbackLines = 77;
  expected.opacity = 0.5;
  expected.blurBackground = true;
  EXPECT_EQ(settings(), expected);
  EXPECT_EQ(defaults.stringForKey("fontSize"), std::nullopt);
}

TEST_F(EmulationSettingsTest, EachStoredKeyIsReadIntoItsSetting) {
  for (const EmulationRow& row : emulationRows()) {
    SCOPED_TRACE(row.key);
    EmulationSettings expected;
    struct {
      UserDefaults& defaults;
      EmulationSettings& expected;
      const char* key;
      double number;  // within the setting's range
      void operator()(bool EmulationSettings::*member) const {
        expected.*member = !(expected.*member);
        defaults.setBool(key, expected.*member);
      }
      void operator()(double EmulationSettings::*member) const {
        expected.*member = number;
        defaults.setDouble(key, number);
      }
      void operator()(std::string EmulationSettings::*member) const {
        expected.*member = "a text";
        defaults.setString(key, "a text");
      }
    } change{defaults, expected, row.key, row.range.first + row.range.step};
    std::visit(change, row.member);
    EXPECT_EQ(settings(), expected);
    defaults.removeObject(row.key);
    EXPECT_EQ(settings(), EmulationSettings());
  }
}

TEST_F(EmulationSettingsTest, AltIsMetaForThoseWhoNeverChoseExceptOnAMac) {
#ifdef Q_OS_MACOS
  EXPECT_FALSE(settings().optionSendsMeta);
#else
  EXPECT_TRUE(settings().optionSendsMeta);
#endif
  defaults.setBool("optionSendsMeta", false);
  EXPECT_FALSE(settings().optionSendsMeta);
}

TEST_F(EmulationSettingsTest, HaveTheKeysThatFilesAlreadyHold) {
  std::set<std::string> keys;
  for (const EmulationRow& row : emulationRows()) {
    EXPECT_EQ(&rowOf(row.member), &row);
    keys.insert(row.key);
  }
  EXPECT_EQ(keys, (std::set<std::string>{"allowWindowRequests",
                                         "alwaysShowTabs",
                                         "askBeforeRiskyPaste",
                                         "audibleBell",
                                         "boldIsBright",
                                         "closeWindowWhenShellExits",
                                         "commandActsAsMeta",
                                         "desktopNotifications",
                                         "dimUnfocusedPanes",
                                         "enableMouseReporting",
                                         "ligatures",
                                         "lineSpacing",
                                         "messagesMayType",
                                         "minimumContrast",
                                         "optionSendsMeta",
                                         "reopenSeconds",
                                         "restorePreviousSession",
                                         "shellIntegration",
                                         "startupCommand",
                                         "startupShell",
                                         "useAlternateScreenBuffer",
                                         "visualBell",
                                         "warnBeforeClosing",
                                         "wordSeparators"}));
}

TEST_F(EmulationSettingsTest, AFlagThatIsNeitherYesNorNoCountsAsAbsent) {
  const std::pair<const char*, bool> stored[] = {{"true", true}, {"YES", true}, {"1", true},    {"false", false},
                                                 {"No", false},  {"0", false},  {"-2.5", true}, {" f", false}};
  for (const auto& [text, isOn] : stored) {
    defaults.setString("ligatures", text);
    defaults.setString("boldIsBright", text);
    EXPECT_EQ(settings().ligatures, isOn) << text;
    EXPECT_EQ(settings().boldIsBright, isOn) << text;
  }
  for (const char* text : {"", "  ", "banana", "-", "\xFF"}) {
    defaults.setString("ligatures", text);
    defaults.setString("boldIsBright", text);
    EXPECT_TRUE(settings().ligatures) << text;
    EXPECT_FALSE(settings().boldIsBright) << text;
    EXPECT_EQ(defaults.stringForKey("ligatures"), text) << "it is kept";
  }
}

TEST_F(EmulationSettingsTest, NumbersOutOfRangeAreClamped) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (const auto& [size, expected] :
       {std::pair{3.5, 4.0}, {4.0, 4.0}, {288.0, 288.0}, {1e6, 288.0}, {-2.0, 4.0}, {infinity, 288.0}, {13.5, 13.5}}) {
    config.fontSize = size;
    EXPECT_EQ(settings().fontSize, expected);
    EXPECT_EQ(config.fontSize, size) << "it is kept";
  }
  for (const auto& [opacity, expected] : {std::pair{0.0, 0.1}, {-1.0, 0.1}, {0.25, 0.25}, {7.0, 1.0}}) {
    config.opacity = opacity;
    EXPECT_EQ(settings().opacity, expected);
  }
  for (const auto& [spacing, expected] : {std::pair{0.0, 0.8}, {2.5, 2.5}, {3.1, 3.0}}) {
    config.lineSpacing = spacing;
    EXPECT_EQ(settings().lineSpacing, expected);
  }
  for (const auto& [contrast, expected] :
       {std::pair{"0.5", 1.0}, {"7", 7.0}, {"21", 7.0}, {"-3", 1.0}, {"0", 4.5}, {"much", 4.5}, {"3:1", 3.0}}) {
    defaults.setString("minimumContrast", contrast);
    EXPECT_EQ(settings().minimumContrast, expected) << contrast;
  }
}

TEST_F(EmulationSettingsTest, AnyNumberOfScrollbackLinesBelowOneIsNoLimit) {
  for (const std::int64_t lines : {std::int64_t{0}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::min()}) {
    config.scrollbackLines = lines;
    EXPECT_EQ(settings().scrollbackLines, std::nullopt);
  }
  config.scrollbackLines = 1;
  EXPECT_EQ(settings().scrollbackLines, 1);
}

// The stored 0 of an earlier version loads as the default number; -1 does not.
TEST_F(EmulationSettingsTest, NoLimitIsKeptInAFile) {
  config.scrollbackLines = -1;
  config.save();
  Config next(defaults);
  next.setupDefaults();
  EXPECT_EQ(emulationSettings(next, defaults).scrollbackLines, std::nullopt);
}

TEST_F(EmulationSettingsTest, AnEmptyTextIsNotAnAbsentOne) {
  EXPECT_FALSE(settings().wordSeparators.empty());
  defaults.setString("wordSeparators", "");
  EXPECT_EQ(settings().wordSeparators, "");
  config.fontFamily = "";
  EXPECT_EQ(settings().fontFamily, "");
}

TEST(EmulationColorScheme, FollowsTheDesktopIfItIsTheSystems) {
  using enum Config::ColorScheme;
  EXPECT_TRUE(isDark(Dark, false));
  EXPECT_FALSE(isDark(Light, true));
  EXPECT_TRUE(isDark(System, true));
  EXPECT_FALSE(isDark(System, false));
}

}  // namespace
}  // namespace zolt
