#include "view/Finder.h"

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QScrollBar>

#include "support/ManualClock.h"
#include "support/TextSize.h"
#include "view/ViewFixture.h"

namespace zolt {
namespace {

using test::kCurrent;
using test::kFound;
using test::waitFor;

/// A view in a parent with a bar that has been opened.
class FinderTest : public testing::Test {
 protected:
  void SetUp() override {
    area.resize(900, 600);
    view.resize(900, 600);
    area.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&area, test::kPatience.count()));
    view.setFocus();
  }

  void append(const std::string& text) { view.append(AttributedString(text, TextAttributes{})); }
  void appendLines(std::size_t count) { append(test::numberedLines(count)); }
  FindBar& bar() { return *area.findChild<FindBar*>(); }
  QString progress() { return bar().findChild<QLabel*>(QStringLiteral("progress"))->text(); }
  QString problem() { return bar().findChild<QLabel*>(QStringLiteral("problem"))->text(); }
  QLineEdit& field() { return *bar().findChild<QLineEdit*>(); }
  BarButton& button(const QString& name) {
    for (BarButton* each : bar().findChildren<BarButton*>()) {
      if (each->accessibleName().startsWith(name)) return *each;
    }
    ADD_FAILURE() << name.toStdString();
    return *bar().findChild<BarButton*>();
  }
  void type(const QString& text) { QTest::keyClicks(&field(), text); }
  bool shows(const QString& text) {
    return waitFor([&] { return progress() == text; });
  }
  QImage picture() {
    view.makeFrameNow();
    return view.grab().toImage();
  }
  /// Whether a pixel of this colour is in the middle line of the row of the character.
  bool isMarked(TextPosition position, QRgb color) {
    const QImage image = picture();
    const QRectF character = view.rectOf(position);
    if (character.isEmpty()) return false;
    for (int x = static_cast<int>(character.left()); x < character.right(); ++x) {
      if (image.pixel(x, static_cast<int>(character.top()) + 1) == color) return true;
    }
    return false;
  }

  QWidget area;
  TerminalNSTextView view{&area};
  test::ViewSurface surface{view};
  Finder finder{surface};
};

TEST_F(FinderTest, OpensABarWithTheKeyboardAtTheTopRightAndLeavesTheTerminalItsSize) {
  const TerminalSize before = view.gridSize();
  finder.open();
  EXPECT_TRUE(bar().isVisible());
  EXPECT_TRUE(field().hasFocus());
  EXPECT_EQ(view.gridSize(), before);
  EXPECT_GT(bar().geometry().left(), area.width() / 3);
  EXPECT_LT(bar().geometry().right(), area.width());
  EXPECT_GT(bar().geometry().top(), 0);
}

TEST_F(FinderTest, ShowsAllOfItsTextsTwiceAsLargeInWideAndNarrowViews) {
  const test::TextSize size(2);
  for (const int width : {900, 450}) {
    view.resize(width, 600);
    finder.open();
    type(QStringLiteral("x"));
    ASSERT_TRUE(shows(QStringLiteral("No matches")));
    bar().layout()->activate();
    EXPECT_TRUE(QRect(0, 0, width, 600).contains(bar().geometry())) << width;
    std::vector<QRect> taken;
    for (const QWidget* each : bar().findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
      if (!each->isVisible()) continue;
      EXPECT_TRUE(bar().rect().contains(each->geometry())) << width;
      for (const QRect& other : taken) {
        EXPECT_FALSE(other.intersects(each->geometry())) << width;
      }
      taken.push_back(each->geometry());
    }
    const auto* number = bar().findChild<QLabel*>(QStringLiteral("progress"));
    EXPECT_GE(number->width(), number->fontMetrics().horizontalAdvance(number->text())) << width;
    for (const BarButton* each : bar().findChildren<BarButton*>()) {
      EXPECT_GE(each->width(), each->sizeHint().width()) << width;
      EXPECT_GE(each->height(), each->sizeHint().height()) << width;
    }
    finder.close();
  }
}

TEST_F(FinderTest, FindsWhatIsTypedLetterByLetter) {
  append("cat car cab");
  finder.open();
  type(QStringLiteral("ca"));
  EXPECT_TRUE(shows(QStringLiteral("3 of 3"))) << progress().toStdString();
  type(QStringLiteral("t"));
  EXPECT_TRUE(shows(QStringLiteral("1 of 1")));
  type(QStringLiteral("s"));
  EXPECT_TRUE(shows(QStringLiteral("No matches")));
  field().clear();
  EXPECT_TRUE(shows(QString()));
}

