#include <QFontDatabase>
#include <QFontMetrics>
#include <QLabel>
#include <QPainter>

#include "brew/views/BrewPackageRow.h"
#include "brew_views/SidebarFixture.h"
#include "brew_views/SymbolLikeness.h"
#include "controls/ControlColors.h"

namespace zolt {
namespace {

using test::differenceOf;

constexpr int kRowWidth = 600;

QImage rowOf(const char* name, const char* description, const char* version) {
  const BrewPackage package = makeBrewPackage(QString::fromUtf8(name), QString::fromUtf8(description),
                                              QString::fromUtf8(version), BrewPackageType::Formula);
  QImage picture(kRowWidth, BrewPackageRow::height(QApplication::font(), true), QImage::Format_RGB32);
  picture.fill(QPalette().color(QPalette::Base));
  QPainter painter(&picture);
  BrewPackageRow{.package = package, .type = package.type}.paint(painter, picture.rect(), QApplication::font(),
                                                                 QPalette(), false);
  return picture;
}

// Where each text of a row is drawn, found by leaving it out.
struct Ink {
  QImage row;
  QRect name;
  QRect description;
  QRect version;
};

Ink inkOf(const char* text) {
  const QImage row = rowOf(text, text, text);
  return {.row = row,
          .name = differenceOf(row, rowOf("", text, text)),
          .description = differenceOf(row, rowOf(text, "", text)),
          .version = differenceOf(row, rowOf(text, text, " "))};
}

// The darkest colour of dark text on a light background. Antialiased edges are lighter.
int darkestIn(const QImage& picture, const QRect& rect) {
  int darkest = 255;
  for (int y = rect.top(); y <= rect.bottom(); ++y) {
    for (int x = rect.left(); x <= rect.right(); ++x) {
      darkest = std::min(darkest, QColor(picture.pixel(x, y)).lightness());
    }
  }
  return darkest;
}

int secondaryLightness() {
  return ControlColors(QPalette()).secondary.lightness();
}

TEST(BrewTypography, NamesAreMonospacedInBodySize) {
  const QFontMetrics fixed(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  if (fixed.horizontalAdvance(QLatin1Char('i')) != fixed.horizontalAdvance(QLatin1Char('W'))) {
    GTEST_SKIP() << "this system has no fixed-pitch font";
  }
  EXPECT_EQ(inkOf("iiiiiiii|").name.right(), inkOf("WWWWWWWW|").name.right());
  QFont expected = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  expected.setPointSizeF(QApplication::font().pointSizeF());
  EXPECT_NEAR(inkOf("HHHHHHHH").name.height(), QFontMetrics(expected).tightBoundingRect(QStringLiteral("H")).height(),
              1);
}

TEST(BrewTypography, DescriptionsAndVersionsAreCaptions) {
  const Ink ink = inkOf("HHHHHHHHHHHHHHHHHHHH");
  const int body = QFontMetrics(QApplication::font()).horizontalAdvance(QStringLiteral("HHHHHHHHHHHHHHHHHHHH"));
  EXPECT_LT(ink.description.width(), body * 0.95);
  EXPECT_LT(ink.version.width(), body * 0.95);
  EXPECT_NE(inkOf("iiiiiiii|").description.right(), inkOf("WWWWWWWW|").description.right()) << "not monospaced";
}

TEST(BrewTypography, DescriptionsAndVersionsAreLighterThanNames) {
  const Ink ink = inkOf("HHHHHHHH");
  ASSERT_LT(ControlColors(QPalette()).text.lightness(), secondaryLightness());
  EXPECT_LT(darkestIn(ink.row, ink.name), secondaryLightness());
  EXPECT_GE(darkestIn(ink.row, ink.description), secondaryLightness() - 1);
  EXPECT_GE(darkestIn(ink.row, ink.version), secondaryLightness() - 1);
}

class BrewSidebarTypography : public test::SidebarTest {
 protected:
  const QLabel* labelOf(const QString& text) {
    const QList<QLabel*> labels = sidebar->findChildren<QLabel*>();
    const auto found = std::ranges::find_if(labels, [&](const QLabel* label) { return label->text() == text; });
    return found == labels.end() ? nullptr : *found;
  }
  QImage seen(const QWidget& widget) {
    return sidebar->grab(QRect(widget.mapTo(sidebar.get(), QPoint()), widget.size())).toImage();
  }
};

TEST_F(BrewSidebarTypography, TheTitleIsAHeadline) {
  showIdle();
  const QLabel* title = labelOf(QStringLiteral("Homebrew"));
  ASSERT_NE(title, nullptr);
  EXPECT_GE(title->font().weight(), QFont::DemiBold);
  EXPECT_GT(title->font().pointSizeF(), sidebar->font().pointSizeF());
}

TEST_F(BrewSidebarTypography, TheStatusIsACaptionInTheSecondaryColour) {
  showIdle();
  const auto* status = part<QLabel>("status");
  EXPECT_LT(status->font().pointSizeF(), sidebar->font().pointSizeF());
  EXPECT_EQ(status->font().weight(), QFont::Normal);
  const QImage picture = seen(*status);
  EXPECT_GE(darkestIn(picture, picture.rect()), secondaryLightness() - 1);
  EXPECT_LT(darkestIn(picture, picture.rect()), QPalette().color(QPalette::AlternateBase).lightness())
      << "there is a text";
}

}  // namespace
}  // namespace zolt
