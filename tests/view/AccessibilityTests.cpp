#include <QAccessible>

#include "view/ViewFixture.h"

namespace zolt {
namespace {

class AccessibilityTest : public test::TextViewTest {
 protected:
  void SetUp() override {
    TextViewTest::SetUp();
    append("first line\nsecond line\n");
    view.makeFrameNow();
    interface = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(interface, nullptr);
    text = interface->textInterface();
    ASSERT_NE(text, nullptr);
  }

  QAccessibleInterface* interface = nullptr;
  QAccessibleTextInterface* text = nullptr;
};

TEST_F(AccessibilityTest, TellsThatItIsAReadOnlyTerminalWithAName) {
  EXPECT_EQ(interface->role(), QAccessible::Terminal);
  EXPECT_TRUE(interface->state().readOnly);
  EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Terminal"));
}

TEST_F(AccessibilityTest, HasTheRowsInViewAsItsValueToo) {
  EXPECT_EQ(interface->text(QAccessible::Value), QStringLiteral("first line\nsecond line\n"));
}

TEST_F(AccessibilityTest, ReadsTheRowsInView) {
  EXPECT_EQ(text->text(0, text->characterCount()), QStringLiteral("first line\nsecond line\n"));
  EXPECT_EQ(text->text(6, 10), QStringLiteral("line"));
  EXPECT_EQ(text->cursorPosition(), text->characterCount());
}

TEST_F(AccessibilityTest, FindsCharactersOnTheScreenAndBack) {
  for (const int offset : {0, 5, 11, 15}) {
    const QRect where = text->characterRect(offset);
    EXPECT_EQ(text->offsetAtPoint(QPoint(where.left() + 1, where.center().y())), offset);
  }
  EXPECT_EQ(text->offsetAtPoint(QPoint(-50, -50)), -1);
}

TEST_F(AccessibilityTest, TellsAndChangesTheSelection) {
  EXPECT_EQ(text->selectionCount(), 0);
  text->setSelection(0, 6, 17);
  EXPECT_EQ(view.selectedText(), QStringLiteral("line\nsecond"));
  int start = 0;
  int end = 0;
  text->selection(0, &start, &end);
  EXPECT_EQ(start, 6);
  EXPECT_EQ(end, 17);
  text->removeSelection(0);
  EXPECT_EQ(text->selectionCount(), 0);
}

TEST_F(AccessibilityTest, CountsFromTheFirstRowInViewInALongHistory) {
  appendLines(5000);
  view.scrollToEndOfDocument();
  view.makeFrameNow();
  EXPECT_LT(text->characterCount(), 10'000);
  EXPECT_TRUE(text->text(0, text->characterCount()).endsWith(QStringLiteral("line 4999\n")));
}

}  // namespace
}  // namespace zolt
