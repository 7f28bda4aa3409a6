#include "desktop/SystemScheme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <vector>

#include "desktop/DesktopPalette.h"

namespace zolt {
namespace {

class SystemSchemeTest : public testing::Test {
 protected:
  void SetUp() override { QApplication::setPalette(lightPalette()); }
  void TearDown() override { QApplication::setPalette(m_before); }

 private:
  QPalette m_before = QApplication::palette();
};

TEST_F(SystemSchemeTest, IsThatOfTheApplicationsPalette) {
  EXPECT_FALSE(SystemScheme().isDark());
  QApplication::setPalette(darkPalette());
  EXPECT_TRUE(SystemScheme().isDark());
}

TEST_F(SystemSchemeTest, TellsWhenItChanges) {
  SystemScheme scheme;
  std::vector<bool> told;
  QObject::connect(&scheme, &SystemScheme::changed, &scheme, [&](bool isDark) {
    EXPECT_EQ(scheme.isDark(), isDark);
    told.push_back(isDark);
  });
  QApplication::setPalette(darkPalette());
  QPalette otherDark = darkPalette();
  otherDark.setColor(QPalette::Highlight, Qt::red);
  QApplication::setPalette(otherDark);
  QApplication::setPalette(lightPalette());
  EXPECT_EQ(told, (std::vector<bool>{true, false}));
}

}  // namespace
}  // namespace zolt
