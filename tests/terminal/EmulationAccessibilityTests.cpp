#include <gtest/gtest.h>

#include <QAccessible>
#include <QMouseEvent>
#include <QTest>
#include <memory>
#include <string>
#include <utility>

#include "canvas/TextCanvas.h"
#include "support/WaitFor.h"
#include "terminal/EmulationSource.h"

namespace zolt {
namespace {

using test::waitFor;

class EmulationAccessibilityTest : public testing::Test {
 protected:
  void SetUp() override {
    auto made = std::make_unique<EmulationSource>(emulator);
    source = made.get();
    canvas = std::make_unique<TextCanvas>(std::move(made));
    canvas->resize(600, 300);
    canvas->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(canvas.get(), test::kPatience.count()));
    accessible = QAccessible::queryAccessibleInterface(canvas.get());
    ASSERT_NE(accessible, nullptr);
    text = accessible->textInterface();
    ASSERT_NE(text, nullptr);
  }
  void TearDown() override { canvas.reset(); }  // which reads the engine's snapshots

  void feed(const std::string& bytes) {
    emulator.feed(Bytes(bytes));
    EXPECT_TRUE(waitFor([&] {
      canvas->makeFrameNow();
      return emulator.isSettled();
    }));
    canvas->makeFrameNow();
  }
  QString all() const { return text->text(0, text->characterCount()); }
  std::string unitAt(int offset, QAccessible::TextBoundaryType boundary) const {
    int start = 0;
    int end = 0;
    const QString unit = text->textAtOffset(offset, boundary, &start, &end);
    EXPECT_EQ(unit, text->text(start, end));
    return unit.toStdString();
  }
  QString attributesAt(int offset) const {
    int start = 0;
    int end = 0;
    return text->attributes(offset, &start, &end);
  }

