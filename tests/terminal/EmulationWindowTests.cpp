#include "terminal/EmulationDisplay.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QInputMethodEvent>
#include <QTest>
#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/WaitFor.h"

namespace zolt {
namespace {

using test::waitFor;

/// A display in a window of its own, whose program is the test child in a mode.
class EmulationWindowTest : public testing::Test {
 protected:
  void open(std::vector<std::string> mode, const EmulationSettings& initial = {}) {
    const TerminalSize size{.rows = 24, .columns = 80};
    settings = initial;
    settings.cursorBlink = false;  // pictures are compared
    terminal = std::make_unique<TerminalController>(
        Shell{.name = "Child", .executable = ZOLT_TEST_CHILD, .args = std::move(mode), .icon = "terminal"},
        TerminalController::Restart::Never, size);
    window = std::make_unique<QWidget>();
    display = std::make_unique<EmulationDisplay>(*terminal, size, settings, true, window.get());
    canvas().resize(700, 500);
    window->resize(700, 500);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get(), test::kPatience.count()));
    canvas().setFocus();
  }

  TextCanvas& canvas() { return display->canvas(); }
  void apply(bool isDark = true) { display->setSettings(settings, isDark); }
  std::string shown() {
    canvas().makeFrameNow();
    return canvas().visibleText().toStdString();
  }
  bool waitForText(const std::string& text) {
    return waitFor([&] { return shown().find(text) != std::string::npos; });
  }
  std::string sizeText() {
    return std::to_string(canvas().gridSize().rows) + "x" + std::to_string(canvas().gridSize().columns);
  }
  QImage picture() {
    canvas().makeFrameNow();
    return canvas().grab().toImage();
  }
  /// Where the test child's text of one line stands, in the viewport.
  QPoint placeOf(const std::string& text) {
    const auto at = static_cast<int>(shown().find(text));
    return canvas().rectOf(canvas().textInView().placeOf(at).position).center().toPoint();
  }

  EmulationSettings settings;
  std::unique_ptr<TerminalController> terminal;
  std::unique_ptr<QWidget> window;
  std::unique_ptr<EmulationDisplay> display;
};

TEST_F(EmulationWindowTest, ShowsAtTheCursorWhatAnInputMethodComposesAndSendsWhatItCommits) {
  open({"hex"});
  ASSERT_TRUE(waitForText("ready"));
  const QImage before = picture();
  QInputMethodQueryEvent where(Qt::ImCursorRectangle);
  QApplication::sendEvent(&canvas(), &where);
  const QRect caret = where.value(Qt::ImCursorRectangle).toRect();

  QInputMethodEvent composing(QStringLiteral("\u3042"), {});
  QApplication::sendEvent(&canvas(), &composing);
  const QImage composed = picture();
  EXPECT_NE(composed.copy(caret), before.copy(caret)) << "at the cursor";
  const QRect above(0, 0, composed.width(), std::max(caret.top() - 1, 0));
  EXPECT_EQ(composed.copy(above), before.copy(above)) << "and nowhere above it";
  EXPECT_EQ(canvas().visibleText().count(QStringLiteral("\u3042")), 0) << "it is not text yet";

  QInputMethodEvent committing;
  committing.setCommitString(QStringLiteral("\u4E9C"));
  QApplication::sendEvent(&canvas(), &committing);
  EXPECT_TRUE(waitForText("E4 BA 9C")) << shown();
}

TEST_F(EmulationWindowTest, TakesBackACompositionThatIsGivenUp) {
  open({"wait"});
  ASSERT_TRUE(waitForText("waiting"));
  const QImage before = picture();
  QInputMethodEvent composing(QStringLiteral("\u3042"), {});
  QApplication::sendEvent(&canvas(), &composing);
  ASSERT_NE(picture(), before);
  QInputMethodEvent givenUp;
  QApplication::sendEvent(&canvas(), &givenUp);
  EXPECT_EQ(picture(), before);
}

TEST_F(EmulationWindowTest, TellsTheProgramTheSizeThatAnotherFontMakes) {
  open({"size"});
  ASSERT_TRUE(waitForText(sizeText()));
  const int rowsBefore = canvas().gridSize().rows;
  settings.fontSize = 28;
  apply();
  ASSERT_TRUE(waitFor([&] { return canvas().gridSize().rows < rowsBefore; }));
  EXPECT_TRUE(waitForText(sizeText()));
  const int rowsAtThisSize = canvas().gridSize().rows;
  settings.lineSpacing = 2;
  apply();
  ASSERT_TRUE(waitFor([&] { return canvas().gridSize().rows < rowsAtThisSize; }));
  EXPECT_TRUE(waitForText(sizeText()));
}

TEST_F(EmulationWindowTest, ShowsTheFixedPitchFontInsteadOfOneThatIsNotInstalled) {
  EmulationSettings missing;
  missing.fontFamily = "No Such Font 4711";
  open({"size"}, missing);
  EXPECT_TRUE(waitForText(sizeText()));
  EXPECT_GT(canvas().gridSize().columns, 20);
  settings.fontFamily.clear();
  apply();
  EXPECT_TRUE(waitForText(sizeText()));
}

TEST_F(EmulationWindowTest, FollowsTheThemeWhileAProgramRuns) {
  open({"wait"});
  ASSERT_TRUE(waitForText("waiting"));
  const auto corner = [this] { return picture().pixelColor(600, 450); };
  const QColor dark = corner();
  apply(false);
  ASSERT_TRUE(waitFor([&] { return corner() != dark; }));
  EXPECT_GT(corner().lightness(), dark.lightness());
  apply(true);
  EXPECT_TRUE(waitFor([&] { return corner() == dark; }));
}

TEST_F(EmulationWindowTest, DrawsTheCursorInTheStyleThatIsSet) {
  open({"wait"});
  ASSERT_TRUE(waitForText("waiting"));
  const QImage block = picture();
  for (const auto style : {Config::CursorStyle::Line, Config::CursorStyle::Bar}) {
    settings.cursorStyle = style;
    apply();
    EXPECT_TRUE(waitFor([&] { return picture() != block; }));
  }
  settings.cursorStyle = Config::CursorStyle::Block;
  apply();
  EXPECT_TRUE(waitFor([&] { return picture() == block; }));
}

TEST_F(EmulationWindowTest, ForgetsLinesBeyondALimitThatIsLoweredAndKeepsThemWithoutOne) {
  EmulationSettings without;
  without.scrollbackLines.reset();
  open({"flood", "1600000"}, without);  // 20000 lines
  ASSERT_TRUE(waitFor([&] {
    canvas().makeFrameNow();
    return display->emulator().isSettled() && display->source().rowCount() >= 20000;
  }));
  settings.scrollbackLines = 10;
  apply();
  EXPECT_TRUE(waitFor([&] {
    canvas().makeFrameNow();
    return display->source().rowCount() < 10000;
  })) << "whole blocks go";
}

TEST_F(EmulationWindowTest, GivesTheMouseBackToTheUserWhenProgramsMayNotHaveIt) {
  open({"raw", R"(\x1b[?1000h\x1b[?1006hword )"});
  ASSERT_TRUE(waitForText("word"));
  const auto doubleClick = [this] {
    QTest::mouseDClick(canvas().viewport(), Qt::LeftButton, Qt::NoModifier, placeOf("word"));
    return canvas().selectedText().toStdString();
  };
  EXPECT_EQ(doubleClick(), "") << "the program's";
  settings.enableMouseReporting = false;
  apply();
  EXPECT_EQ(doubleClick(), "word");
}

}  // namespace
}  // namespace zolt
