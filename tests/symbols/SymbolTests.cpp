#include "symbols/Symbol.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <algorithm>

namespace zolt {
namespace {

// Every name that some view asks for.
const QStringList kUsed{
    QStringLiteral("bell.fill"),
    QStringLiteral("plus"),
    QStringLiteral("gear"),
    QStringLiteral("paintbrush"),
    QStringLiteral("keyboard"),
    QStringLiteral("wrench.and.screwdriver"),
    QStringLiteral("mug.fill"),
    QStringLiteral("arrow.clockwise"),
    QStringLiteral("magnifyingglass"),
    QStringLiteral("app"),
    QStringLiteral("cube"),
    QStringLiteral("xmark.circle.fill"),
    QStringLiteral("shippingbox"),
    QStringLiteral("terminal"),
    QStringLiteral("macwindow"),
    QStringLiteral("arrow.up.circle"),
    QStringLiteral("arrow.down.circle"),
    QStringLiteral("checkmark.circle.fill"),
    QStringLiteral("info.circle"),
    QStringLiteral("trash"),
    QStringLiteral("exclamationmark.triangle"),
    QStringLiteral("chevron.up"),
    QStringLiteral("chevron.down"),
    QStringLiteral("xmark"),
};

QImage painted(const QIcon& icon, QSize size, double ratio = 1, QIcon::Mode mode = QIcon::Normal) {
  QImage image((QSizeF(size) * ratio).toSize(), QImage::Format_ARGB32);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  icon.paint(&painter, QRect(QPoint(), size), Qt::AlignCenter, mode);
  return image;
}

// Of the pixels that are drawn: how many, the strongest alpha, and whether all are of one colour.
struct Ink {
  int pixels = 0;
  int strongest = 0;
  bool onlyOf(const QColor& color) const { return others == 0 && sample == color.rgb(); }
  QRect bounds;
  QRgb sample = 0;
  int others = 0;
};

Ink inkOf(const QImage& image) {
  Ink ink;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb pixel = image.pixel(x, y);
      if (qAlpha(pixel) == 0) continue;
      ++ink.pixels;
      ink.bounds |= QRect(x, y, 1, 1);
      ink.strongest = std::max(ink.strongest, qAlpha(pixel));
      if (qAlpha(pixel) != 255) continue;  // a translucent one is not exact
      if (ink.sample == 0) ink.sample = pixel;
      if (pixel != ink.sample) ++ink.others;
    }
  }
  return ink;
}

class SymbolTest : public testing::Test {
 protected:
  void TearDown() override { QGuiApplication::setPalette(m_before); }
  static void setTextColor(const QColor& color) {
    QPalette palette = QGuiApplication::palette();
    palette.setColor(QPalette::WindowText, color);
    QGuiApplication::setPalette(palette);
  }

 private:
  QPalette m_before = QGuiApplication::palette();
};

TEST_F(SymbolTest, EveryNameThatIsUsedHasADrawingAndNoDrawingIsUnused) {
  QStringList used = kUsed;
  used.sort();
  EXPECT_EQ(symbolNames(), used);
}

TEST_F(SymbolTest, EveryDrawingFillsItsSquareAndStaysInIt) {
  for (const QString& name : symbolNames()) {
    const Ink ink = inkOf(painted(symbol(name), {96, 96}));
    EXPECT_GE(std::max(ink.bounds.width(), ink.bounds.height()), 66) << name.toStdString();
    EXPECT_TRUE(QRect(2, 2, 92, 92).contains(ink.bounds)) << name.toStdString();
    EXPECT_EQ(ink.strongest, 255) << name.toStdString();
  }
}

TEST_F(SymbolTest, NoTwoDrawingsAreTheSame) {
  const QStringList names = symbolNames();
  for (qsizetype i = 0; i < names.size(); ++i) {
    for (qsizetype j = i + 1; j < names.size(); ++j) {
      EXPECT_NE(painted(symbol(names[i]), {24, 24}), painted(symbol(names[j]), {24, 24}))
          << names[i].toStdString() << " " << names[j].toStdString();
    }
  }
}

TEST_F(SymbolTest, AnUnknownNameGivesANullIcon) {
  EXPECT_TRUE(symbol(QStringLiteral("n.circle")).isNull());
  EXPECT_TRUE(symbol(QString()).isNull());
  EXPECT_FALSE(symbol(QStringLiteral("gear")).isNull());
}

TEST_F(SymbolTest, FollowsTheTextColourOfThePaletteWhenItIsPainted) {
  const QIcon icon = symbol(QStringLiteral("gear"));
  for (const QColor& color : {QColor(200, 30, 40), QColor(10, 220, 90)}) {
    setTextColor(color);
    EXPECT_TRUE(inkOf(painted(icon, {64, 64})).onlyOf(color));
    EXPECT_TRUE(inkOf(icon.pixmap(64, 64).toImage()).onlyOf(color));
  }
}

TEST_F(SymbolTest, KeepsAColourOfItsOwn) {
  const QIcon icon = symbol(QStringLiteral("mug.fill"), QColor(255, 149, 0));
  setTextColor(Qt::blue);
  EXPECT_TRUE(inkOf(painted(icon, {64, 64})).onlyOf(QColor(255, 149, 0)));
}

TEST_F(SymbolTest, IsFainterWhereItIsDisabledAndContrastsWhereItIsSelected) {
  const QIcon icon = symbol(QStringLiteral("app"));
  setTextColor(Qt::red);
  EXPECT_EQ(inkOf(painted(icon, {64, 64}, 1, QIcon::Disabled)).strongest, 102);
  QPalette palette = QGuiApplication::palette();
  palette.setColor(QPalette::HighlightedText, Qt::yellow);
  QGuiApplication::setPalette(palette);
  EXPECT_TRUE(inkOf(painted(icon, {64, 64}, 1, QIcon::Selected)).onlyOf(Qt::yellow));
}

TEST_F(SymbolTest, IsDrawnAnewForEachPixelRatioAndNotMagnified) {
  const QIcon icon = symbol(QStringLiteral("magnifyingglass"));
  for (const double ratio : {1.5, 2.0, 3.0}) {
    const QImage sharp = painted(icon, {24, 24}, ratio);
    QImage expected = painted(icon, sharp.size());
    expected.setDevicePixelRatio(ratio);
    EXPECT_EQ(sharp, expected) << ratio;
    EXPECT_NE(sharp.convertToFormat(QImage::Format_ARGB32), painted(icon, {24, 24}).scaled(sharp.size())) << ratio;
  }
}

TEST_F(SymbolTest, APixmapHasThePixelsOfItsRatio) {
  const QPixmap pixmap = symbol(QStringLiteral("trash")).pixmap(QSize(20, 20), 2.0);
  EXPECT_EQ(pixmap.size(), QSize(40, 40));
  EXPECT_EQ(pixmap.devicePixelRatio(), 2.0);
}

TEST_F(SymbolTest, KeepsItsProportionsInTheMiddleOfAWideRectangle) {
  const QRect bounds = inkOf(painted(symbol(QStringLiteral("info.circle")), {100, 40})).bounds;
  EXPECT_NEAR(bounds.width(), bounds.height(), 1);
  EXPECT_NEAR(bounds.center().x(), 50, 1);
}

}  // namespace
}  // namespace zolt
