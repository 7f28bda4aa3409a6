#include "settings/views/PreferencesWindow.h"

#include "settings/views/AdvancedSettings.h"
#include "settings/views/AppearanceSettings.h"
#include "settings/views/GeneralSettings.h"
#include "settings/views/KeybindingsSettings.h"
#include "settings/views/PreferencesTabBar.h"
#include "settings_views/PreferencesFixture.h"

namespace zolt {
namespace {

class PreferencesWindowTest : public test::PreferencesTest {
 protected:
  void SetUp() override {
    PreferencesTest::SetUp();
    window = std::make_unique<PreferencesWindow>(config, defaults, shells);
    test::shown(*window);
  }

  TabButton& tab(const char* label) const { return *window->findChild<TabButton*>(QLatin1String(label)); }
  int selected() const { return window->view().selectedTab(); }
};

TEST_F(PreferencesWindowTest, KeepsTheFocusOnTheSelectedTab) {
  tab("General").setFocus();
  QTest::keyClick(&tab("General"), Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(selected(), 1);
  EXPECT_TRUE(tab("Appearance").hasFocus());
  window->findChild<QWidget*>(QStringLiteral("fontSize"))->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_3, Qt::ControlModifier);
  EXPECT_EQ(selected(), 2);
  EXPECT_FALSE(tab("Keys").hasFocus()) << "only if a tab had the focus";
}

TEST_F(PreferencesWindowTest, OpensOnTheGeneralTabAtItsSize) {
  EXPECT_EQ(selected(), 0);
  EXPECT_NE(qobject_cast<GeneralSettings*>(&form()), nullptr);
  EXPECT_EQ(window->size(), QSize(600, 450));
  EXPECT_EQ(window->minimumSize(), window->maximumSize());
  EXPECT_EQ(window->view().size(), QSize(600, 450));
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Preferences"));
  EXPECT_FALSE(window->isModal());
}

TEST_F(PreferencesWindowTest, TheViewKeepsItsMinimumSizeAndItsFormsScroll) {
  EXPECT_EQ(window->view().minimumSize(), QSize(500, 350));
  PreferencesView view({}, config, defaults, shells);
  view.resize(100, 100);
  test::shown(view);
  EXPECT_EQ(view.size(), QSize(500, 350));
}

TEST_F(PreferencesWindowTest, KeepsTheNamesItIsGivenButShowsItsOwn) {
  EXPECT_EQ(window->view().tabs(), QStringList({QStringLiteral("General"), QStringLiteral("Appearance"),
                                                QStringLiteral("Keys"), QStringLiteral("Advanced")}));
  const PreferencesView other({QStringLiteral("Any"), QStringLiteral("thing")}, config, defaults, shells);
  EXPECT_EQ(other.tabs(), QStringList({QStringLiteral("Any"), QStringLiteral("thing")}));
  QStringList labels;
  for (const TabButton* each : other.findChildren<TabButton*>()) {
    labels.append(each->text());
  }
  EXPECT_EQ(labels, window->view().tabs());
}

TEST_F(PreferencesWindowTest, AClickOnATabShowsItsForm) {
  test::click(tab("Appearance"));
  EXPECT_EQ(selected(), 1);
  EXPECT_NE(qobject_cast<AppearanceSettings*>(&form()), nullptr);
  test::click(tab("Keys"));
  EXPECT_EQ(selected(), 2);
  EXPECT_NE(qobject_cast<KeybindingsSettings*>(&form()), nullptr);
  test::click(tab("Advanced"));
  EXPECT_EQ(selected(), 3);
  EXPECT_NE(qobject_cast<AdvancedSettings*>(&form()), nullptr);
  test::click(tab("General"));
  EXPECT_EQ(selected(), 0);
  EXPECT_NE(qobject_cast<GeneralSettings*>(&form()), nullptr);
}

TEST_F(PreferencesWindowTest, TheTabsAreSideBySideWithTheSelectedOneHighlighted) {
  int right = 0;
  for (const char* label : {"General", "Appearance", "Keys", "Advanced"}) {
    EXPECT_GT(tab(label).x(), right);
    right = tab(label).geometry().right();
  }
  window->view().setSelectedTab(2);
  for (const char* label : {"General", "Appearance", "Keys", "Advanced"}) {
    const QColor corner = window->grab().toImage().pixelColor(tab(label).mapTo(window.get(), QPoint(12, 6)));
    EXPECT_EQ(corner != window->palette().color(QPalette::Window), tab(label).isChecked()) << label;
    EXPECT_EQ(tab(label).isChecked(), &tab(label) == &tab("Keys"));
  }
}

TEST_F(PreferencesWindowTest, KeysSelectTabs) {
  const std::tuple<int, Qt::KeyboardModifiers, int> keys[] = {
      {Qt::Key_A, Qt::AltModifier, 1},       {Qt::Key_D, Qt::AltModifier, 3},
      {Qt::Key_K, Qt::AltModifier, 2},       {Qt::Key_G, Qt::AltModifier, 0},
      {Qt::Key_4, Qt::ControlModifier, 3},   {Qt::Key_1, Qt::ControlModifier, 0},
      {Qt::Key_2, Qt::ControlModifier, 1},   {Qt::Key_3, Qt::ControlModifier, 2},
      {Qt::Key_Tab, Qt::ControlModifier, 3}, {Qt::Key_Tab, Qt::ControlModifier, 0},
      {Qt::Key_Tab, Qt::ControlModifier, 1}};
  for (const auto& [key, modifiers, expected] : keys) {
    test::press(*window, key, modifiers);
    EXPECT_TRUE(test::waitFor([&] { return selected() == expected; }, std::chrono::seconds(2))) << key;
  }
  test::press(*window, Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(selected(), 0);
  test::press(*window, Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(selected(), 3);
}

TEST_F(PreferencesWindowTest, ArrowKeysMoveAlongTheTabs) {
  tab("General").setFocus(Qt::TabFocusReason);
  test::press(*window, Qt::Key_Right);
  EXPECT_EQ(selected(), 1);
  EXPECT_TRUE(tab("Appearance").hasFocus());
  test::press(*window, Qt::Key_Left);
  EXPECT_EQ(selected(), 0);
}

TEST_F(PreferencesWindowTest, IgnoresATabIndexOutOfRange) {
  window->view().setSelectedTab(2);
  window->view().setSelectedTab(4);
  window->view().setSelectedTab(-1);
  EXPECT_EQ(selected(), 2);
}

TEST_F(PreferencesWindowTest, EscapeHidesItWithoutChangingItsTab) {
  test::click(tab("Keys"));
  test::press(*window, Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
  test::shown(*window);
  EXPECT_EQ(selected(), 2);
  EXPECT_EQ(PreferencesWindow(config, defaults, shells).view().selectedTab(), 0);
}

TEST_F(PreferencesWindowTest, EscapeHidesItFromEveryControl) {
  for (int index = 0; index < 4; ++index) {
    window->view().setSelectedTab(index);
    for (QWidget* control : form().findChildren<QWidget*>()) {
      if (control->focusPolicy() == Qt::NoFocus || !control->isVisible() || !control->isEnabled()) continue;
      control->setFocus();
      test::press(*window, Qt::Key_Escape);
      EXPECT_FALSE(window->isVisible()) << control->objectName().toStdString();
      test::shown(*window);
    }
  }
}

TEST_F(PreferencesWindowTest, OpensWhereItWasLeft) {
  const QPoint left = window->pos() + QPoint(37, 21);
  window->move(left);
  turn();
  window->close();
  EXPECT_EQ(fileContent()["preferencesPlace"], std::to_string(left.x()) + "," + std::to_string(left.y()));
  window->move(left + QPoint(5, 5));  // as a window manager may do on hiding
  window->show();
  EXPECT_EQ(window->pos(), left);
  PreferencesWindow next(config, defaults, shells);
  next.show();
  EXPECT_EQ(next.pos(), left);
}

TEST_F(PreferencesWindowTest, RemembersItsPositionWhenTheApplicationQuits) {
  const QPoint left = window->pos() + QPoint(12, 34);
  window->move(left);
  turn();
  window.reset();
  EXPECT_EQ(fileContent()["preferencesPlace"], std::to_string(left.x()) + "," + std::to_string(left.y()));
}

TEST_F(PreferencesWindowTest, OpensWhereTheDesktopPutsItIfItsScreenIsGone) {
  const QPoint usual = window->pos();
  for (const char* stored : {"900000,900000", "-900000,0", "anything"}) {
    defaults.setString("preferencesPlace", stored);
    PreferencesWindow next(config, defaults, shells);
    next.show();
    EXPECT_EQ(next.pos(), usual) << stored;
  }
}

TEST_F(PreferencesWindowTest, OpeningAndClosingStoresNothing) {
  for (int index = 0; index < 4; ++index) {
    window->view().setSelectedTab(index);
    turn();
  }
  window->close();
  window.reset();
  EXPECT_TRUE(fileContent().empty());
}

}  // namespace
}  // namespace zolt
