#include "terminal/copying/CopyMode.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "terminal/ModeFixture.h"

namespace zolt {
namespace {

class CopyModeTest : public test::ModeTest {
 protected:
  void start(const std::string& text) {
    test::ModeTest::start(text);
    if (HasFatalFailure()) return;
    mode = std::make_unique<CopyMode>(*display);
    mode->toggle();
  }
  void TearDown() override {
    mode.reset();
    test::ModeTest::TearDown();
  }
  void control(Qt::Key key) {
#ifdef Q_OS_MACOS
    QTest::keyClick(&canvas(), key, Qt::MetaModifier);
#else
    QTest::keyClick(&canvas(), key, Qt::ControlModifier);
#endif
  }
  // The row and the column of the cursor on the screen, as input methods are told.
  std::pair<int, int> cell() {
    canvas().makeFrameNow();
    const TextInView view = canvas().textInView();
    for (std::size_t row = 0; row < view.rowCount(); ++row) {
      const TextRange range = view.row(row).range;
      if (mode->cursor() >= range.begin && mode->cursor() <= range.end) {
        return {static_cast<int>(row), view.row(row).columnOf(mode->cursor()).value};
      }
    }
    return {-1, -1};
  }
  std::string selected() {
    return canvas().selectedText().toStdString();
  }
  bool isInView(TextPosition place) {
    canvas().makeFrameNow();
    return QRectF(canvas().viewport()->rect()).contains(canvas().rectOf(place));
  }

