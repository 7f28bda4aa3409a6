#include <QLabel>

#include "SidebarFixture.h"

namespace zolt {
namespace {

using Calls = std::vector<std::string>;

class BrewOutdatedTest : public test::SidebarTest {
 protected:
  // The manager never fills this list; the sidebar's display of one is tested all the same.
  void publishOutdated(std::vector<BrewPackage> packages) {
    Q_EMIT manager->objectWillChange();
    const_cast<std::vector<BrewPackage>&>(manager->outdatedPackages()) = std::move(packages);
  }
  void showOutdated() {
    showIdle();
    publishOutdated({makeBrewPackage(QStringLiteral("wget"), std::nullopt, std::nullopt, BrewPackageType::Formula),
                     makeBrewPackage(QStringLiteral("some-app"), std::nullopt, std::nullopt, BrewPackageType::Cask)});
    choose(1);
    ASSERT_TRUE(waitForRows(words({"Updates Available", "wget", "some-app"})));
  }
  void pick(int row, int entry) {
    QMenu* menu = openMenu(row);
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(textsOf(*menu), words({"Upgrade", "Upgrade All"}));
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(menu->actions().at(entry)).center());
  }
  // The calls, once the refresh that follows them has finished.
  Calls settledCalls() {
    EXPECT_TRUE(test::waitFor([&] { return calls().size() >= 4; }));
    EXPECT_TRUE(waitUntilIdle());
    return calls();
  }
};

TEST_F(BrewOutdatedTest, UpgradesAPackageByItsNameWhateverItsType) {
  showOutdated();
  pick(2, 0);
  EXPECT_EQ(settledCalls(),
            (Calls{"[list][--cask]", "[list][--formula]", "[outdated][--json]", "[upgrade][some-app]"}));
}

TEST_F(BrewOutdatedTest, UpgradesEverythingFromAnyRow) {
  showOutdated();
  pick(1, 1);
  EXPECT_EQ(manager->status(), QStringLiteral("Upgrading all packages..."));
  EXPECT_EQ(settledCalls(), (Calls{"[list][--cask]", "[list][--formula]", "[outdated][--json]", "[upgrade]"}));
}

TEST_F(BrewOutdatedTest, HasNoMenuOnItsHeader) {
  showOutdated();
  EXPECT_EQ(openMenu(0), nullptr);
}

}  // namespace
}  // namespace zolt
