// Controls with text that is larger than usual.
#include <QFontInfo>

#include "controls/BarButton.h"
#include "controls/ControlFixture.h"
#include "controls/SliderRow.h"
#include "controls/TextScale.h"
#include "support/TextSize.h"

namespace zolt {
namespace {

QFont ofPixels(int pixels) {
  QFont font = QApplication::font();
  font.setPixelSize(pixels);
  return font;
}

TEST(TextScale, IsOneForUsualTextAndGrowsWithLargerText) {
  for (const int pixels : {6, 12, 15}) {
    EXPECT_DOUBLE_EQ(textScale(ofPixels(pixels)), 1);
    EXPECT_EQ(scaledToText(250, ofPixels(pixels)), 250);
  }
  EXPECT_DOUBLE_EQ(textScale(ofPixels(30)), 2);
  EXPECT_EQ(scaledToText(250, ofPixels(45)), 750);
}

TEST(LargeText, FitsIntoButtonsWithLetters) {
  for (const double factor : {1.0, 2.0, 3.0}) {
    const test::TextSize size(factor);
    const BarButton button(QString(), QStringLiteral("\u201CW\u201D"), QStringLiteral("Whole word"), nullptr);
    const QSize room = button.sizeHint() - 2 * QSize(KeyboardFocus::margin, KeyboardFocus::margin);
    EXPECT_GE(room.width(), button.fontMetrics().horizontalAdvance(button.text())) << factor;
    EXPECT_GE(room.height(), button.fontMetrics().height()) << factor;
  }
}

TEST(LargeText, FitsBesideSlidersAlsoWhenItGrowsLater) {
  SliderRow row({.partsOfOne = 1, .first = 0, .last = 100, .keyStep = 1},
                [](double) { return QStringLiteral("100%"); });
  const auto& text = *row.findChild<QLabel*>(QStringLiteral("value"));
  EXPECT_EQ(text.width(), 50);
  row.show();
  const int before = text.fontMetrics().height();
  const test::TextSize size(3);
  ASSERT_TRUE(test::waitFor([&] { return text.fontMetrics().height() > before; }));
  EXPECT_GE(text.minimumWidth(), text.fontMetrics().horizontalAdvance(text.text()));
}

}  // namespace
}  // namespace zolt
