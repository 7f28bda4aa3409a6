#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QStyleHints>

#include "view/ViewFixture.h"

namespace zolt {
namespace {

class SelectionTest : public test::TextViewTest {
 protected:
  void press(QPoint at, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mousePress(view.viewport(), Qt::LeftButton, modifiers, at);
  }
  void moveTo(QPoint at) { QTest::mouseMove(view.viewport(), at); }
  void release(QPoint at) { QTest::mouseRelease(view.viewport(), Qt::LeftButton, Qt::NoModifier, at); }
  void drag(QPoint from, QPoint to) {
    press(from);
    // The synthetic move of QTest carries no pressed button where the platform has no pointer.
    QMouseEvent move(QEvent::MouseMove, QPointF(to), view.viewport()->mapToGlobal(QPointF(to)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &move);
    release(to);
  }
  // Just left of the character at `position`.
  QPoint before(TextPosition position) {
    view.makeFrameNow();
    const QRectF cell = view.rectOf(position);
    return {static_cast<int>(cell.left()) + 1, static_cast<int>(cell.center().y())};
  }
  std::string selected() const { return view.selectedText().toStdString(); }
};

TEST_F(SelectionTest, ADragSelectsFromCharacterToCharacter) {
  append("hello brave world\nsecond line");
  drag(before(6_pos), before(11_pos));
  EXPECT_EQ(selected(), "brave");
}

TEST_F(SelectionTest, ADragBackwardsAndOverLinesSelectsTheSame) {
  append("hello brave world\nsecond line");
  drag(before(24_pos), before(12_pos));
  EXPECT_EQ(selected(), "world\nsecond");
}

TEST_F(SelectionTest, ADoubleClickSelectsAWordAndATripleClickItsLine) {
  append("cp /etc/hosts here\nnext");
  const QPoint at = middleOf(7_pos);
  QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, at);
  EXPECT_EQ(selected(), "/etc/hosts");
  QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, at);
  EXPECT_EQ(selected(), "cp /etc/hosts here\n");
}

TEST_F(SelectionTest, ADragAfterADoubleClickSelectsWholeWords) {
  append("one two three four");
  QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(5_pos));
  press(middleOf(5_pos));
  release(middleOf(5_pos));  // the third click takes the line; a fresh double click starts over
  QTest::qWait(QApplication::styleHints()->mouseDoubleClickInterval() + 50);
  QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(5_pos));
  const QPoint to = middleOf(9_pos);
  QMouseEvent move(QEvent::MouseMove, QPointF(to), view.viewport()->mapToGlobal(QPointF(to)), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(view.viewport(), &move);
  release(to);
  EXPECT_EQ(selected(), "two three");
}

TEST_F(SelectionTest, AClickWithShiftExtendsTheSelection) {
  append("one two three four");
  QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, before(4_pos));
  EXPECT_EQ(selected(), "");
  QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier, before(13_pos));
  EXPECT_EQ(selected(), "two three");
  QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier, before(0_pos));
  EXPECT_EQ(selected(), "one ");
}

TEST_F(SelectionTest, AClickElsewhereClearsIt) {
  append("one two");
  view.selectAll();
  QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, before(2_pos));
  EXPECT_EQ(selected(), "");
}

TEST_F(SelectionTest, SelectAllAndCopyReachTheClipboardByTheActionsOfTheContextMenu) {
  append("first\nsecond\n");
  QApplication::clipboard()->clear();
  const QList<QAction*> actions = view.actions();
  ASSERT_EQ(actions.size(), 3);
  EXPECT_EQ(actions[0]->text(), QStringLiteral("Copy\tCtrl+Shift+C"));
  EXPECT_EQ(actions[1]->text(), QStringLiteral("Paste\tCtrl+Shift+V"));
  EXPECT_EQ(actions[2]->text(), QStringLiteral("Select All\tCtrl+Shift+A"));
  actions[2]->trigger();
  EXPECT_EQ(selected(), "first\nsecond\n");
  actions[0]->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("first\nsecond\n"));
}

TEST_F(SelectionTest, TheContextMenuOffersToCopyOnlyWhatIsSelected) {
  append("text");
  const auto offersToCopy = [&] {
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 10), view.mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(view.viewport(), &event);
    auto* menu = view.findChild<QMenu*>();
    const bool offered = menu->actions().front()->isEnabled();
    menu->close();
    test::waitFor([&] { return view.findChild<QMenu*>() == nullptr; });
    return offered;
  };
  EXPECT_FALSE(offersToCopy());
  EXPECT_TRUE(view.actions().front()->isEnabled()) << "only the menu knows: the action is free again";
  view.selectAll();
  EXPECT_TRUE(offersToCopy());
}

TEST_F(SelectionTest, CopyingNothingLeavesTheClipboardAlone) {
  append("text");
  QApplication::clipboard()->setText(QStringLiteral("kept"));
  view.copy();
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("kept"));
}

TEST_F(SelectionTest, StaysOnItsTextWhenMoreIsAppendedAndTheWidthChanges) {
  appendLines(3);
  view.select({.begin = 7_pos, .end = 13_pos});
  EXPECT_EQ(selected(), "line 1");
  appendLines(500);
  view.resize(300, 300);
  view.makeFrameNow();
  EXPECT_EQ(selected(), "line 1");
}

TEST_F(SelectionTest, DraggingBelowTheViewScrollsAndSelectsOn) {
  appendLines(1000);
  view.scrollTo(0_px);
  view.makeFrameNow();
  const qsizetype oneView = view.visibleText().size();
  press(before(0_pos));
  const QPoint below(50, view.viewport()->height() + 200);
  QMouseEvent move(QEvent::MouseMove, QPointF(below), view.viewport()->mapToGlobal(QPointF(below)), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(view.viewport(), &move);
  EXPECT_TRUE(test::waitFor([&] { return view.scrollOffset() > 500_px; }));
  release(below);
  EXPECT_GT(view.selectedText().size(), oneView);
}

TEST_F(SelectionTest, DraggingAboveTheViewScrollsUp) {
  appendLines(1000);
  view.scrollToEndOfDocument();
  view.makeFrameNow();
  const DevicePixels end = view.scrollOffset();
  const QPoint from(50, 100);
  press(from);
  const QPoint above(50, -200);
  QMouseEvent move(QEvent::MouseMove, QPointF(above), view.viewport()->mapToGlobal(QPointF(above)), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(view.viewport(), &move);
  EXPECT_TRUE(test::waitFor([&] { return view.scrollOffset() < end - 500_px; }));
  release(above);
}

}  // namespace
}  // namespace zolt
