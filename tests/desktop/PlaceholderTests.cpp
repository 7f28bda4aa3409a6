#include <gtest/gtest.h>

#include <QApplication>

#include "desktop/DesktopPalette.h"
#include "support/Palettes.h"

namespace zolt {
namespace {

QPalette highContrast() {
  QPalette palette(Qt::black);
  palette.setColor(QPalette::Window, Qt::black);
  palette.setColor(QPalette::Base, Qt::black);
  palette.setColor(QPalette::Text, Qt::white);
  palette.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
  return palette;
}

TEST(Placeholders, GetAColourThatShowsWhereThePaletteHasNone) {
  const auto placeholder = visiblePlaceholder(highContrast());
  ASSERT_TRUE(placeholder);
  EXPECT_GT(placeholder->lightness() * placeholder->alphaF(), 128);
}

TEST(Placeholders, KeepTheColourOfAPaletteWhereItShows) {
  for (const QPalette& palette : {QApplication::palette(), darkPalette(), lightPalette(), test::darkPalette()}) {
    EXPECT_EQ(visiblePlaceholder(palette), std::nullopt);
  }
}

TEST(Placeholders, AreSeenInTheApplicationsFieldsOnceItFollowsTheDesktop) {
  const QPalette before = QApplication::palette();
  QApplication::setPalette(highContrast());
  {
    const DesktopPalette follower;
    EXPECT_EQ(visiblePlaceholder(QApplication::palette()), std::nullopt);
    EXPECT_EQ(QApplication::palette().color(QPalette::Base), QColor(Qt::black)) << "the rest stays";
  }
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace zolt
