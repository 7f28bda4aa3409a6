#include <QLabel>

#include "SidebarFixture.h"
#include "SymbolLikeness.h"
#include "brew/views/SymbolView.h"

namespace zolt {
namespace {

class BrewHeaderTest : public test::SidebarTest {
 protected:
  // A picture of a part with its background.
  QImage seen(const QWidget& widget) {
    return sidebar->grab(QRect(widget.mapTo(sidebar.get(), QPoint()), widget.size())).toImage();
  }
  QRect place(const QWidget& widget) { return {widget.mapTo(sidebar.get(), QPoint()), widget.size()}; }
  QList<SymbolView*> symbolsSeen() {
    QList<SymbolView*> seen;
    for (QWidget* widget : sidebar->findChildren<QWidget*>()) {
      auto* symbol = dynamic_cast<SymbolView*>(widget);
      if (symbol != nullptr && symbol->isVisible()) seen << symbol;
    }
    return seen;
  }
};

TEST_F(BrewHeaderTest, ShowsAnOrangeMugTheTitleAndARefreshButtonAboveTheField) {
  showIdle();
  const QList<SymbolView*> symbols = symbolsSeen();
  ASSERT_EQ(symbols.size(), 1);
  EXPECT_EQ(test::symbolMostLike(seen(*symbols.front())), QStringLiteral("mug.fill"));
  EXPECT_NEAR(test::inkColor(seen(*symbols.front())).hue(), 30, 12);

  const QList<QLabel*> labels = sidebar->findChildren<QLabel*>();
  const auto title = std::ranges::find_if(labels, [&](const QLabel* label) {
    return label->isVisible() && place(*label).bottom() < place(*part<QWidget>("searchPackages")).top();
  });
  ASSERT_NE(title, labels.end());
  EXPECT_EQ((*title)->text(), QStringLiteral("Homebrew"));

  auto* refresh = part<QToolButton>("refresh");
  EXPECT_LT(place(*symbols.front()).right(), place(**title).left());
  EXPECT_LT(place(**title).right(), place(*refresh).left());
  EXPECT_LT(place(*refresh).bottom(), place(*part<QWidget>("searchPackages")).top());
  QImage icon(refresh->iconSize(), QImage::Format_RGB32);
  icon.fill(Qt::white);
  QPainter painter(&icon);
  refresh->icon().paint(&painter, icon.rect());
  painter.end();
  EXPECT_EQ(test::symbolMostLike(icon), QStringLiteral("arrow.clockwise"));
}

TEST_F(BrewHeaderTest, StaysWhileTheSearchShowsAMagnifyingGlass) {
  showIdle();
  choose(2);
  const QList<SymbolView*> symbols = symbolsSeen();
  ASSERT_EQ(symbols.size(), 2);
  auto* placeholder = part<QWidget>("searchPlaceholder");
  for (const SymbolView* symbol : symbols) {
    EXPECT_EQ(test::symbolMostLike(seen(*symbol)),
              placeholder->isAncestorOf(symbol) ? QStringLiteral("magnifyingglass") : QStringLiteral("mug.fill"));
  }
}

TEST_F(BrewHeaderTest, OfASectionIsNotSelectedByAClick) {
  write("list-formula.txt", "wget\n");
  showIdle();
  const auto click = [&](int row) {
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list()->visualRect(list()->model()->index(row, 0)).center());
    QModelIndexList chosen = list()->selectionModel()->selectedIndexes();
    return chosen.isEmpty() ? -1 : chosen.front().row();
  };
  EXPECT_EQ(click(0), -1);
  EXPECT_EQ(click(1), 1);
  EXPECT_NE(click(2), 2);
}

}  // namespace
}  // namespace zolt
