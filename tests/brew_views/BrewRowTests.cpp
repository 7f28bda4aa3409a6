#include <gtest/gtest.h>

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QStyleOptionViewItem>

#include "SymbolLikeness.h"
#include "brew/views/BrewListModel.h"
#include "brew/views/BrewPackageRow.h"
#include "brew/views/BrewRowDelegate.h"

namespace zolt {
namespace {

using Type = BrewPackageType;
using test::differenceOf;

constexpr int kWidth = 300;
constexpr int kIconSize = 18;
constexpr int kIconRoom = 38;  // the texts begin to the right of it

BrewPackage package(const char* name, const char* description, const char* version, Type type = Type::Formula) {
  const auto text = [](const char* each) {
    return each == nullptr ? std::nullopt : std::optional(QString::fromUtf8(each));
  };
  return makeBrewPackage(QString::fromUtf8(name), text(description), text(version), type);
}

QImage emptyPicture(const BrewPackage& package) {
  const int height = BrewPackageRow::height(QApplication::font(), package.description.has_value());
  QImage picture(kWidth, height, QImage::Format_RGB32);
  picture.fill(QPalette().color(QPalette::Base));
  return picture;
}

QImage pictureOf(const BrewPackage& package, Type type = Type::Formula) {
  QImage picture = emptyPicture(package);
  QPainter painter(&picture);
  BrewPackageRow{.package = package, .type = type}.paint(painter, picture.rect(), QApplication::font(), QPalette(),
                                                         false);
  return picture;
}

// The square that contains a row's icon.
QImage iconOf(const QImage& row) {
  const QImage room = row.copy(0, 0, kIconRoom, row.height());
  QImage ground(room.size(), room.format());
  ground.fill(room.pixel(0, 0));
  const QPoint middle = differenceOf(room, ground).center();
  return room.copy(QRect(middle.x() - kIconSize / 2 + 1, middle.y() - kIconSize / 2 + 1, kIconSize, kIconSize));
}

TEST(BrewRow, DrawsItsNameAboveItsDescriptionAndItsVersionAtTheRight) {
  const QImage row = pictureOf(package("wget", "Retriever", "1.2.3"));
  const QRect name = differenceOf(row, pictureOf(package("curl", "Retriever", "1.2.3")));
  const QRect description = differenceOf(row, pictureOf(package("wget", "Calculator", "1.2.3")));
  const QRect version = differenceOf(row, pictureOf(package("wget", "Retriever", "4.5.6")));
  ASSERT_FALSE(name.isEmpty());
  ASSERT_FALSE(description.isEmpty());
  ASSERT_FALSE(version.isEmpty());
  EXPECT_LT(name.bottom(), description.top());
  EXPECT_GE(name.left(), kIconRoom);
  EXPECT_LT(name.left(), kIconRoom + 6);
  EXPECT_GE(description.left(), kIconRoom);
  EXPECT_LT(description.left(), kIconRoom + 6);
  EXPECT_GT(version.left(), kWidth - 60);
  EXPECT_LT(std::max(name.right(), description.right()), version.left());
  EXPECT_NEAR(version.center().y(), row.height() / 2, 2) << "centred between both lines";
}

TEST(BrewRow, DrawsOnlyTheNameIfThereIsNoDescription) {
  const QImage row = pictureOf(package("wget", nullptr, nullptr));
  const QRect name = differenceOf(row, pictureOf(package("curl", nullptr, nullptr)));
  ASSERT_FALSE(name.isEmpty());
  EXPECT_NEAR(name.center().y(), row.height() / 2, 4);
  const QImage nameless = pictureOf(package("", nullptr, nullptr));
  EXPECT_TRUE(
      differenceOf(nameless.copy(kIconRoom, 0, kWidth - kIconRoom, row.height()),
                   emptyPicture(package("", nullptr, nullptr)).copy(kIconRoom, 0, kWidth - kIconRoom, row.height()))
          .isEmpty())
      << "and nothing else right of the icon";
}

TEST(BrewRow, CentresTheIconOnTheLettersOfANameAlone) {
  for (const double points : {8.0, 12.0, 24.0}) {
    QFont font = QApplication::font();
    font.setPointSizeF(points);
    const auto drawn = [&](const char* name) {
      const BrewPackage each = package(name, nullptr, nullptr);
      QImage picture(kWidth, BrewPackageRow::height(font, false), QImage::Format_RGB32);
      picture.fill(Qt::white);
      QPainter painter(&picture);
      BrewPackageRow{.package = each, .type = Type::Formula}.paint(painter, picture.rect(), font, QPalette(), false);
      return picture;
    };
    const QImage nameless = drawn("");
    QImage empty(nameless.size(), nameless.format());
    empty.fill(Qt::white);
    const QRect icon = differenceOf(nameless, empty);
    const QRect letters = differenceOf(drawn("HHH"), nameless);
    ASSERT_FALSE(icon.isEmpty() || letters.isEmpty());
    EXPECT_NEAR(icon.top() + icon.bottom(), letters.top() + letters.bottom(), 3) << points;
  }
}

TEST(BrewRow, DrawsNothingAtTheRightWithoutAVersion) {
  const BrewPackage unknown = package("wget", "Retriever", nullptr);
  const QRect right(kWidth / 2, 0, kWidth / 2, emptyPicture(unknown).height());
  EXPECT_EQ(pictureOf(unknown).copy(right), emptyPicture(unknown).copy(right));
  EXPECT_NE(pictureOf(package("wget", "Retriever", "1.2.3")).copy(right), emptyPicture(unknown).copy(right));
}

TEST(BrewRow, DrawsDescriptionAndVersionFainterThanTheName) {
  const auto contrast = [](const QRect& part, const QImage& row) {
    const QColor ink = test::inkColor(row.copy(part.adjusted(-1, -1, 1, 1)));
    return std::abs(qGray(ink.rgb()) - qGray(row.pixel(0, 0)));
  };
  const QImage row = pictureOf(package("wwww", "mmmm", "8888"));
  const QRect name = differenceOf(row, pictureOf(package("", "mmmm", "8888")));
  const QRect description = differenceOf(row, pictureOf(package("wwww", "", "8888")));
  const QRect version = differenceOf(row, pictureOf(package("wwww", "mmmm", "")));
  for (const QRect& part : {name, description, version}) {
    ASSERT_FALSE(part.isEmpty());
  }
  EXPECT_LT(contrast(description, row), contrast(name, row));
  EXPECT_LT(contrast(version, row), contrast(name, row));
}

TEST(BrewRow, IsAsTallAsItsLinesWithTwoPointsOfPaddingAboveAndBelow) {
  for (const double points : {9.0, 14.0, 30.0}) {
    QFont body = QApplication::font();
    body.setPointSizeF(points);
    QFont name = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    name.setPointSizeF(points);
    QFont caption = body;
    caption.setPointSizeF(points * 0.85);
    const int lines = QFontMetrics(name).height() + QFontMetrics(caption).height();
    // One more pixel above and below separates the rows.
    EXPECT_EQ(BrewPackageRow::height(body, true), std::max(lines, kIconSize) + 2 * 2 + 2) << points;
    EXPECT_EQ(BrewPackageRow::height(body, false), std::max(QFontMetrics(name).height(), kIconSize) + 2 * 2 + 2)
        << points;
  }
}

TEST(BrewRow, ShowsACubeInBlueForAFormulaAndAnAppInGreenForACask) {
  const BrewPackage wget = package("wget", "Retriever", "1.2.3");
  const QImage formula = iconOf(pictureOf(wget, Type::Formula));
  EXPECT_EQ(test::symbolMostLike(formula), QStringLiteral("cube"));
  EXPECT_NEAR(test::inkColor(formula).hue(), 220, 25);
  const QImage cask = iconOf(pictureOf(wget, Type::Cask));
  EXPECT_EQ(test::symbolMostLike(cask), QStringLiteral("app"));
  EXPECT_NEAR(test::inkColor(cask).hue(), 125, 25);
}

class BrewSectionRow : public testing::Test {
 protected:
  // Painted as the list paints the only package of a section.
  QImage drawn(const BrewPackage& package, std::optional<Type> type) {
    model.setSections({{.header = QStringLiteral("Header"), .packages = {package}, .type = type}});
    QImage picture = emptyPicture(package);
    QStyleOptionViewItem option;
    option.font = QApplication::font();
    option.rect = picture.rect();
    QPainter painter(&picture);
    delegate.paint(&painter, option, model.index(1, 0));
    return picture;
  }

