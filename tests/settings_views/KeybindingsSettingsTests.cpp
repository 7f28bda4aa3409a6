#include "settings/views/KeybindingsSettings.h"

#include <QFontMetrics>
#include <QLayout>

#include "controls/ControlColors.h"
#include "controls/Switch.h"
#include "settings/views/KeybindingRow.h"
#include "settings_views/PreferencesFixture.h"

namespace zolt {
namespace {

class KeybindingsSettingsTest : public test::PreferencesTest {
 protected:
  void SetUp() override {
    PreferencesTest::SetUp();
    open(test::Keys);
  }
  QList<KeybindingRow*> rows() const {
    QList<KeybindingRow*> found = form().findChildren<KeybindingRow*>();
    std::ranges::sort(found, {}, [](const KeybindingRow* each) { return each->y(); });
    return found;
  }
};

TEST_F(KeybindingsSettingsTest, ListsTheEightMappingsInOrder) {
  const std::pair<const char*, const char16_t*> expected[] = {
      {"Copy", u"\u2318\u21E7C"}, {"Paste", u"\u2318\u21E7V"}, {"Clear Screen", u"\u2318K"},
      {"New Tab", u"\u2318T"},    {"New Window", u"\u2318N"},  {"Close Tab", u"\u2318W"},
      {"Find", u"\u2318F"},       {"Preferences", u"\u2318,"}};
  ASSERT_EQ(rows().size(), 8);
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(rows()[i]->action(), QLatin1String(expected[i].first));
    EXPECT_EQ(rows()[i]->shortcut(), QString::fromUtf16(expected[i].second));
    const QList<QLabel*> labels = rows()[i]->findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 2);
    EXPECT_EQ(labels[0]->text(), rows()[i]->action());
    EXPECT_EQ(labels[1]->text(), rows()[i]->shortcut());
  }
}

TEST_F(KeybindingsSettingsTest, ShowsItsSectionsInOrder) {
  const QStringList texts = test::textsOf(form());
  EXPECT_EQ(texts.first(), QStringLiteral("Key Mappings"));
  EXPECT_EQ(texts.mid(texts.size() - 3), QStringList({QStringLiteral("Modifiers"), QStringLiteral("Option sends Meta"),
                                                      QStringLiteral("Command acts as Meta")}));
}

TEST_F(KeybindingsSettingsTest, SpacesRowsEightPixelsApartWithTheShortcutAtTheTrailingEdge) {
  for (int i = 0; i < 8; ++i) {
    const int above = i == 0 ? -9 : rows()[i - 1]->geometry().bottom();
    EXPECT_EQ(rows()[i]->y() - above - 1, 8);
    const auto* shortcut = rows()[i]->findChild<ShortcutText*>();
    EXPECT_EQ(shortcut->geometry().right(), rows()[i]->width() - 1);
    EXPECT_EQ(rows()[i]->findChild<QLabel*>()->x(), 0);
  }
}

TEST_F(KeybindingsSettingsTest, PaintsAShortcutInAFixedPitchFontOnAFaintRoundedBackground) {
  auto* shortcut = rows()[2]->findChild<ShortcutText*>();
  const QFontMetrics metrics(shortcut->font());
  EXPECT_EQ(metrics.horizontalAdvance(QStringLiteral("iii")), metrics.horizontalAdvance(QStringLiteral("WWW")));
  EXPECT_DOUBLE_EQ(shortcut->font().pointSizeF(), window->font().pointSizeF());
  EXPECT_EQ(shortcut->contentsMargins(), QMargins(8, 2, 8, 2));
  const ControlColors colors(shortcut->palette());
  const QImage image = window->grab().toImage();
  const QPoint corner = shortcut->mapTo(window.get(), QPoint());
  EXPECT_EQ(image.pixelColor(corner), colors.card);
  const QColor faint = mixed(colors.card, colors.secondary, 0.1);
  const QColor painted = image.pixelColor(corner + QPoint(4, 4));
  EXPECT_NEAR(painted.red(), faint.red(), 2);
  EXPECT_NEAR(painted.blue(), faint.blue(), 2);
}

TEST_F(KeybindingsSettingsTest, ShowsAShortcutInTheSecondaryColourAndItsActionInTheTextColour) {
  for (KeybindingRow* row : rows()) {
    form().ensureWidgetVisible(row);
    turn();
    const auto strongest = [&](QWidget* part) {
      const QRect area(part->mapTo(window.get(), QPoint()), part->size());
      return test::strongestContrast(window->grab(area).toImage(), ControlColors(row->palette()).card);
    };
    const ControlColors colors(row->palette());
    const double secondary = contrastRatio(colors.secondary, colors.card);
    EXPECT_GT(strongest(row->findChild<ShortcutText*>()), 2);
    EXPECT_LE(strongest(row->findChild<ShortcutText*>()), secondary + 0.05);
    EXPECT_GT(strongest(row->findChild<QLabel*>()), secondary + 0.5);
  }
}

TEST_F(KeybindingsSettingsTest, ShowsItsFixedSwitchesAndNeverMovesThem) {
  for (const char* name : {"optionSendsMeta", "commandActsAsMeta"}) {
    Switch& control = find<Switch>(name);
    EXPECT_TRUE(control.isEnabled());
    test::click(control);
    control.setFocus(Qt::TabFocusReason);
    test::press(*window, Qt::Key_Space);
    EXPECT_FALSE(control.isChecked());
  }
  EXPECT_TRUE(fileContent().empty());
}

}  // namespace
}  // namespace zolt
