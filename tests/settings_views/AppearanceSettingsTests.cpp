#include "settings/views/AppearanceSettings.h"

#include <cmath>

#include "controls/ControlColors.h"
#include "controls/SecondaryLabel.h"
#include "controls/SegmentedPicker.h"
#include "controls/SliderRow.h"
#include "controls/Switch.h"
#include "settings_views/PreferencesFixture.h"

namespace zolt {
namespace {

class AppearanceSettingsTest : public test::PreferencesTest {
 protected:
  void SetUp() override {
    PreferencesTest::SetUp();
    config.setupDefaults();
    open(test::Appearance);
    turn();
    ASSERT_EQ(saves, 0);
  }

  Slider& slider(const char* name) const { return find<SliderRow>(name).slider(); }
  QString text(const char* name) const { return find<SliderRow>(name).valueText(); }
  void dragTo(const char* name, double share) {
    Slider& each = slider(name);
    const QPoint from = each.mapTo(window.get(), each.knobCenter().toPoint());
    const QPoint to = each.mapTo(window.get(), QPoint(static_cast<int>(share * each.width()), each.height() / 2));
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, from);
    QTest::mouseMove(window->windowHandle(), (from + to) / 2);
    QTest::mouseMove(window->windowHandle(), to);
    QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, to);
  }
  void key(const char* name, Qt::Key which) {
    slider(name).setFocus(Qt::TabFocusReason);
    test::press(*window, which);
  }
};

TEST_F(AppearanceSettingsTest, ShowsItsSectionsAndRowsInOrder) {
  EXPECT_EQ(test::textsOf(form()).join(QLatin1Char('|')),
            QStringLiteral("Theme|Color Scheme|Font|Font Family|SF Mono|Size|Line Spacing|Cursor|Style|Blink "
                           "cursor|Window|Opacity|Blur background"));
}

TEST_F(AppearanceSettingsTest, ShowsTheStoredValues) {
  EXPECT_EQ(find<SegmentedPicker>("theme").currentIndex(), 0);
  EXPECT_EQ(find<SecondaryLabel>("fontFamily").text(), QStringLiteral("SF Mono"));
  EXPECT_EQ(text("fontSize"), QStringLiteral("14pt"));
  EXPECT_EQ(text("lineSpacing"), QStringLiteral("1.2"));
  EXPECT_EQ(find<SegmentedPicker>("cursorStyle").currentIndex(), 0);
  EXPECT_FALSE(find<Switch>("cursorBlink").isChecked());
  EXPECT_EQ(text("opacity"), QStringLiteral("100%"));
  EXPECT_FALSE(find<Switch>("blurBackground").isChecked());
}

TEST_F(AppearanceSettingsTest, ShowsTheFamilyAndTheValuesInTheSecondaryColour) {
  std::vector<QWidget*> texts{&find<QLabel>("fontFamily")};
  for (const char* name : {"fontSize", "lineSpacing", "opacity"}) {
    texts.push_back(find<SliderRow>(name).findChild<QLabel*>(QStringLiteral("value")));
  }
  for (QWidget* text : texts) {
    const ControlColors colors(text->palette());
    form().ensureWidgetVisible(text);
    turn();
    const QImage image = window->grab(QRect(text->mapTo(window.get(), QPoint()), text->size())).toImage();
    const double strongest = test::strongestContrast(image, colors.card);
    EXPECT_GT(strongest, 2) << text->objectName().toStdString();
    EXPECT_LE(strongest, contrastRatio(colors.secondary, colors.card) + 0.05) << text->objectName().toStdString();
  }
}

TEST_F(AppearanceSettingsTest, HasItsSegmentsInOrder) {
  const auto labels = [&](const char* name) {
    QStringList texts;
    for (int i = 0; i < 3; ++i) {
      texts.append(find<SegmentedPicker>(name).segment(i)->text());
    }
    return texts.join(QLatin1Char(' '));
  };
  EXPECT_EQ(labels("theme"), QStringLiteral("Dark Light System"));
  EXPECT_EQ(labels("cursorStyle"), QStringLiteral("Block Line Bar"));
}

TEST_F(AppearanceSettingsTest, PicksAndSavesTheTheme) {
  const std::pair<int, const char*> picks[] = {{1, "Light"}, {2, "System"}, {0, "Dark"}};
  int expected = 0;
  for (const auto& [index, rawValue] : picks) {
    test::click(*find<SegmentedPicker>("theme").segment(index));
    turn();
    EXPECT_EQ(zolt::rawValue(config.theme), rawValue);
    EXPECT_EQ(fileContent()["theme"], rawValue);
    EXPECT_EQ(saves, ++expected);
  }
}

