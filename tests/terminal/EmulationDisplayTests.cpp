// The full emulation in a window: what is shown, and what becomes of the program.
#include <QClipboard>

#include "terminal/DisplayFixture.h"

namespace zolt {
namespace {

using test::waitFor;

class EmulationDisplayTest : public test::DisplayTest {};

TEST_F(EmulationDisplayTest, AnswersTheProgram) {
  start("\\033[6n");
  EXPECT_TRUE(shows("^[[1;1R")) << text();
}

TEST_F(EmulationDisplayTest, TellsTheProgramTheSizeOfTheWindowAndEveryChange) {
  run("stty size; echo READY; read line; stty size; sleep 100");
  ASSERT_TRUE(shows("READY"));
  canvas().resize(500, 300);
  ASSERT_TRUE(waitFor([&] {
    text();
    return display->source().screen()->size.columns == canvas().gridSize().columns;
  }));
  QTest::keyClick(&canvas(), Qt::Key_Return);
  const TerminalSize size = canvas().gridSize();
  std::string line = std::to_string(size.rows);
  line += ' ';
  line += std::to_string(size.columns);
  EXPECT_TRUE(shows(line)) << line << " in " << text();
}

TEST_F(EmulationDisplayTest, LeavesTheGridOfTheLogAloneHoweverOftenItIsResized) {
  start();
  for (int side = 300; side < 500; side += 20) {
    canvas().resize(side, side);
    ASSERT_TRUE(waitFor([&] {
      stopped.advance(std::chrono::milliseconds(50));
      return display->source().screen()->size.rows == canvas().gridSize().rows || (canvas().makeFrameNow(), false);
    }));
  }
  EXPECT_EQ(terminal->getScreenContent().size(), 24U);
}

TEST_F(EmulationDisplayTest, ShowsTheFirstScreenOfANewSizeAtOnce) {
  // No time passes: a frame was made just now, and the next one would have to wait.
  clock = &stopped;
  start();
  canvas().resize(500, 300);
  stopped.advance(std::chrono::microseconds(0));
  EXPECT_TRUE(waitFor([this] { return display->source().screen()->size.columns == canvas().gridSize().columns; }));
}

TEST_F(EmulationDisplayTest, HoldsTheViewWhileOutputGoesOnAndReturnsWithAKey) {
  run("stty raw -echo; i=0; while [ $i -lt 200 ]; do printf 'line %d\\r\\n' $i; i=$((i+1)); done; printf READY; "
      "dd bs=1 count=1 2>/dev/null; printf MORE; exec cat -uv");
  ASSERT_TRUE(shows("READY"));
  canvas().scrollTo(canvas().scrollOffset() - canvas().cellMetrics().height * 50);
  canvas().makeFrameNow();
  const TextRange before = canvas().rangeInView();
  terminal->ptySession().write("x");
  ASSERT_TRUE(shows("MORE"));
  EXPECT_EQ(canvas().rangeInView().begin, before.begin);
  EXPECT_FALSE(canvas().isAtEnd());
  QTest::keyClicks(&canvas(), QStringLiteral("y"));
  EXPECT_TRUE(canvas().isAtEnd());
}

TEST_F(EmulationDisplayTest, ShowsTheScreenFromItsFirstRowWhereItFits) {
  run("seq 500; echo READY; sleep 100");
  ASSERT_TRUE(shows("READY"));
  canvas().makeFrameNow();
  const int rows = canvas().gridSize().rows;
  EXPECT_EQ(canvas().rowsInFrame(), static_cast<std::size_t>(rows)) << "no part of a row above or below it";
}

TEST_F(EmulationDisplayTest, TellsTheProgramAboutFocusIfItAsks) {
  start("\\033[?1004h");
  const std::string before = sent();
  canvas().clearFocus();
  ASSERT_TRUE(waitFor([&] { return sent().ends_with("^[[O"); })) << sent();
  canvas().setFocus();
  ASSERT_TRUE(waitFor([&] { return sent().ends_with("^[[O^[[I"); })) << sent();
}

TEST_F(EmulationDisplayTest, ShowsAHollowCursorWithoutTheKeyboard) {
  settings.cursorBlink = false;
  start("\\033[5;5H");
  const QRect cell = caret();
  const QRgb ground = canvas().colors().background;
  EXPECT_NE(picture().pixel(cell.center()), ground);
  canvas().clearFocus();
  const QImage hollow = picture();
  EXPECT_EQ(hollow.pixel(cell.center()), ground);
  EXPECT_NE(hollow.pixel(cell.topLeft()), ground);
}

TEST_F(EmulationDisplayTest, TakesChangedSettingsAtOnce) {
  start("\\033[31mred\\033[m");
  const TerminalSize before = canvas().gridSize();
  settings.fontSize = 28;
  display->setSettings(settings, true);
  EXPECT_LT(canvas().gridSize().columns, before.columns);
  ASSERT_TRUE(waitFor([&] {
    text();
    return display->source().screen()->size.columns == canvas().gridSize().columns;
  })) << "and the program is told";
  const QRgb dark = canvas().colors().background;
  display->setSettings(settings, false);
  ASSERT_TRUE(waitFor([&] {
    text();
    return canvas().colors().background != dark;
  }));
  EXPECT_GT(qGray(canvas().colors().background), qGray(dark));
  settings.opacity = 0.5;
  display->setSettings(settings, false);
  EXPECT_NEAR(qAlpha(canvas().colors().background), 128, 1);
}

TEST_F(EmulationDisplayTest, PutsOnTheClipboardWhatTheProgramCopies) {
  QApplication::clipboard()->clear();
  start("\\033]52;c;Y29waWVk\\007");
  EXPECT_TRUE(waitFor([] { return QApplication::clipboard()->text() == QStringLiteral("copied"); }));
}

TEST_F(EmulationDisplayTest, TellsTheTitleAndTheBell) {
  int bells = 0;
  QString title;
  run("sleep 0.2; printf '\\033]2;my title\\007\\007'; sleep 100");
  QObject::connect(display.get(), &EmulationDisplay::bellRang, [&] { ++bells; });
  QObject::connect(display.get(), &EmulationDisplay::titleChanged, [&](const QString& now) { title = now; });
  EXPECT_TRUE(waitFor([&] {
    text();
    return bells == 1 && title == QStringLiteral("my title");
  })) << bells
      << title.toStdString();
}

TEST_F(EmulationDisplayTest, ResizesTheWindowForAProgramThatMay) {
  settings.allowWindowRequests = true;
  run("sleep 0.2; printf '\\033[8;10;40tREADY'; sleep 100");
  ASSERT_TRUE(shows("READY"));
  // The canvas does not fill this window, but the window changes by as much as the text is to change.
  EXPECT_TRUE(waitFor([&] { return window->width() < 800 && window->height() < 500; }));
}

TEST_F(EmulationDisplayTest, AddsANoticeBelowTheTextWhateverModesTheProgramLeft) {
  run("stty raw -echo; printf 'first\\r\\nsecond\\r\\n\\033[41m\\033(0\\033[2;10r\\033[?6h\\033[4hREADY\\033]2;un'; "
      "exec cat -uv");
  ASSERT_TRUE(waitFor([&] {
    text();
    return display->source().screen()->cursor.position.column == 5;
  }));
  display->addNotice(QStringLiteral("It ended."));
  ASSERT_TRUE(shows("It ended."));
  EXPECT_LT(text().find("second"), text().find("It ended.")) << text();
  const std::size_t row = static_cast<std::size_t>(canvas().source().rowAt(find("It ended.").begin).value);
  const auto& shown = *display->source().screen()->rows[row];
  EXPECT_EQ(shown.text, "It ended.");
  EXPECT_EQ(shown.runs.front().style, vt::Style());
  EXPECT_FALSE(display->source().screen()->cursor.isVisible);
}

TEST_F(EmulationDisplayTest, AddsANoticeToTheMainScreenIfTheProgramLeftTheAlternateOne) {
  run("stty raw -echo; i=0; while [ $i -lt 100 ]; do printf 'line %d\\r\\n' $i; i=$((i+1)); done; "
      "printf '\\033[?1049h\\033[?1000hREADY'; exec cat -uv");
  ASSERT_TRUE(shows("READY"));
  display->addNotice(QStringLiteral("It ended."));
  ASSERT_TRUE(shows("line 99\nIt ended.")) << text();
  EXPECT_EQ(text().find("READY"), std::string::npos);
  EXPECT_NE(text().find("line 5\n"), std::string::npos) << "the history is there";
  EXPECT_EQ(display->source().screen()->input.mouse.tracking, vt::MouseTracking::Off);
}

TEST_F(EmulationDisplayTest, IsOpaqueInFullScreen) {
  settings.opacity = 0.5;
  start();
  const auto alpha = [&] { return qAlpha(canvas().colors().background); };
  ASSERT_TRUE(waitFor([&] { return alpha() == 128; }));
  window->setWindowState(Qt::WindowFullScreen);
  EXPECT_TRUE(waitFor([&] { return alpha() == 255; }));
  window->setWindowState(Qt::WindowNoState);
  EXPECT_TRUE(waitFor([&] { return alpha() == 128; }));
}

TEST_F(EmulationDisplayTest, EndsWhileTheProgramFloods) {
  for (int i = 0; i < 3; ++i) {
    run("yes");
    ASSERT_TRUE(shows("y\ny"));
    TearDown();
  }
}

}  // namespace
}  // namespace zolt