TEST_F(FinderTest, CountsInTheBarAMomentAfterItHasMarkedTheMatch) {
  test::ManualClock clock;
  append("a needle");
  Finder timed(surface, clock);
  timed.open();
  type(QStringLiteral("needle"));
  ASSERT_TRUE(waitFor([&] { return isMarked(2_pos, kCurrent); }));
  clock.advance(std::chrono::milliseconds(79));
  EXPECT_EQ(progress(), QString());
  clock.advance(std::chrono::milliseconds(1));
  EXPECT_EQ(progress(), QStringLiteral("1 of 1"));
  EXPECT_EQ(clock.untilNext(), std::nullopt);
}

TEST_F(FinderTest, MarksMatchesInTheTextAndTheCurrentOneOtherwise) {
  append("cat ... cat");
  finder.open();
  type(QStringLiteral("cat"));
  ASSERT_TRUE(shows(QStringLiteral("2 of 2")));
  EXPECT_TRUE(isMarked(0_pos, kFound));
  EXPECT_TRUE(isMarked(2_pos, kFound));
  EXPECT_FALSE(isMarked(3_pos, kFound));
  EXPECT_TRUE(isMarked(8_pos, kCurrent));
  EXPECT_FALSE(isMarked(8_pos, kFound));
  finder.close();
  EXPECT_FALSE(isMarked(0_pos, kFound));
}