TEST_F(AppearanceSettingsTest, TheFontSizeRangesFromEightToSeventyTwoAndIsSaved) {
  dragTo("fontSize", 1.2);
  turn();
  EXPECT_EQ(config.fontSize, 72.0);
  EXPECT_EQ(text("fontSize"), QStringLiteral("72pt"));
  EXPECT_EQ(fileContent()["fontSize"], "72");
  dragTo("fontSize", -0.2);
  turn();
  EXPECT_EQ(config.fontSize, 8.0);
  EXPECT_EQ(text("fontSize"), QStringLiteral("8pt"));
  EXPECT_EQ(fileContent()["fontSize"], "8");
  key("fontSize", Qt::Key_Right);
  EXPECT_EQ(config.fontSize, 9.0);
}

TEST_F(AppearanceSettingsTest, TheLineSpacingHasElevenStepsAndIsNeverSaved) {
  key("lineSpacing", Qt::Key_Home);
  const char* texts[] = {"1.0", "1.1", "1.2", "1.3", "1.4", "1.5", "1.6", "1.7", "1.8", "1.9", "2.0"};
  for (const char* each : texts) {
    EXPECT_EQ(text("lineSpacing"), QLatin1String(each));
    EXPECT_EQ(config.lineSpacing, std::stod(each));
    key("lineSpacing", Qt::Key_Right);
  }
  EXPECT_EQ(config.lineSpacing, 2.0);
  turn();
  EXPECT_EQ(saves, 0);
  EXPECT_TRUE(fileContent().empty());
}

TEST_F(AppearanceSettingsTest, TheOpacityIsContinuousFromThirtyToOneHundredPercent) {
  dragTo("opacity", -0.2);
  turn();
  EXPECT_EQ(config.opacity, 0.3);
  EXPECT_EQ(text("opacity"), QStringLiteral("30%"));
  EXPECT_EQ(fileContent()["opacity"], "0.3");
  double before = config.opacity;
  for (int pixel = 0; pixel < 5; ++pixel) {  // every pixel is a different value
    dragTo("opacity", 0.3 + pixel / 260.0);
    EXPECT_GT(config.opacity, before);
    EXPECT_NE(config.opacity * 100, std::floor(config.opacity * 100));
    before = config.opacity;
  }
  dragTo("opacity", 1.2);
  turn();
  EXPECT_EQ(config.opacity, 1.0);
  EXPECT_EQ(text("opacity"), QStringLiteral("100%"));
  EXPECT_EQ(fileContent()["opacity"], "1");
}

TEST_F(AppearanceSettingsTest, KeysMoveTheOpacityByOnePercent) {
  key("opacity", Qt::Key_Left);
  EXPECT_EQ(config.opacity, 0.99);
  key("opacity", Qt::Key_Left);
  EXPECT_EQ(config.opacity, 0.98);
  turn();
  EXPECT_EQ(fileContent()["opacity"], "0.98");
}

TEST_F(AppearanceSettingsTest, SwitchesAndSavesTheBlinking) {
  test::click(find<Switch>("cursorBlink"));
  EXPECT_TRUE(config.cursorBlink);
  turn();
  EXPECT_EQ(saves, 1);
  EXPECT_EQ(fileContent()["cursorBlink"], "true");
}

TEST_F(AppearanceSettingsTest, TheBlurIsStoredWithTheNextSave) {
  test::click(find<Switch>("blurBackground"));
  EXPECT_TRUE(config.blurBackground);
  turn();
  EXPECT_TRUE(fileContent().empty());
  key("fontSize", Qt::Key_Right);
  turn();
  EXPECT_EQ(fileContent()["blurBackground"], "true");
}

TEST_F(AppearanceSettingsTest, TheCursorStyleIsStoredWithTheNextSaveEvenAfterTheWindowIsGone) {
  test::click(*find<SegmentedPicker>("cursorStyle").segment(2));
  EXPECT_EQ(config.cursorStyle, Config::CursorStyle::Bar);
  turn();
  window.reset();
  EXPECT_TRUE(fileContent().empty());
  open(test::Appearance);
  EXPECT_EQ(find<SegmentedPicker>("cursorStyle").currentIndex(), 2);
  dragTo("opacity", 0.5);
  turn();
  EXPECT_EQ(fileContent()["cursorStyle"], "Bar");
  EXPECT_NE(fileContent()["opacity"], "1");
}

TEST_F(AppearanceSettingsTest, ASaveWritesEveryKeyExceptTheLineSpacing) {
  test::click(find<Switch>("cursorBlink"));
  turn();
  QStringList keys;
  for (const auto& [each, value] : fileContent()) {
    keys.append(QString::fromStdString(each));
  }
  EXPECT_EQ(keys.join(QLatin1Char(' ')),
            QStringLiteral("blurBackground cursorBlink cursorStyle fontFamily fontSize opacity scrollbackLines theme"));
}

