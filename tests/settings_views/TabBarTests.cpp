#include <QSignalSpy>

#include "brew_views/SymbolLikeness.h"
#include "settings/views/PreferencesTabBar.h"
#include "settings_views/PreferencesFixture.h"

namespace zolt {
namespace {

TEST(TabButtons, AreNamedPageTabsForScreenReaders) {
  PreferencesTabBar bar;
  TabButton* first = bar.addTab(QStringLiteral("First"), QStringLiteral("gear"), {});
  TabButton* second = bar.addTab(QStringLiteral("Second"), QStringLiteral("app"), {});
  bar.setCurrentIndex(0);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&bar)->role(), QAccessible::PageTabList);
  QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(second);
  EXPECT_EQ(reader->role(), QAccessible::PageTab);
  EXPECT_EQ(reader->text(QAccessible::Name), QStringLiteral("Second"));
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(first)->state().selected);
  EXPECT_FALSE(reader->state().selected);
  QSignalSpy selected(&bar, &PreferencesTabBar::selected);
  test::act(*second, QAccessibleActionInterface::pressAction());
  ASSERT_EQ(selected.count(), 1);
  EXPECT_EQ(selected.at(0).at(0), 1);
}

TEST(TabButtons, ShowTheirOwnSymbols) {
  const std::pair<const char*, const char*> symbols[] = {
      {"General", "gear"}, {"Appearance", "paintbrush"}, {"Keys", "keyboard"}, {"Advanced", "wrench.and.screwdriver"}};
  test::PreferencesData data;
  PreferencesView view({}, data.config, data.defaults, data.shells);
  view.resize(600, 450);
  view.setSelectedTab(0);
  for (const auto& [label, name] : symbols) {
    TabButton& tab = *view.findChild<TabButton*>(QLatin1String(label));
    tab.resize(tab.sizeHint());
    const int top = KeyboardFocus::margin + 6;
    const QImage image = tab.grab(QRect((tab.width() - 24) / 2, top, 24, 24)).toImage();
    EXPECT_EQ(test::symbolMostLike(image), QLatin1String(name)) << label;
  }
}

}  // namespace
}  // namespace zolt