  BrewListModel model;
  BrewRowDelegate delegate;
};

TEST_F(BrewSectionRow, HasTheIconOfItsSectionWhateverItsOwnType) {
  const BrewPackage cask = package("some-app", nullptr, nullptr, Type::Cask);
  const BrewPackage formula = package("wget", nullptr, nullptr, Type::Formula);
  EXPECT_EQ(drawn(cask, Type::Formula), pictureOf(cask, Type::Formula));
  EXPECT_EQ(drawn(formula, Type::Cask), pictureOf(formula, Type::Cask));
  EXPECT_EQ(model.typeAt(1), Type::Cask);
}

TEST_F(BrewSectionRow, HasTheIconOfItsOwnTypeIfTheSectionHasNone) {
  const BrewPackage cask = package("some-app", nullptr, nullptr, Type::Cask);
  const BrewPackage formula = package("wget", nullptr, nullptr, Type::Formula);
  EXPECT_EQ(drawn(cask, std::nullopt), pictureOf(cask, Type::Cask));
  EXPECT_EQ(drawn(formula, std::nullopt), pictureOf(formula, Type::Formula));
  EXPECT_NE(pictureOf(formula, Type::Formula), pictureOf(formula, Type::Cask));
}

TEST_F(BrewSectionRow, IsAsTallAsItsDrawing) {
  QStyleOptionViewItem option;
  option.font = QApplication::font();
  for (const char* description : {"Retriever", static_cast<const char*>(nullptr)}) {
    drawn(package("wget", description, nullptr), Type::Formula);
    EXPECT_EQ(delegate.sizeHint(option, model.index(1, 0)).height(),
              BrewPackageRow::height(option.font, description != nullptr));
  }
}

}  // namespace
}  // namespace zolt