TEST_F(AppearanceSettingsTest, FollowsChangesOfTheStoreFromAnywhere) {
  config.theme = Config::ColorScheme::System;
  config.fontFamily = "Some Mono";
  config.fontSize = 20;
  config.lineSpacing = 1.7;
  config.cursorStyle = Config::CursorStyle::Line;
  config.cursorBlink = true;
  config.opacity = 0.5;
  config.blurBackground = true;
  turn();
  EXPECT_EQ(find<SegmentedPicker>("theme").currentIndex(), 2);
  EXPECT_EQ(find<SecondaryLabel>("fontFamily").text(), QStringLiteral("Some Mono"));
  EXPECT_EQ(text("fontSize"), QStringLiteral("20pt"));
  EXPECT_EQ(slider("fontSize").value(), 20);
  EXPECT_EQ(text("lineSpacing"), QStringLiteral("1.7"));
  EXPECT_EQ(find<SegmentedPicker>("cursorStyle").currentIndex(), 1);
  EXPECT_TRUE(find<Switch>("cursorBlink").isChecked());
  EXPECT_EQ(text("opacity"), QStringLiteral("50%"));
  EXPECT_TRUE(find<Switch>("blurBackground").isChecked());
}

TEST_F(AppearanceSettingsTest, SavesOncePerTurnOfTheEventLoop) {
  config.theme = Config::ColorScheme::Light;
  config.fontSize = 20;
  config.cursorBlink = true;
  config.opacity = 0.5;
  EXPECT_EQ(saves, 0);
  turn();
  EXPECT_EQ(saves, 1);
}

TEST_F(AppearanceSettingsTest, SavesWhenAnySingleWatchedValueChanges) {
  const std::vector<std::function<void()>> changes{[&] { config.theme = Config::ColorScheme::Light; },
                                                   [&] { config.fontSize = 20; }, [&] { config.cursorBlink = true; },
                                                   [&] { config.opacity = 0.5; }};
  for (std::size_t i = 0; i < changes.size(); ++i) {
    changes[i]();
    turn();
    EXPECT_EQ(saves, static_cast<int>(i) + 1);
  }
}

TEST_F(AppearanceSettingsTest, DoesNotSaveForOtherOrEqualValues) {
  config.fontFamily = "Other";
  config.lineSpacing = 1.5;
  config.cursorStyle = Config::CursorStyle::Bar;
  config.scrollbackLines = 5;
  config.blurBackground = true;
  config.fontSize = 14.0;
  config.theme = Config::ColorScheme::Dark;
  turn();
  config.opacity = 0.4;  // and back, before anything reacts
  config.opacity = 1.0;
  turn();
  EXPECT_EQ(saves, 0);
}

TEST_F(AppearanceSettingsTest, ShowsOutOfRangeAndIntermediateValuesWithoutChangingThem) {
  struct Case {
    double fontSize;
    const char* shown;
  };
  for (const auto& [size, shown] : {Case{13.5, "13pt"}, Case{3.5, "3pt"}, Case{500, "500pt"}, Case{-7.9, "-7pt"},
                                    Case{1e300, "9223372036854775807pt"}}) {
    config.fontSize = size;
    turn();
    EXPECT_EQ(text("fontSize"), QLatin1String(shown));
    EXPECT_EQ(config.fontSize, size);
  }
  config.opacity = 0.1;
  config.lineSpacing = 3.14;
  turn();
  EXPECT_EQ(text("opacity"), QStringLiteral("10%"));
  EXPECT_EQ(slider("opacity").value(), slider("opacity").minimum());
  EXPECT_EQ(text("lineSpacing"), QStringLiteral("3.1"));
  EXPECT_EQ(slider("lineSpacing").value(), slider("lineSpacing").maximum());
  EXPECT_EQ(config.opacity, 0.1);
  EXPECT_EQ(config.lineSpacing, 3.14);
}

TEST_F(AppearanceSettingsTest, TwoWindowsShowTheSameAndEachSavesWhatItSees) {
  PreferencesWindow other(config, defaults, shells);
  test::click(*find<SegmentedPicker>("theme").segment(1));
  turn();
  EXPECT_EQ(other.findChild<SegmentedPicker*>(QStringLiteral("theme"))->currentIndex(), 1);
  EXPECT_EQ(saves, 2);
}

TEST_F(AppearanceSettingsTest, SavesEvenWhileAnotherTabOrNoneIsShown) {
  window->view().setSelectedTab(test::Keys);
  config.opacity = 0.7;
  turn();
  EXPECT_EQ(saves, 1);
  window->close();
  config.opacity = 0.6;
  turn();
  EXPECT_EQ(saves, 2);
}

}  // namespace
}  // namespace zolt
