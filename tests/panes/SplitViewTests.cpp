// Widgets as the panes of a split.
#include "panes/SplitView.h"

#include <gtest/gtest.h>

#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <memory>
#include <vector>

#include "support/WaitFor.h"

namespace zolt {
namespace {

class SplitViewTest : public testing::Test {
 protected:
  void SetUp() override {
    view.resize(805, 605);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view, test::kPatience.count()));
  }
  // Panes that never came into the view, or were taken out of it.
  void TearDown() override {
    for (const QPointer<QWidget>& pane : m_all) {
      if (pane != nullptr && pane->parentWidget() == nullptr) delete pane;
    }
  }
  QPoint middleOfDivider(std::size_t number) const {
    const PaneRect rect =
        view.layoutOfPanes().places({.width = view.width(), .height = view.height()}).dividers[number].rect;
    return {rect.x + rect.size.width / 2, rect.y + rect.size.height / 2};
  }
  void drag(QPoint from, QPoint to) {
    QTest::mousePress(&view, Qt::LeftButton, {}, from);
    QTest::mouseMove(&view, (from + to) / 2);
    QTest::mouseMove(&view, to);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, to);
  }

  QWidget& a = *new QWidget;
  QWidget& b = *new QWidget;
  QWidget& c = *new QWidget;
  SplitView view{a};

 private:
  std::vector<QPointer<QWidget>> m_all{&a, &b, &c};
};

TEST_F(SplitViewTest, TakesAllPanesOfAnotherView) {
  SplitView other(b);
  other.split(b, Direction::Down, c);
  view.split(a, Direction::Right, other);
  EXPECT_TRUE(other.panes().empty());
  EXPECT_EQ(view.panes(), (std::vector<QWidget*>{&a, &b, &c}));
  EXPECT_EQ(c.parentWidget(), &view);
  EXPECT_TRUE(c.isVisible());
  EXPECT_EQ(b.x(), c.x());
  EXPECT_GT(c.y(), b.y());
  EXPECT_EQ(a.height(), view.height());
}

TEST_F(SplitViewTest, ArrangesPanesAsALayoutNamesThemByNumber) {
  SplitLayout layout(PaneId{1});
  layout.split(PaneId{1}, Direction::Right, PaneId{0});
  auto& left = *new QWidget;
  auto& right = *new QWidget;
  SplitView arranged({&right, &left}, layout);
  EXPECT_EQ(arranged.panes(), (std::vector<QWidget*>{&left, &right}));
  EXPECT_EQ(left.parentWidget(), &arranged);
  EXPECT_NE(arranged.idOf(left), view.idOf(a));
  arranged.resize(view.size());
  arranged.show();
  EXPECT_EQ(left.x(), 0);
  EXPECT_GT(right.x(), 400);
}

TEST_F(SplitViewTest, PlacesItsPanesBesideEachOther) {
  view.split(a, Direction::Right, b);
  view.split(b, Direction::Down, c);
  EXPECT_EQ(view.panes(), (std::vector{&a, &b, &c}));
  EXPECT_EQ(a.geometry(), QRect(0, 0, 400, 605));
  EXPECT_EQ(b.geometry(), QRect(405, 0, 400, 300));
  EXPECT_EQ(c.geometry(), QRect(405, 305, 400, 300));
  EXPECT_TRUE(c.isVisible());
  view.resize(1005, 605);
  EXPECT_EQ(a.geometry(), QRect(0, 0, 500, 605));
}

TEST_F(SplitViewTest, GivesAPaneItsSizeBeforeItIsShown) {
  struct FirstSize : QWidget {
    void showEvent(QShowEvent*) override { shownWith = size(); }
    QSize shownWith;
  };
  auto* pane = new FirstSize;
  view.split(a, Direction::Right, *pane);
  EXPECT_EQ(pane->shownWith, QSize(400, 605));
}

