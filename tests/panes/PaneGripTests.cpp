// The handle that a pane is dragged out of its split by.
#include "panes/PaneGrip.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

namespace zolt {
namespace {

class PaneGripTest : public testing::Test {
 protected:
  void SetUp() override {
    parent.resize(400, 300);
    parent.show();
    grip.showOn({200, 100, 200, 200});
  }

  QWidget parent;
  PaneGrip grip{&parent};
  QSignalSpy dragged{&grip, &PaneGrip::dragged};
};

TEST_F(PaneGripTest, StandsInTheMiddleOfTheUpperEdge) {
  EXPECT_TRUE(grip.isVisible());
  EXPECT_EQ(grip.geometry().top(), 100);
  EXPECT_NEAR(grip.geometry().center().x(), 300, 1);
}

TEST_F(PaneGripTest, IsDraggedOnceThePointerHasMovedFarEnough) {
  QTest::mousePress(&grip, Qt::LeftButton, {}, QPoint(20, 5));
  QTest::mouseMove(&grip, QPoint(21, 6));
  EXPECT_EQ(dragged.count(), 0);
  QTest::mouseMove(&grip, QPoint(20, 60));
  QTest::mouseMove(&grip, QPoint(20, 90));
  EXPECT_EQ(dragged.count(), 1);
}

TEST_F(PaneGripTest, IsNotDraggedByAnotherButtonOrByThePointerAlone) {
  QTest::mouseMove(&grip, QPoint(20, 60));
  QTest::mousePress(&grip, Qt::RightButton, {}, QPoint(20, 5));
  QTest::mouseMove(&grip, QPoint(20, 60));
  QTest::mouseRelease(&grip, Qt::RightButton, {}, QPoint(20, 60));
  QTest::mousePress(&grip, Qt::LeftButton, {}, QPoint(20, 5));
  QTest::mouseRelease(&grip, Qt::LeftButton, {}, QPoint(20, 5));
  QTest::mouseMove(&grip, QPoint(20, 60));
  EXPECT_EQ(dragged.count(), 0);
}

TEST_F(PaneGripTest, GoesWhenThePointerLeavesIt) {
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&grip, &leave);
  EXPECT_FALSE(grip.isVisible());
}

}  // namespace
}  // namespace zolt
