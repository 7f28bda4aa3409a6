#include "settings/Config.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <vector>

#include "support/ProcessFacts.h"

namespace zolt {
namespace {

using ColorScheme = Config::ColorScheme;
using CursorStyle = Config::CursorStyle;

class ConfigTest : public testing::Test {
 protected:
  QTemporaryDir folder;
  std::string file = folder.filePath(QStringLiteral("zolt.ini")).toStdString();
  UserDefaults defaults{file};
  Config config{defaults};
};

TEST_F(ConfigTest, HasItsInitialValuesBeforeAnythingIsLoaded) {
  defaults.setString("theme", "Light");
  EXPECT_EQ(config.theme, ColorScheme::Dark);
  EXPECT_EQ(config.fontSize, 14.0);
  EXPECT_EQ(config.fontFamily.value(), "SF Mono");
  EXPECT_EQ(config.lineSpacing, 1.2);
  EXPECT_EQ(config.cursorStyle, CursorStyle::Block);
  EXPECT_TRUE(config.cursorBlink);
  EXPECT_EQ(config.scrollbackLines, 10000);
  EXPECT_EQ(config.opacity, 1.0);
  EXPECT_FALSE(config.blurBackground);
}

TEST_F(ConfigTest, LoadsAnEmptyDatabaseWithoutABlinkingCursor) {
  config.setupDefaults();
  EXPECT_EQ(config.theme, ColorScheme::Dark);
  EXPECT_EQ(config.fontSize, 14.0);
  EXPECT_EQ(config.fontFamily.value(), "SF Mono");
  EXPECT_EQ(config.lineSpacing, 1.2);
  EXPECT_EQ(config.cursorStyle, CursorStyle::Block);
  EXPECT_FALSE(config.cursorBlink);
  EXPECT_EQ(config.scrollbackLines, 10000);
  EXPECT_EQ(config.opacity, 1.0);
  EXPECT_FALSE(config.blurBackground);
}

TEST_F(ConfigTest, LoadsAThemeOnlyByItsExactName) {
  defaults.setString("theme", "Light");
  config.setupDefaults();
  EXPECT_EQ(config.theme, ColorScheme::Light);
  for (const char* unknown : {"light", "Blue", "Dark ", "", "1"}) {
    defaults.setString("theme", unknown);
    config.setupDefaults();
    EXPECT_EQ(config.theme, ColorScheme::Light) << "unchanged by " << unknown;
  }
  defaults.removeObject("theme");
  config.setupDefaults();
  EXPECT_EQ(config.theme, ColorScheme::Light) << "unchanged by none";
}

TEST_F(ConfigTest, LoadsACursorStyleOnlyByItsExactName) {
  defaults.setString("cursorStyle", "Bar");
  config.setupDefaults();
  EXPECT_EQ(config.cursorStyle, CursorStyle::Bar);
  for (const char* unknown : {"bar", "Underline", ""}) {
    defaults.setString("cursorStyle", unknown);
    config.setupDefaults();
    EXPECT_EQ(config.cursorStyle, CursorStyle::Bar);
  }
}

TEST_F(ConfigTest, LoadsAnyFontSizeButZero) {
  const std::vector<std::pair<const char*, double>> sizes{{"0", 14.0},  {"big", 14.0}, {"3.5", 3.5},
                                                          {"-2", -2.0}, {"1e6", 1e6},  {"", 14.0}};
  for (const auto& [stored, loaded] : sizes) {
    defaults.setString("fontSize", stored);
    config.setupDefaults();
    EXPECT_EQ(config.fontSize, loaded) << stored;
  }
}

TEST_F(ConfigTest, LoadsAnEmptyFontFamilyAsItIs) {
  defaults.setString("fontFamily", "");
  config.setupDefaults();
  EXPECT_EQ(config.fontFamily.value(), "");
  defaults.removeObject("fontFamily");
  config.setupDefaults();
  EXPECT_EQ(config.fontFamily.value(), "SF Mono");
}

TEST_F(ConfigTest, LoadsFlagsAsTheyAreStored) {
  defaults.setBool("cursorBlink", true);
  defaults.setString("blurBackground", "YES");
  config.setupDefaults();
  EXPECT_TRUE(config.cursorBlink);
  EXPECT_TRUE(config.blurBackground);
  defaults.setBool("cursorBlink", false);
  defaults.removeObject("blurBackground");
  config.setupDefaults();
  EXPECT_FALSE(config.cursorBlink);
  EXPECT_FALSE(config.blurBackground);
}

TEST_F(ConfigTest, LoadsAnyNumberOfScrollbackLinesButZero) {
  const std::vector<std::pair<const char*, std::int64_t>> lines{{"0", 10000}, {"-5", -5}, {"7", 7}, {"many", 10000}};
  for (const auto& [stored, loaded] : lines) {
    defaults.setString("scrollbackLines", stored);
    config.setupDefaults();
    EXPECT_EQ(config.scrollbackLines, loaded) << stored;
  }
}

TEST_F(ConfigTest, LoadsAnyOpacityButZero) {
  const std::vector<std::pair<const char*, double>> opacities{{"0.0", 1.0}, {"0.1", 0.1}, {"7", 7.0}, {"-1", -1.0}};
  for (const auto& [stored, loaded] : opacities) {
    defaults.setString("opacity", stored);
    config.setupDefaults();
    EXPECT_EQ(config.opacity, loaded) << stored;
  }
}

TEST_F(ConfigTest, LoadsInOrderAndAnnouncesEachAssignmentBeforeIt) {
  defaults.setString("theme", "System");
  defaults.setString("cursorStyle", "Line");
  std::vector<std::string> seen;
  QObject::connect(&config, &Config::objectWillChange, &config, [&] {
    seen.push_back(std::string(rawValue(config.theme)) + " " + std::to_string(static_cast<int>(config.fontSize)) + " " +
                   std::string(rawValue(config.cursorStyle)) + " " + (config.cursorBlink ? "blinks" : "steady") + " " +
                   std::to_string(config.scrollbackLines));
  });
  config.setupDefaults();
  EXPECT_EQ(seen, (std::vector<std::string>{
                      "Dark 14 Block blinks 10000",    // before the theme
                      "System 14 Block blinks 10000",  // before the size that is stored: none
                      "System 0 Block blinks 10000",   // before the size in its stead
                      "System 14 Block blinks 10000",  // before the family
                      "System 14 Block blinks 10000",  // before the cursor's style
                      "System 14 Line blinks 10000",   // before the blinking
                      "System 14 Line steady 10000",   // before the lines that are stored: none
                      "System 14 Line steady 0",       // before the lines in their stead
                      "System 14 Line steady 10000",   // before the opacity that is stored: none
                      "System 14 Line steady 10000",   // before the opacity in its stead
                      "System 14 Line steady 10000",   // before the blur
                  }));
}

TEST_F(ConfigTest, SavesEveryValueInOrderButTheLineSpacing) {
  config.theme = ColorScheme::System;
  config.fontSize = 15.5;
  config.lineSpacing = 1.7;
  config.cursorStyle = CursorStyle::Line;
  config.scrollbackLines = -5;
  config.opacity = 0.25;
  std::vector<std::string> keys;
  QObject::connect(&defaults, &UserDefaults::changed, &defaults, [&](const std::string& key) { keys.push_back(key); });
  config.save();
  EXPECT_EQ(keys, (std::vector<std::string>{"theme", "fontSize", "fontFamily", "cursorStyle", "cursorBlink",
                                            "scrollbackLines", "opacity", "blurBackground"}));
  defaults.synchronize();
  EXPECT_EQ(test::fileContent(file),
            "[General]\nblurBackground=false\ncursorBlink=true\ncursorStyle=Line\nfontFamily=SF Mono\nfontSize=15.5\n"
            "opacity=0.25\nscrollbackLines=-5\ntheme=System\n");
}

TEST_F(ConfigTest, SavesNothingByItself) {
  config.lineSpacing = 1.7;
  config.cursorStyle = CursorStyle::Bar;
  defaults.synchronize();
  EXPECT_EQ(defaults.stringForKey("cursorStyle"), std::nullopt);
  config.opacity = 0.5;
  config.save();
  EXPECT_EQ(defaults.stringForKey("cursorStyle"), "Bar");
  EXPECT_EQ(defaults.stringForKey("lineSpacing"), std::nullopt);
}

TEST_F(ConfigTest, StartsEachRunWithTheSameLineSpacing) {
  config.lineSpacing = 1.7;
  config.save();
  Config next(defaults);
  next.setupDefaults();
  EXPECT_EQ(next.lineSpacing, 1.2);
}

TEST_F(ConfigTest, HasOneRowForEachSettingInTheirOrder) {
  std::vector<std::string> keys;
  std::vector<int> positions;
  for (const Config::Setting& each : config.settings()) {
    std::visit(
        [&](const auto* setting) {
          keys.emplace_back(setting->row().key);
          positions.push_back(setting->row().resetPosition);
        },
        each);
  }
  EXPECT_EQ(keys, (std::vector<std::string>{"theme", "fontSize", "fontFamily", "lineSpacing", "cursorStyle",
                                            "cursorBlink", "scrollbackLines", "opacity", "blurBackground"}));
  EXPECT_EQ(positions, (std::vector<int>{3, 1, 2, 0, 4, 5, 6, 7, 8}));
}

TEST_F(ConfigTest, AssignsItsDefaultsInTheirOrderAndSavesNothing) {
  config.theme = ColorScheme::Light;
  config.fontSize = 9;
  config.fontFamily = "Other";
  config.lineSpacing = 1.7;
  config.cursorBlink = false;
  std::vector<std::string> seen;
  QObject::connect(&config, &Config::objectWillChange, &config, [&] {
    seen.push_back(std::string(rawValue(config.theme)) + " " + std::to_string(static_cast<int>(config.fontSize)) + " " +
                   config.fontFamily.value());
  });
  config.assignDefaults();
  ASSERT_EQ(seen.size(), 8U);
  seen.resize(4);
  EXPECT_EQ(seen, (std::vector<std::string>{"Light 9 Other", "Light 14 Other", "Light 14 SF Mono", "Dark 14 SF Mono"}));
  EXPECT_TRUE(config.cursorBlink);
  EXPECT_EQ(config.lineSpacing, 1.7);
  defaults.synchronize();
  EXPECT_EQ(defaults.stringForKey("theme"), std::nullopt);
}

TEST_F(ConfigTest, LeavesKeysOfOthersAlone) {
  defaults.setString("startupShell", "/bin/zsh");
  defaults.setString("selectedTheme", "Other");
  config.theme = ColorScheme::Light;
  config.save();
  EXPECT_EQ(defaults.stringForKey("startupShell"), "/bin/zsh");
  EXPECT_EQ(defaults.stringForKey("selectedTheme"), "Other");
}

TEST(ConfigCases, AreOfferedInTheirOrderAndNamedExactly) {
  EXPECT_EQ(rawValue(Config::colorSchemes[0].first), "Dark");
  EXPECT_EQ(rawValue(Config::colorSchemes[1].first), "Light");
  EXPECT_EQ(rawValue(Config::colorSchemes[2].first), "System");
  EXPECT_EQ(rawValue(Config::cursorStyles[0].first), "Block");
  EXPECT_EQ(rawValue(Config::cursorStyles[1].first), "Line");
  EXPECT_EQ(rawValue(Config::cursorStyles[2].first), "Bar");
  EXPECT_EQ(colorSchemeOf("Dark"), ColorScheme::Dark);
  EXPECT_EQ(colorSchemeOf("dark"), std::nullopt);
  EXPECT_EQ(colorSchemeOf("Dark "), std::nullopt);
  EXPECT_EQ(cursorStyleOf("Block"), CursorStyle::Block);
  EXPECT_EQ(cursorStyleOf("BLOCK"), std::nullopt);
}

TEST(ConfigShared, IsOneObject) {
  EXPECT_EQ(&Config::shared(), &Config::shared());
}

}  // namespace
}  // namespace zolt
