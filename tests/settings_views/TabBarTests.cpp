#include <QSignalSpy>

#include "controls/ControlFixture.h"
#include "settings/views/PreferencesTabBar.h"

namespace zolt {
namespace {

TEST(TabButtons, AreNamedPageTabsToAScreenReader) {
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

}  // namespace
}  // namespace zolt