  std::unique_ptr<CopyMode> mode;
};

using Cell = std::pair<int, int>;

TEST_F(CopyModeTest, KeepsTheKeysFromTheProgram) {
  start("one\\r\\ntwo\\r\\n");
  type("hjklzx5");
  QTest::keyClick(&canvas(), Qt::Key_Tab);
  QTest::keyClick(&canvas(), Qt::Key_F3);
  control(Qt::Key_C);
  canvas().paste();
  EXPECT_TRUE(mode->isOn());
  type("q");
  EXPECT_FALSE(mode->isOn());
  EXPECT_EQ(sent(), "");
}

TEST_F(CopyModeTest, BeginsAtTheCursorAndMovesByRowsAndWords) {
  start("first line\\r\\nab\\r\\nthird line\\r\\n");
  EXPECT_EQ(cell(), Cell(3, 0));
  type("kw");
  EXPECT_EQ(cell(), Cell(2, 6));
  type("k");
  EXPECT_EQ(cell(), Cell(1, 1)) << "the end of a shorter row";
  type("k");
  EXPECT_EQ(cell(), Cell(0, 6)) << "and back in the column it came from";
  type("$jj");
  EXPECT_EQ(cell(), Cell(2, 9));
  type("0k");
  EXPECT_EQ(cell(), Cell(1, 0));
  type("9k3l2j");
  EXPECT_EQ(cell(), Cell(2, 3));
  type("g10l");
  EXPECT_EQ(cell(), Cell(0, 9)) << "a 0 that follows a digit";
}

TEST_F(CopyModeTest, SelectsCharactersLinesAndRectangles) {
  start("first line\\r\\nab\\r\\nthird line\\r\\n");
  type("gwv");
  EXPECT_EQ(selected(), "l");
  type("e");
  EXPECT_EQ(selected(), "line");
  type("j");
  EXPECT_EQ(selected(), "line\nab");
  type("V");
  EXPECT_EQ(selected(), "first line\nab\n");
  type("jv");
  EXPECT_EQ(selected(), "line\nab\nthird line");
  control(Qt::Key_V);
  EXPECT_EQ(selected(), "line\n\nline");
  type("0");
  EXPECT_EQ(selected(), "first l\nab\nthird l");
  control(Qt::Key_V);
  EXPECT_EQ(selected(), "");
}

TEST_F(CopyModeTest, SwapsTheEndsOfTheSelection) {
  start("one two three\\r\\n");
  type("gwve");
  EXPECT_EQ(cell(), Cell(0, 6));
  type("o");
  EXPECT_EQ(cell(), Cell(0, 4));
  type("b");
  EXPECT_EQ(selected(), "one two");
}

TEST_F(CopyModeTest, CopiesAndLeaves) {
  start("one two three\\r\\n");
  type("gwviwy");
  EXPECT_EQ(copied(), "two t");
  EXPECT_FALSE(mode->isOn());
  EXPECT_TRUE(canvas().selection().empty());
  mode->toggle();
  type("gv");
  QTest::keyClick(&canvas(), Qt::Key_Return);
  EXPECT_EQ(copied(), "o");
  mode->toggle();
  QTest::keyClick(&canvas(), Qt::Key_Return);
  EXPECT_EQ(copied(), "o") << "without a selection there is nothing to copy";
  EXPECT_FALSE(mode->isOn());
  EXPECT_EQ(sent(), "");
}

TEST_F(CopyModeTest, MovesOverWideCharactersAndWrappedLines) {
  start("");
  const int columns = canvas().gridSize().columns;
  const std::string wrapped(static_cast<std::size_t>(columns) + 5, 'x');
  feed(std::string("\033[H\033[2J漢字kana\r\n").append(wrapped).append("\r\nend"));
  type("gl");
  EXPECT_EQ(cell(), Cell(0, 2));
  type("v");
  EXPECT_EQ(selected(), "字");
  type("v3l");
  EXPECT_EQ(cell(), Cell(0, 6));
  type("0j$");
  EXPECT_EQ(cell(), Cell(2, 4)) << "the end of the line is in its second row";
  type("0");
  EXPECT_EQ(cell(), Cell(1, 0));
  type("Vy");
  EXPECT_EQ(copied(), std::string(wrapped).append("\n"));
  mode->toggle();
  type("g3ljk");
  EXPECT_EQ(cell(), Cell(0, 5));
  type("2hjk");
  EXPECT_EQ(cell(), Cell(0, 2)) << "from the middle of a wide character to its start";
}

TEST_F(CopyModeTest, ScrollsWithTheCursorAndReturnsToTheEnd) {
  start("");
  std::string lines;
  for (int i = 0; i < 300; ++i) {
    lines += "line ";
    lines += std::to_string(i);
    lines += "\r\n";
  }
  feed(lines);
  mode->toggle();
  mode->toggle();
  const auto textAtCursor = [this] { return canvas().textOf(display->source().lineAt(mode->cursor())).toStdString(); };
  type("g");
  EXPECT_EQ(canvas().scrollOffset(), DevicePixels(0));
  type("20j");
  EXPECT_EQ(textAtCursor(), "line 20\n");
  const int page = canvas().gridSize().rows;
  type("G");
  EXPECT_TRUE(isInView(mode->cursor()));
  control(Qt::Key_B);
  control(Qt::Key_B);
  EXPECT_TRUE(isInView(mode->cursor()));
  control(Qt::Key_U);
  control(Qt::Key_D);
  control(Qt::Key_F);
  EXPECT_TRUE(isInView(mode->cursor()));
  type("H");
  const Cell top = cell();
  type("M");
  const Cell middle = cell();
  type("L");
  EXPECT_LE(top.first, 1);
  EXPECT_NEAR(middle.first, page / 2, 2);
  EXPECT_GE(cell().first, page - 2);
  EXPECT_FALSE(canvas().isAtEnd());
  QTest::keyClick(&canvas(), Qt::Key_Escape);
  canvas().makeFrameNow();
  EXPECT_TRUE(canvas().isAtEnd());
}

TEST_F(CopyModeTest, HoldsTheViewAndTheSelectionWhileOutputGoesOn) {
  start("one two\\r\\n");
  type("gve");
  const std::string shown = canvas().visibleText().toStdString();
  std::string lines;
  for (int i = 0; i < 200; ++i) {
    lines += "more\r\n";
  }
  feed(lines);
  EXPECT_EQ(canvas().visibleText().section(QLatin1Char('\n'), 0, 0), QStringLiteral("one two"));
  EXPECT_EQ(selected(), "one");
  EXPECT_EQ(cell(), Cell(0, 2));
  type("ly");
  EXPECT_EQ(copied(), "one ");
}

TEST_F(CopyModeTest, GoesFromParagraphToParagraphAndFromPromptToPrompt) {
  start("\\033]133;A\\033\\\\$ a\\r\\nb\\r\\n\\r\\n\\033]133;A\\033\\\\$ c\\r\\nd\\r\\n");
  type("{");
  EXPECT_EQ(cell(), Cell(2, 0));
  type("{");
  EXPECT_EQ(cell(), Cell(0, 0));
  type("}");
  EXPECT_EQ(cell(), Cell(2, 0));
  type("]");
  EXPECT_EQ(cell(), Cell(3, 0));
  type("[");
  EXPECT_EQ(cell(), Cell(0, 0));
}

TEST_F(CopyModeTest, EndsWhenTheProgramTurnsToTheOtherScreen) {
  start("one\\r\\n");
  feed("\033[?1049h");
  EXPECT_FALSE(mode->isOn());
}

TEST_F(CopyModeTest, ShowsACursorOfItsOwn) {
  start("one\\r\\n");
  type("gl");
  canvas().makeFrameNow();
  const QImage picture = canvas().viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
  const auto at = [&](int row, int column) {
    const QRectF place = canvas().rectOf(static_cast<std::size_t>(row),
                                         {.begin = CanvasColumn(column), .end = CanvasColumn(column + 1)});
    return picture.pixel(static_cast<int>(place.left()) + 1, static_cast<int>(place.top()) + 1);
  };
  EXPECT_EQ(at(0, 1), 0xFFFF7F24);
  EXPECT_NE(at(0, 0), 0xFFFF7F24);
  EXPECT_EQ(at(1, 1), at(2, 1)) << "and the program's is hidden";
}

TEST_F(CopyModeTest, AsksForWhatIsToBeFound) {
  start("one\\r\\n");
  std::vector<CopyMode::FindStep> steps;
  QObject::connect(mode.get(), &CopyMode::findWanted, mode.get(),
                   [&](CopyMode::FindStep step) { steps.push_back(step); });
  using enum CopyMode::FindStep;
  type("/nN?nN");
  EXPECT_EQ(steps, (std::vector{Open, Next, Previous, Open, Previous, Next}));
}

}  // namespace
}  // namespace zolt