TEST_F(FinderTest, WalksUpWithReturnAndDownWithShift) {
  appendLines(50);
  finder.open();
  type(QStringLiteral("line 4"));
  ASSERT_TRUE(shows(QStringLiteral("11 of 11")));
  QTest::keyClick(&field(), Qt::Key_Return);
  EXPECT_TRUE(shows(QStringLiteral("10 of 11")));
  QTest::keyClick(&field(), Qt::Key_Enter);
  EXPECT_TRUE(shows(QStringLiteral("9 of 11")));
  QTest::keyClick(&field(), Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_TRUE(shows(QStringLiteral("10 of 11")));
  EXPECT_EQ(field().text(), QStringLiteral("line 4"));
}

TEST_F(FinderTest, WalksWithItsButtonsToo) {
  append("a a a");
  finder.open();
  type(QStringLiteral("a"));
  ASSERT_TRUE(shows(QStringLiteral("3 of 3")));
  QTest::mouseClick(&button(QStringLiteral("Previous")), Qt::LeftButton);
  EXPECT_TRUE(shows(QStringLiteral("2 of 3")));
  QTest::mouseClick(&button(QStringLiteral("Next")), Qt::LeftButton);
  EXPECT_TRUE(shows(QStringLiteral("3 of 3")));
  EXPECT_TRUE(field().hasFocus());
}

TEST_F(FinderTest, ScrollsToAMatchThatIsOutOfView) {
  append("needle\n");
  appendLines(1000);
  finder.open();
  type(QStringLiteral("needle"));
  ASSERT_TRUE(shows(QStringLiteral("1 of 1")));
  view.makeFrameNow();
  EXPECT_FALSE(view.rectOf(0_pos).isEmpty());
  EXPECT_FALSE(view.isAtEnd());
}

TEST_F(FinderTest, LeavesTheViewWhereItIsForAMatchInView) {
  appendLines(1000);
  view.makeFrameNow();
  finder.open();
  type(QStringLiteral("line 99"));
  ASSERT_TRUE(shows(QStringLiteral("11 of 11")));
  EXPECT_TRUE(view.isAtEnd());
}

TEST_F(FinderTest, NeverLeavesTheCurrentMatchUnderTheBar) {
  std::string wide;
  for (int i = 0; i < 300; ++i) {
    wide += std::string(60, '.') + " needle " + std::to_string(i) + "\n";
  }
  append(wide);
  finder.open();
  type(QStringLiteral("needle"));
  ASSERT_TRUE(shows(QStringLiteral("300 of 300")));
  for (int i = 299; i > 200; --i) {
    QTest::keyClick(&field(), Qt::Key_Return);
    ASSERT_TRUE(shows(QStringLiteral("%1 of 300").arg(i)));
    view.makeFrameNow();
    const TextPosition marked(wide.find("needle " + std::to_string(i - 1) + "\n"));
    const QRectF match = view.rectOf(marked);
    ASSERT_FALSE(match.isEmpty());
    ASSERT_FALSE(QRectF(bar().geometry()).intersects(match)) << i;
  }
}

TEST_F(FinderTest, GoesOutOfTheWayOfAMatchThatCannotBeScrolledFromUnderIt) {
  append(std::string(90, '.') + "needle\n\n\n\n\n\n\n\nneedle\n");
  finder.open();
  type(QStringLiteral("needle"));
  ASSERT_TRUE(shows(QStringLiteral("2 of 2")));
  EXPECT_LT(bar().geometry().top(), area.height() / 2);
  QTest::keyClick(&field(), Qt::Key_Return);
  ASSERT_TRUE(shows(QStringLiteral("1 of 2")));
  EXPECT_GT(bar().geometry().top(), area.height() / 2);
  EXPECT_TRUE(field().hasFocus());
  QTest::keyClick(&field(), Qt::Key_Return);
  ASSERT_TRUE(shows(QStringLiteral("2 of 2")));
  EXPECT_LT(bar().geometry().top(), area.height() / 2);
}

TEST_F(FinderTest, NeverCutsItsNumbers) {
  append(std::string(2'000'000, 'x'));
  finder.open();
  auto& label = *bar().findChild<QLabel*>(QStringLiteral("progress"));
  const auto fits = [&] { return label.width() >= label.fontMetrics().horizontalAdvance(label.text()); };
  type(QStringLiteral("x"));
  ASSERT_TRUE(shows(QStringLiteral("2,000,000 of 2,000,000"))) << progress().toStdString();
  EXPECT_TRUE(fits()) << label.width();
  view.resize(380, 400);
  type(QStringLiteral("y"));
  ASSERT_TRUE(shows(QStringLiteral("No matches")));
  EXPECT_TRUE(fits()) << label.width();
}

TEST_F(FinderTest, TakesAWordThatCameWithItsLinesEnd) {
  append("a needle here");
  finder.open();
  field().setText(QStringLiteral("needle\u2028"));
  EXPECT_TRUE(shows(QStringLiteral("1 of 1")));
  field().setText(QStringLiteral("needle\n"));
  EXPECT_TRUE(shows(QStringLiteral("1 of 1")));
}

TEST_F(FinderTest, SaysThatAQueryIsTooLong) {
  finder.open();
  field().setText(QString(5000, QLatin1Char('x')));
  EXPECT_EQ(problem(), QStringLiteral("The text to find is longer than 4096 bytes."));
}

TEST_F(FinderTest, HasOptionsForCaseWordsAndExpressions) {
  append("Cat cat concat c.t");
  finder.open();
  type(QStringLiteral("cat"));
  EXPECT_TRUE(shows(QStringLiteral("3 of 3")));
  QTest::mouseClick(&button(QStringLiteral("Match case")), Qt::LeftButton);
  EXPECT_TRUE(shows(QStringLiteral("2 of 2")));
  QTest::mouseClick(&button(QStringLiteral("Whole word")), Qt::LeftButton);
  EXPECT_TRUE(shows(QStringLiteral("1 of 1")));
  QTest::mouseClick(&button(QStringLiteral("Regular expression")), Qt::LeftButton);
  field().clear();
  type(QStringLiteral("c.t"));
  EXPECT_TRUE(shows(QStringLiteral("2 of 2"))) << progress().toStdString();
}

TEST_F(FinderTest, SaysWhatIsWrongWithAnExpressionAndForgetsItWhenMended) {
  append("a(b)");
  finder.open();
  QTest::mouseClick(&button(QStringLiteral("Regular expression")), Qt::LeftButton);
  const int height = bar().height();
  type(QStringLiteral("(b"));
  EXPECT_EQ(problem(), QStringLiteral("The regular expression has no closing parenthesis: (b"));
  EXPECT_GT(bar().height(), height);
  type(QStringLiteral(")"));
  EXPECT_TRUE(shows(QStringLiteral("1 of 1")));
  EXPECT_EQ(problem(), QString());
  EXPECT_EQ(bar().height(), height);
}

TEST_F(FinderTest, SelectsTheMatchAndGivesBackTheKeyboardWhenItCloses) {
  append("some needle here");
  finder.open();
  type(QStringLiteral("needle"));
  ASSERT_TRUE(shows(QStringLiteral("1 of 1")));
  QTest::keyClick(&field(), Qt::Key_Escape);
  EXPECT_FALSE(finder.isOpen());
  EXPECT_TRUE(view.hasFocus());
  EXPECT_EQ(view.selectedText(), QStringLiteral("needle"));
}

TEST_F(FinderTest, StartsWithWhatIsSelectedUnlessThatIsMoreThanALine) {
  append("first\nsecond");
  view.select({.begin = 0_pos, .end = 5_pos});
  finder.open();
  EXPECT_EQ(field().text(), QStringLiteral("first"));
  EXPECT_TRUE(shows(QStringLiteral("1 of 1")));
  finder.close();
  view.select({.begin = 0_pos, .end = 12_pos});
  finder.open();
  EXPECT_EQ(field().text(), QStringLiteral("first"));
}

TEST_F(FinderTest, FindsWhatIsSelectedWithoutTakingTheKeyboard) {
  append("one two one");
  view.select({.begin = 0_pos, .end = 3_pos});
  finder.findSelection();
  EXPECT_TRUE(view.hasFocus());
  EXPECT_TRUE(shows(QStringLiteral("1 of 2")));
  finder.next();
  EXPECT_TRUE(shows(QStringLiteral("2 of 2")));
  finder.previous();
  EXPECT_TRUE(shows(QStringLiteral("1 of 2")));
}

TEST_F(FinderTest, OpensWhereTheNextIsWantedAndNothingIsSought) {
  finder.next();
  EXPECT_TRUE(finder.isOpen());
  finder.close();
  finder.previous();
  EXPECT_TRUE(finder.isOpen());
}

TEST_F(FinderTest, RemembersTheQueryOverClosing) {
  append("needle");
  finder.open();
  type(QStringLiteral("need"));
  finder.close();
  view.select({});
  finder.open();
  EXPECT_EQ(field().text(), QStringLiteral("need"));
  EXPECT_EQ(field().selectedText(), QStringLiteral("need"));
  EXPECT_TRUE(shows(QStringLiteral("1 of 1")));
}

TEST_F(FinderTest, CountsOnWhileOutputComes) {
  append("needle\n");
  finder.open();
  type(QStringLiteral("needle"));
  ASSERT_TRUE(shows(QStringLiteral("1 of 1")));
  append("needle needle\n");
  EXPECT_TRUE(shows(QStringLiteral("1 of 3")));
}

TEST_F(FinderTest, LosesNoKeyToTheTerminalAndNoneOfTheTerminalsToTheBar) {
  finder.open();
  type(QStringLiteral("abc"));
  EXPECT_EQ(field().text(), QStringLiteral("abc"));
  view.setFocus();
  QTest::keyClicks(&view, QStringLiteral("xyz"));
  EXPECT_EQ(field().text(), QStringLiteral("abc"));
}

TEST_F(FinderTest, FitsAWindowOfAnyWidth) {
  finder.open();
  for (const int width : {900, 500, 320, 200, 900}) {
    view.resize(width, 400);
    QApplication::processEvents();
    EXPECT_LE(bar().geometry().right(), width) << width;
    if (width >= 320) {
      EXPECT_GE(bar().geometry().left(), 0) << width;
    }
  }
}

TEST_F(FinderTest, ShowsWhereMatchesAreInTheScrollBar) {
  append("needle\n");
  appendLines(5000);
  finder.open();
  type(QStringLiteral("needle"));
  ASSERT_TRUE(shows(QStringLiteral("1 of 1")));
  const auto markedRows = [&] {
    const QImage image = view.verticalScrollBar()->grab().toImage();
    std::vector<int> rows;
    for (int y = 0; y < image.height(); ++y) {
      if (image.pixel(2, y) == kFound) rows.push_back(y);
    }
    return rows;
  };
  EXPECT_EQ(markedRows(), (std::vector<int>{0, 1}));
  finder.close();
  EXPECT_TRUE(waitFor([&] { return markedRows().empty(); }));
}

}  // namespace
}  // namespace zolt