TEST_F(SplitViewTest, GivesAPaneBackAndTheRestItsRoom) {
  view.split(a, Direction::Right, b);
  view.take(b);
  const std::unique_ptr<QWidget> taken(&b);
  EXPECT_EQ(b.parentWidget(), nullptr);
  EXPECT_FALSE(b.isVisible());
  EXPECT_EQ(a.geometry(), view.rect());
}

TEST_F(SplitViewTest, PutsAPaneBackWhereItWasUnlessOthersHaveComeOrGone) {
  view.split(a, Direction::Right, b);
  view.split(b, Direction::Down, c);
  ASSERT_TRUE(view.moveEdge(b, Direction::Down, 70));
  const QRect place = b.geometry();
  const PaneId id = view.idOf(b);
  const SplitLayout before = view.layoutOfPanes();
  view.take(b);
  ASSERT_TRUE(view.putBack(b, id, before));
  EXPECT_EQ(b.geometry(), place);
  EXPECT_TRUE(b.isVisible());

  view.take(b);
  view.take(c);
  const std::unique_ptr<QWidget> gone(&c);
  const std::unique_ptr<QWidget> taken(&b);
  EXPECT_FALSE(view.putBack(b, id, before));
  EXPECT_EQ(view.panes(), std::vector{&a});
}

TEST_F(SplitViewTest, MovesADividerThatIsDragged) {
  view.split(a, Direction::Right, b);
  QSignalSpy taken(&view, &SplitView::dividerGrabbed);
  QSignalSpy left(&view, &SplitView::dividerReleased);
  const QPoint from = middleOfDivider(0);
  drag(from, from + QPoint(123, 50));
  EXPECT_EQ(a.width(), 523);
  EXPECT_EQ(b.geometry(), QRect(528, 0, 277, 605));
  EXPECT_EQ(taken.count(), 1);
  EXPECT_EQ(left.count(), 1);
  drag(QPoint(100, 100), QPoint(200, 100));
  EXPECT_EQ(a.width(), 523) << "only dividers are dragged";
}

TEST_F(SplitViewTest, LetsGoOfADividerWhenTheArrangementChanges) {
  view.split(a, Direction::Right, b);
  QSignalSpy left(&view, &SplitView::dividerReleased);
  const auto take = [this] { QTest::mousePress(&view, Qt::LeftButton, {}, middleOfDivider(0)); };
  take();
  view.setZoomed(&a);
  EXPECT_EQ(left.count(), 1);
  view.setZoomed(nullptr);
  take();
  view.resize(700, 500);
  EXPECT_EQ(left.count(), 2);
  take();
  view.take(b);
  const std::unique_ptr<QWidget> taken(&b);
  EXPECT_EQ(left.count(), 3);
}

TEST_F(SplitViewTest, EqualisesByADoubleClickOnADivider) {
  view.split(a, Direction::Right, b);
  ASSERT_TRUE(view.moveEdge(a, Direction::Right, 100));
  QTest::mouseDClick(&view, Qt::LeftButton, {}, middleOfDivider(0));
  EXPECT_EQ(a.width(), b.width());
}

TEST_F(SplitViewTest, ShowsTheZoomedPaneAloneUntilAnythingElseIsDone) {
  view.split(a, Direction::Right, b);
  view.setZoomed(&b);
  EXPECT_EQ(b.geometry(), view.rect());
  EXPECT_FALSE(a.isVisible());
  EXPECT_FALSE(view.moveEdge(b, Direction::Left, 10));
  view.setZoomed(nullptr);
  EXPECT_TRUE(a.isVisible());
  view.setZoomed(&b);
  view.split(b, Direction::Down, c);
  EXPECT_EQ(view.zoomed(), nullptr);
  EXPECT_TRUE(a.isVisible());
}

TEST_F(SplitViewTest, DoesNotZoomASinglePane) {
  view.setZoomed(&a);
  EXPECT_EQ(view.zoomed(), nullptr);
}

}  // namespace
}  // namespace zolt