  vt::TerminalSettings settings;
  Emulator emulator{{.rows = 4, .columns = 20}, settings, {.changed = [] {}, .replied = [](const std::string&) {}}};
  EmulationSource* source = nullptr;  // the canvas's
  std::unique_ptr<TextCanvas> canvas;
  QAccessibleInterface* accessible = nullptr;
  QAccessibleTextInterface* text = nullptr;
};

TEST_F(EmulationAccessibilityTest, HasTheCursorAsItsCaret) {
  feed("one\r\ntwo $ ");
  EXPECT_EQ(all(), QStringLiteral("one\ntwo $ \n\n"));
  EXPECT_EQ(text->cursorPosition(), 10);
  feed("\033[D\033[D");
  EXPECT_EQ(text->cursorPosition(), 8);
  feed("\033[1;15H");
  EXPECT_EQ(text->cursorPosition(), 3) << "at the end of the text of its row";
  feed("\033[?25l\033[2;2H");
  EXPECT_EQ(text->cursorPosition(), 5) << "hidden";
}

TEST_F(EmulationAccessibilityTest, CountsCaretAndCharactersInUtf16) {
  feed("\u6F22\U0001F600e\u0301x");
  EXPECT_EQ(all(), QStringLiteral(u"\u6F22\U0001F600e\u0301x\n\n\n"));
  EXPECT_EQ(text->cursorPosition(), 6);
  feed("\033[1;3H");
  EXPECT_EQ(text->cursorPosition(), 1) << "after two columns";
  text->setSelection(0, 2, 4);
  EXPECT_EQ(canvas->selectedText(), QStringLiteral(u"\U0001F600")) << "from within one cluster into another";
  int start = 0;
  int end = 0;
  text->selection(0, &start, &end);
  EXPECT_EQ(start, 1);
  EXPECT_EQ(end, 3);
}

TEST_F(EmulationAccessibilityTest, GivesACharacterAllOfItsCells) {
  feed("a\u6F22\U0001F600b");
  const int cell = text->characterRect(0).width();
  EXPECT_GE(text->characterRect(1).width(), 2 * cell - 2);
  EXPECT_EQ(text->characterRect(3), text->characterRect(2)) << "both halves of a surrogate pair";
  for (const int offset : {0, 1, 2, 4}) {
    const QRect where = text->characterRect(offset);
    EXPECT_EQ(text->offsetAtPoint(where.center()), offset);
    EXPECT_EQ(text->offsetAtPoint(QPoint(where.left() + 1, where.center().y())), offset);
    EXPECT_EQ(text->offsetAtPoint(QPoint(where.right() - 1, where.center().y())), offset);
  }
}

TEST_F(EmulationAccessibilityTest, FindsCharactersWordsAndLines) {
  feed("\033[?2027hls e\u0301t\u00E9\r\n\U0001F469\u200D\U0001F680 end");
  EXPECT_EQ(unitAt(0, QAccessible::CharBoundary), "l");
  EXPECT_EQ(unitAt(4, QAccessible::CharBoundary), "e\u0301");
  EXPECT_EQ(unitAt(9, QAccessible::CharBoundary), "\U0001F469\u200D\U0001F680");
  EXPECT_EQ(unitAt(5, QAccessible::WordBoundary), "e\u0301t\u00E9");
  EXPECT_EQ(unitAt(4, QAccessible::LineBoundary), "ls e\u0301t\u00E9\n");
  EXPECT_EQ(unitAt(9, QAccessible::LineBoundary), "\U0001F469\u200D\U0001F680 end\n");
  int start = 0;
  int end = 0;
  EXPECT_EQ(text->textBeforeOffset(9, QAccessible::LineBoundary, &start, &end), QStringLiteral(u"ls e\u0301t\u00E9\n"));
  EXPECT_EQ(text->textAfterOffset(3, QAccessible::CharBoundary, &start, &end), QStringLiteral("t"));
  EXPECT_EQ(text->textBeforeOffset(0, QAccessible::CharBoundary, &start, &end), QString());
  EXPECT_EQ(text->textAfterOffset(text->characterCount(), QAccessible::LineBoundary, &start, &end), QString());
}

TEST_F(EmulationAccessibilityTest, TellsHowTextLooks) {
  feed("plain\033[1;3;4;38;2;1;2;3;48;2;4;5;6mlook\033[0;9mstruck");
  int start = 0;
  int end = 0;
  const QString look = text->attributes(6, &start, &end);
  EXPECT_EQ(start, 5);
  EXPECT_EQ(end, 9);
  EXPECT_EQ(look.toStdString(),
            std::string("color:rgb(1,2,3);background-color:rgb(4,5,6);font-weight:bold;font-style:italic;"
                        "text-underline-style:solid;text-underline-type:single;"));
  EXPECT_FALSE(attributesAt(0).contains(QStringLiteral("font-weight")));
  EXPECT_TRUE(attributesAt(10).contains(QStringLiteral("text-line-through-type:single;")));
  text->attributes(15, &start, &end);
  EXPECT_EQ(start, 15) << "a line end";
  EXPECT_EQ(end, 16);
}

TEST_F(EmulationAccessibilityTest, HasASelectionForEachRowOfARectangle) {
  feed("abcd\r\nefgh");
  const QRect from = text->characterRect(1);
  const QRect to = text->characterRect(7);
  const auto inView = [&](QPoint point) { return canvas->viewport()->mapFromGlobal(point); };
  const QPoint begin(inView(from.topLeft()).x(), inView(from.center()).y());
  const QPoint end(inView(to.bottomRight()).x() + 1, inView(to.center()).y());
  QTest::mousePress(canvas->viewport(), Qt::LeftButton, Qt::AltModifier, begin);
  QTest::mouseMove(canvas->viewport(), end);
  QMouseEvent move(QEvent::MouseMove, end, canvas->viewport()->mapToGlobal(end), Qt::NoButton, Qt::LeftButton,
                   Qt::AltModifier);
  QCoreApplication::sendEvent(canvas->viewport(), &move);
  QTest::mouseRelease(canvas->viewport(), Qt::LeftButton, Qt::AltModifier, end);
  ASSERT_EQ(text->selectionCount(), 2);
  int start = 0;
  int stop = 0;
  text->selection(1, &start, &stop);
  EXPECT_EQ(text->text(start, stop), QStringLiteral("fg"));
}

}  // namespace
}  // namespace zolt
