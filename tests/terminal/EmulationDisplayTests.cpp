// The full emulation in a window, with a real program on a real pseudo-terminal.
#include "terminal/EmulationDisplay.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>
#include <memory>
#include <string>

#include "canvas/CanvasLiterals.h"
#include "support/ManualClock.h"
#include "support/WaitFor.h"
#include "terminal/input/KeyTranslation.h"

namespace zolt {
namespace {

using test::waitFor;

class EmulationDisplayTest : public testing::Test {
 protected:
  // A program that prints `prologue`, and then whatever it is sent, in a visible form.
  void start(const std::string& prologue = "") {
    const std::string script = "stty raw -echo; printf '" + prologue + "'; printf READY; exec cat -uv";
    run(script);
    ASSERT_TRUE(shows("READY"));
  }
  void run(const std::string& script) {
    window = std::make_unique<QWidget>();
    terminal = std::make_unique<TerminalController>(
        Shell{.name = "sh", .executable = "/bin/sh", .args = {"-c", script}, .icon = "terminal"},
        TerminalController::Restart::Never, TerminalSize{.rows = 24, .columns = 80});
    display = std::make_unique<EmulationDisplay>(*terminal, TerminalSize{.rows = 24, .columns = 80}, settings, true,
                                                 window.get(), *clock);
    window->resize(800, 500);
    canvas().resize(800, 500);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get(), test::kPatience.count()));
    QApplication::setActiveWindow(window.get());
    canvas().setFocus();
    // The program is told the size of the window once. Frames that are paced wait for the clock that the test moves.
    ASSERT_TRUE(waitFor([this] {
      stopped.advance(std::chrono::milliseconds(50));
      return display->source().screen()->size.columns == canvas().gridSize().columns;
    }));
  }
  void TearDown() override {
    display.reset();
    terminal.reset();
    window.reset();
  }

  TextCanvas& canvas() { return display->canvas(); }
  std::string text() {
    canvas().makeFrameNow();
    EmulationSource& source = display->source();
    return source.text({.begin = source.begin(), .end = source.end()});
  }
  bool shows(const std::string& wanted) {
    return waitFor([&] { return text().find(wanted) != std::string::npos; });
  }
  // What the program was sent, as cat -v shows it.
  std::string sent() {
    const std::string all = text();
    const std::string after = all.substr(all.find("READY") + 5);
    return after.substr(0, after.find('\n'));
  }
  bool isSent(const std::string& wanted) {
    return waitFor([&] { return sent() == wanted; });
  }
  QPoint middleOf(TextPosition position) { return canvas().rectOf(position).center().toPoint(); }
  TextRange find(const std::string& wanted) {
    EmulationSource& source = display->source();
    const std::size_t at = text().find(wanted);
    EXPECT_NE(at, std::string::npos) << wanted;
    return {.begin = source.begin() + at, .end = source.begin() + at + wanted.size()};
  }
  // Where the cursor is, as input methods are told.
  QRect caret() {
    canvas().makeFrameNow();
    QInputMethodQueryEvent query(Qt::ImCursorRectangle);
    QApplication::sendEvent(&canvas(), &query);
    return query.value(Qt::ImCursorRectangle).toRect();
  }
  QWidget& view() { return *canvas().viewport(); }
  void hover(QPoint at) { moveTo(at, Qt::NoButton, Qt::NoModifier); }
  void moveTo(QPoint at, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    QMouseEvent move(QEvent::MouseMove, at, view().mapToGlobal(at), Qt::NoButton, buttons, modifiers);
    QApplication::sendEvent(&view(), &move);
  }
  // Drags with the left button, from within the left edge of the one character to that of the other.
  void drag(TextPosition from, TextPosition to, Qt::KeyboardModifiers modifiers) {
    const auto leftOf = [this](TextPosition place) {
      return canvas().rectOf(place).topLeft().toPoint() + QPoint(1, 3);
    };
    QTest::mousePress(&view(), Qt::LeftButton, modifiers, leftOf(from));
    moveTo(leftOf(to), Qt::LeftButton, modifiers);
    QTest::mouseRelease(&view(), Qt::LeftButton, modifiers, leftOf(to));
  }
  QMessageBox* question() {
    for (auto* each : window->findChildren<QMessageBox*>()) {
      if (each->isVisible()) return each;
    }
    return nullptr;
  }
  QAbstractButton& button(const QString& label) {
    for (QAbstractButton* each : question()->buttons()) {
      if (each->text().remove(QLatin1Char('&')) == label) return *each;
    }
    ADD_FAILURE() << "no button " << label.toStdString();
    return *question()->buttons().front();
  }
  QImage picture() {
    canvas().makeFrameNow();
    return view().grab().toImage().convertToFormat(QImage::Format_RGB32);
  }

  EmulationSettings settings;
  test::ManualClock stopped;
  Clock* clock = &Clock::steady();
  std::unique_ptr<QWidget> window;
  std::unique_ptr<TerminalController> terminal;
  std::unique_ptr<EmulationDisplay> display;
};

TEST_F(EmulationDisplayTest, SendsKeysInTheModesOfTheProgram) {
  start();
  QTest::keyClicks(&canvas(), QStringLiteral("ab"));
  QTest::keyClick(&canvas(), Qt::Key_Up);
  QTest::keyClick(&canvas(), Qt::Key_C, Qt::ControlModifier);
  ASSERT_TRUE(isSent("ab^[[A^C")) << sent();
}

TEST_F(EmulationDisplayTest, SendsCursorKeysAsTheProgramAsksForThem) {
  start("\\033[?1h");
  QTest::keyClick(&canvas(), Qt::Key_Up);
  ASSERT_TRUE(isSent("^[OA")) << sent();
}

TEST_F(EmulationDisplayTest, SendsReleasesWhereTheProgramAsksForEvents) {
  start("\\033[>3u");
  QTest::keyClick(&canvas(), Qt::Key_F1);
  ASSERT_TRUE(isSent("^[[P^[[1;1:3P")) << sent();
}

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

TEST_F(EmulationDisplayTest, ShowsTheFirstScreenOfANewSizeAtOnce) {
  // No time passes: a frame was made just now, and the next one would have to wait.
  clock = &stopped;
  start();
  canvas().resize(500, 300);
  stopped.advance(std::chrono::microseconds(0));
  EXPECT_TRUE(waitFor([this] { return display->source().screen()->size.columns == canvas().gridSize().columns; }));
}

TEST_F(EmulationDisplayTest, ComposesTextAtTheCursorAndSendsWhatIsCommitted) {
  start("\\033[5;10H");
  const QRect cell = caret();
  const std::string before = sent();
  QInputMethodEvent composing(QStringLiteral("\u304B"), {});
  QApplication::sendEvent(&canvas(), &composing);
  EXPECT_EQ(sent(), before) << "nothing is sent yet";
  QInputMethodEvent committed;
  committed.setCommitString(QStringLiteral("\u6F22"));
  QApplication::sendEvent(&canvas(), &committed);
  EXPECT_TRUE(shows("M-fM-<M-\"")) << text();
  EXPECT_GT(cell.top(), 0);
}

TEST_F(EmulationDisplayTest, ReportsTheMouseToAProgramThatTracksIt) {
  start("\\033[?1000h\\033[?1006h\\033[3;1Hhere\\033[10;1H");
  const QPoint at = middleOf(find("here").begin + 2);
  QTest::mouseClick(&view(), Qt::LeftButton, Qt::NoModifier, at);
  ASSERT_TRUE(isSent("^[[<0;3;3M^[[<0;3;3m")) << sent();
  EXPECT_TRUE(canvas().selection().empty());
}

TEST_F(EmulationDisplayTest, KeepsTheMouseForTheUserWithShiftAndWithoutTracking) {
  start("\\033[?1002h\\033[?1006h\\033[3;1Hselect me\\033[10;1H");
  drag(find("select").begin, find("select").end, Qt::ShiftModifier);
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("select"));
  EXPECT_EQ(sent(), "");
  settings.enableMouseReporting = false;
  display->setSettings(settings, true);
  QTest::mouseDClick(&view(), Qt::LeftButton, Qt::NoModifier, middleOf(find("me").begin));
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("me"));
  EXPECT_EQ(sent(), "");
}

TEST_F(EmulationDisplayTest, BeginsASelectionWithShiftEachTimeWhereTheProgramUsesTheMouse) {
  start("\\033[?1002h\\033[?1006h\\033[3;1Hone two three four\\033[10;1H");
  drag(find("one").begin, find("one").end, Qt::ShiftModifier);
  drag(find("three").begin, find("three").end, Qt::ShiftModifier);
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("three"));
}

TEST_F(EmulationDisplayTest, ExtendsTheSelectionWithShiftWhereItDoesNot) {
  start("\\033[3;1Hone two three four\\033[10;1H");
  drag(find("one").begin, find("one").end, Qt::NoModifier);
  drag(find("three").end, find("three").end, Qt::ShiftModifier);
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("one two three"));
}

TEST_F(EmulationDisplayTest, BeginsANewSelectionOnTheOtherScreen) {
  start("\\033[3;1Hone two three four\\033[10;1H");
  drag(find("one").begin, find("one").end, Qt::NoModifier);
  display->emulator().feed(Bytes(std::string("\033[?1049h\033[5;1Hfour five six")));
  ASSERT_TRUE(shows("four five six"));
  drag(find("five").begin, find("five").end, Qt::ShiftModifier);
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("five"));
}

TEST_F(EmulationDisplayTest, ReportsTheReleaseOfAButtonThatWasReportedWhateverIsHeldByThen) {
  start("\\033[?1002h\\033[?1006h\\033[3;1Hhere\\033[10;1H");
  const QPoint at = middleOf(find("here").begin);
  QTest::mousePress(&view(), Qt::LeftButton, Qt::NoModifier, at);
  QTest::mouseRelease(&view(), Qt::LeftButton, Qt::ShiftModifier, at);
  ASSERT_TRUE(isSent("^[[<0;1;3M^[[<4;1;3m")) << sent();
  EXPECT_TRUE(canvas().selection().empty());
}

TEST_F(EmulationDisplayTest, ReportsAReleaseThatGotLostWhenThePointerMovesAgain) {
  start("\\033[?1002h\\033[?1006h\\033[3;1Hhere\\033[10;1H");
  const QPoint at = middleOf(find("here").begin);
  QTest::mousePress(&view(), Qt::RightButton, Qt::NoModifier, at);
  const QPoint beside = middleOf(find("here").begin + 2);
  for (int i = 0; i < 2; ++i) {
    QMouseEvent move(QEvent::MouseMove, beside, view().mapToGlobal(beside), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&view(), &move);
  }
  ASSERT_TRUE(isSent("^[[<2;1;3M^[[<2;3;3m")) << sent();
}

TEST_F(EmulationDisplayTest, ShowsNoMenuWhereTheProgramTakesTheClick) {
  start("\\033[?1000h\\033[?1006h\\033[3;1Hhere\\033[10;1H");
  const QPoint at = middleOf(find("here").begin);
  const auto click = [&](Qt::KeyboardModifiers modifiers) {
    QTest::mousePress(&view(), Qt::RightButton, modifiers, at);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, at, view().mapToGlobal(at), modifiers);
    QApplication::sendEvent(&view(), &menu);
    QTest::mouseRelease(&view(), Qt::RightButton, modifiers, at);
  };
  click(Qt::NoModifier);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  ASSERT_TRUE(isSent("^[[<2;1;3M^[[<2;1;3m")) << sent();
  click(Qt::ShiftModifier);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  QApplication::activePopupWidget()->close();
}

TEST_F(EmulationDisplayTest, TellsOfTheReleaseOnlyOfKeysWhosePressItHasTold) {
  start("\\033[>3u");
  QTest::keyPress(&canvas(), Qt::Key_PageUp, Qt::ShiftModifier);  // scrolls
  QTest::keyRelease(&canvas(), Qt::Key_PageUp, Qt::ShiftModifier);
  QTest::keyRelease(&canvas(), Qt::Key_Escape);  // pressed elsewhere
  QTest::keyPress(&canvas(), Qt::Key_F5);
  QTest::keyRelease(&canvas(), Qt::Key_F5);
  ASSERT_TRUE(isSent("^[[15~^[[15;1:3~")) << sent();
}

TEST_F(EmulationDisplayTest, TellsThatAKeyRepeatsWhichIsPressedWhileItIsHeld) {
  start("\\033[>3u");
  for (int i = 0; i < 3; ++i) {
    QTest::keyPress(&canvas(), Qt::Key_F5);
  }
  QTest::keyRelease(&canvas(), Qt::Key_F5);
  QTest::keyPress(&canvas(), Qt::Key_F5);
  ASSERT_TRUE(isSent("^[[15~^[[15;1:2~^[[15;1:2~^[[15;1:3~^[[15~")) << sent();
}

TEST_F(EmulationDisplayTest, SendsNoRepeatsWithoutAutoRepeat) {
  start("\\033[?8l");
  for (int i = 0; i < 3; ++i) {
    QTest::keyPress(&canvas(), Qt::Key_A, Qt::NoModifier);
  }
  QTest::keyRelease(&canvas(), Qt::Key_A);
  QTest::keyClick(&canvas(), Qt::Key_B);
  ASSERT_TRUE(isSent("ab")) << sent();
}

TEST_F(EmulationDisplayTest, PastesWhatIsSelectedWithShiftInsert) {
  start();
  QClipboard* clipboard = QApplication::clipboard();
  clipboard->setText(QStringLiteral("selected"),
                     clipboard->supportsSelection() ? QClipboard::Selection : QClipboard::Clipboard);
  QTest::keyClick(&canvas(), Qt::Key_Insert, Qt::ShiftModifier);
  ASSERT_TRUE(isSent("selected")) << sent();
}

TEST_F(EmulationDisplayTest, ClaimsAllKeysWithSuperWhereThatIsMeta) {
  if (kKeyboardSystem != KeyboardSystem::Xkb) GTEST_SKIP() << "Command stays the menus'";
  start();
  const auto isClaimed = [&](Qt::KeyboardModifiers modifiers) {
    QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_W, modifiers);
    event.ignore();
    QApplication::sendEvent(&canvas(), &event);
    return event.isAccepted();
  };
  EXPECT_FALSE(isClaimed(Qt::MetaModifier));
  settings.commandActsAsMeta = true;
  display->setSettings(settings, true);
  EXPECT_TRUE(isClaimed(Qt::MetaModifier));
  EXPECT_FALSE(isClaimed(Qt::ControlModifier | Qt::ShiftModifier));
  QTest::keyClick(&canvas(), Qt::Key_W, Qt::MetaModifier);
  ASSERT_TRUE(isSent("^[w")) << sent();
}

TEST_F(EmulationDisplayTest, ClaimsFunctionKeysOfTheWindowForTheProgram) {
  start();
  const auto isClaimed = [&](int key, Qt::KeyboardModifiers modifiers) {
    QKeyEvent event(QEvent::ShortcutOverride, key, modifiers);
    event.ignore();
    QApplication::sendEvent(&canvas(), &event);
    return event.isAccepted();
  };
  EXPECT_TRUE(isClaimed(Qt::Key_F10, Qt::NoModifier));
  EXPECT_TRUE(isClaimed(Qt::Key_F11, Qt::ShiftModifier));
  EXPECT_FALSE(isClaimed(Qt::Key_F10, Qt::ControlModifier | Qt::ShiftModifier));
  EXPECT_FALSE(isClaimed(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier));
}

TEST_F(EmulationDisplayTest, LeavesTheClipboardAloneWhereNothingCanBeCopied) {
  start("\\033[3;1Hhere\\033[10;1H");
  canvas().select(find("here"));
  QApplication::clipboard()->setText(QStringLiteral("precious"));
  display->emulator().feed(Bytes(std::string("\033[?1049h")));
  ASSERT_TRUE(waitFor([&] {
    text();
    return display->source().screen()->isAlternate;
  }));
  EXPECT_FALSE(canvas().canCopy());
  canvas().copy();
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("precious"));
  display->emulator().feed(Bytes(std::string("\033[?1049l")));
  ASSERT_TRUE(shows("here"));
  canvas().copy();
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("here"));
}

TEST_F(EmulationDisplayTest, SelectsRectanglesWithAlt) {
  start("\\033[1;1Habcdef\\r\\nghijkl\\r\\nmnopqr\\033[10;1H");
  drag(find("b").begin, find("q").begin, Qt::AltModifier);
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("bcd\nhij\nnop"));
}

TEST_F(EmulationDisplayTest, TurnsTheWheelIntoCursorKeysOnTheAlternateScreen) {
  start("\\033[?1049h");
  const QPoint at(50, 50);
  QWheelEvent turn(at, view().mapToGlobal(at), {}, QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                   false);
  QApplication::sendEvent(&view(), &turn);
  ASSERT_TRUE(isSent("^[[A^[[A^[[A")) << sent();
}

TEST_F(EmulationDisplayTest, ScrollsTheViewWithTheWheelOverTheHistoryWhateverTheProgramTracks) {
  run("stty raw -echo; seq 500 | tr '\\n' ' ' | fold -w 40; seq -f 'line %g\r' 300; printf "
      "'\\033[?1000h\\033[?1006hREADY'; exec cat -uv");
  ASSERT_TRUE(shows("READY"));
  canvas().scrollTo(canvas().scrollOffset() - canvas().cellMetrics().height * 100);
  canvas().makeFrameNow();
  const DevicePixels before = canvas().scrollOffset();
  const QPoint at(50, 50);
  QWheelEvent turn(at, view().mapToGlobal(at), {}, QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                   false);
  QApplication::sendEvent(&view(), &turn);
  canvas().makeFrameNow();
  EXPECT_LT(canvas().scrollOffset(), before);
  EXPECT_EQ(sent(), "");
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

TEST_F(EmulationDisplayTest, ScrollsByPagesWithShift) {
  run("seq 500; echo READY; sleep 100");
  ASSERT_TRUE(shows("READY"));
  const DevicePixels end = canvas().scrollOffset();
  QTest::keyClick(&canvas(), Qt::Key_PageUp, Qt::ShiftModifier);
  EXPECT_EQ(canvas().scrollOffset(), end - canvas().pageHeight());
  QTest::keyClick(&canvas(), Qt::Key_Home, Qt::ShiftModifier);
  EXPECT_EQ(canvas().scrollOffset(), 0_px);
  QTest::keyClick(&canvas(), Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(canvas().scrollOffset(), end);
}

TEST_F(EmulationDisplayTest, ShowsTheScreenFromItsFirstRowWhereItFits) {
  run("seq 500; echo READY; sleep 100");
  ASSERT_TRUE(shows("READY"));
  canvas().makeFrameNow();
  const int rows = canvas().gridSize().rows;
  EXPECT_EQ(canvas().rowsInFrame(), static_cast<std::size_t>(rows)) << "no part of a row above or below it";
}

TEST_F(EmulationDisplayTest, AsksBeforeAPasteOfSeveralLinesAndSendsItOnlyThen) {
  start();
  QApplication::clipboard()->setText(QStringLiteral("one\ntwo\n"));
  canvas().paste();
  ASSERT_NE(question(), nullptr);
  EXPECT_EQ(sent(), "");
  button(QStringLiteral("Cancel")).click();
  ASSERT_TRUE(waitFor([&] { return question() == nullptr; }));
  EXPECT_EQ(sent(), "");
  canvas().paste();
  ASSERT_NE(question(), nullptr);
  button(QStringLiteral("Paste")).click();
  ASSERT_TRUE(isSent("one^Mtwo^M")) << sent();
}

TEST_F(EmulationDisplayTest, PastesWithoutAQuestionBetweenBrackets) {
  start("\\033[?2004h");
  QApplication::clipboard()->setText(QStringLiteral("one\ntwo\x1b[201~x"));
  canvas().paste();
  EXPECT_EQ(question(), nullptr);
  ASSERT_TRUE(isSent("^[[200~one^Mtwo[201~x^[[201~")) << sent();
}

TEST_F(EmulationDisplayTest, AsksNothingBeforeAPasteIfTheUserHasTurnedThatOff) {
  settings.askBeforeRiskyPaste = false;
  start();
  QApplication::clipboard()->setText(QStringLiteral("one\ntwo"));
  canvas().paste();
  EXPECT_EQ(question(), nullptr);
  ASSERT_TRUE(isSent("one^Mtwo")) << sent();
}

TEST_F(EmulationDisplayTest, TypesThePathOfADroppedFileQuoted) {
  start();
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a b'c"))});
  QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&view(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&view(), &drop);
  ASSERT_TRUE(isSent("'/tmp/a b'\\''c' ")) << sent();
}

TEST_F(EmulationDisplayTest, ShowsWhereALinkLeadsAndAsksBeforeUnusualOnes) {
  start("\\033[3;1H\\033]8;;telnet://example.org/\\033\\\\click\\033]8;;\\033\\\\\\033[10;1H");
  const QPoint at = middleOf(find("click").begin + 1);
  hover(at);
  auto* label = view().findChild<QLabel*>(QStringLiteral("linkLabel"));
  ASSERT_NE(label, nullptr);
  EXPECT_TRUE(label->isVisible());
  EXPECT_EQ(label->text(), QStringLiteral("telnet://example.org/"));
  QTest::mouseClick(&view(), Qt::LeftButton, Qt::NoModifier, at);
  EXPECT_EQ(question(), nullptr) << "a click alone opens nothing";
  QTest::mouseClick(&view(), Qt::LeftButton, Qt::ControlModifier, at);
  ASSERT_NE(question(), nullptr);
  button(QStringLiteral("Cancel")).click();
}

TEST_F(EmulationDisplayTest, HidesWhereALinkLeadsOnceAnotherTextIsUnderThePointer) {
  start("\\033[3;1H\\033]8;;https://example.org/one\\033\\\\click\\033]8;;\\033\\\\\\033[10;1H");
  const QPoint at = middleOf(find("click").begin + 1);
  hover(at);
  auto* label = view().findChild<QLabel*>(QStringLiteral("linkLabel"));
  ASSERT_NE(label, nullptr);
  ASSERT_TRUE(label->isVisible());
  const auto print = [this](const std::string& output) { display->emulator().feed(Bytes(output)); };
  print("\033[3;1H\033]8;;https://example.org/two\033\\CLICK\033]8;;\033\\");
  EXPECT_TRUE(waitFor([&] {
    canvas().makeFrameNow();
    return label->text() == QStringLiteral("https://example.org/two");
  })) << label->text().toStdString();
  EXPECT_TRUE(label->isVisible());
  print("\033[2;1Habove\033[10;1H");
  text();
  EXPECT_TRUE(label->isVisible()) << "its own text is as it was";
  print("\033[3;1Hnothing");
  EXPECT_TRUE(waitFor([&] {
    canvas().makeFrameNow();
    return !label->isVisible();
  }));
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

TEST_F(EmulationDisplayTest, SendsAltAsTheUserHasSetIt) {
  settings.optionSendsMeta = true;
  start();
  QTest::keyClick(&canvas(), Qt::Key_A, Qt::AltModifier);
  ASSERT_TRUE(isSent("^[a")) << sent();
  settings.optionSendsMeta = false;
  display->setSettings(settings, true);
  QTest::keyClick(&canvas(), Qt::Key_A, Qt::AltModifier);
  ASSERT_TRUE(isSent("^[aa")) << sent();
}

TEST_F(EmulationDisplayTest, SendsAltInAnyCaseToAProgramThatAsksForModifiers) {
  settings.optionSendsMeta = false;
  start("\\033[>4;2m");
  QTest::keyClick(&canvas(), Qt::Key_A, Qt::AltModifier);
#ifdef Q_OS_MACOS
  ASSERT_TRUE(isSent("a")) << sent();
#else
  ASSERT_TRUE(isSent("^[[27;3;97~")) << sent();
#endif
}

TEST_F(EmulationDisplayTest, OpensALinkWithoutTellingAProgramThatUsesTheMouse) {
  start(
      "\\033[?1002h\\033[?1006h\\033[3;1H\\033]8;;telnet://example.org/\\033\\\\example\\033]8;;\\033\\\\\\033[10;1H");
  const QPoint at = middleOf(find("example").begin);
  QTest::mouseMove(&view(), at + QPoint(1, 0));
  QTest::mouseClick(&view(), Qt::LeftButton, Qt::ControlModifier, at);
  ASSERT_NE(question(), nullptr);
  button(QStringLiteral("Cancel")).click();
  QTest::mouseClick(&view(), Qt::LeftButton, Qt::NoModifier, at);
  ASSERT_TRUE(waitFor([&] { return sent().ends_with('m'); })) << sent();
  EXPECT_EQ(sent().find('m'), sent().size() - 1) << "one release, that of the other click: " << sent();
  EXPECT_TRUE(sent().starts_with("^[[<0;")) << sent();
}

TEST_F(EmulationDisplayTest, DropsASelectionWhoseTextTheProgramRewrites) {
  run("stty raw -echo; printf 'one two\\r\\nthree\\r\\n'; printf READY; dd bs=1 count=1 2>/dev/null; "
      "printf '\\033[1;1HONE\\033[2;4HEE\\033[5;1HNEXT'; dd bs=1 count=1 2>/dev/null; "
      "printf '\\033[1;5HTW\\033[6;1HLAST'; exec cat -uv");
  ASSERT_TRUE(shows("READY"));
  canvas().select(find("two"));
  terminal->ptySession().write("x");
  ASSERT_TRUE(shows("NEXT"));
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("two")) << "what was rewritten is beside it";
  terminal->ptySession().write("x");
  ASSERT_TRUE(shows("LAST"));
  EXPECT_TRUE(canvas().selection().empty());
  if (QApplication::clipboard()->supportsSelection()) {
    EXPECT_EQ(QApplication::clipboard()->text(QClipboard::Selection), QStringLiteral("two"));
  }
}

TEST_F(EmulationDisplayTest, KeepsASelectionThatScrollsIntoTheHistoryOrIsWrappedAnew) {
  run("stty raw -echo; printf 'one two three four\\r\\nREADY\\r\\n'; dd bs=1 count=1 2>/dev/null; "
      "i=0; while [ $i -lt 200 ]; do printf 'line\\r\\n'; i=$((i+1)); done; printf MORE; exec cat -uv");
  ASSERT_TRUE(shows("READY"));
  canvas().select(find("two three"));
  canvas().resize(100, 500);
  ASSERT_TRUE(waitFor([&] {
    text();
    return display->source().screen()->size.columns == canvas().gridSize().columns;
  }));
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("two three"));
  terminal->ptySession().write("x");
  ASSERT_TRUE(shows("MORE"));
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("two three"));
}

TEST_F(EmulationDisplayTest, KeepsWhatIsLeftOfASelectionThatIsTrimmed) {
  settings.scrollbackLines = 10;
  run("stty raw -echo; i=0; while [ $i -lt 100 ]; do printf 'line %d\\r\\n' $i; i=$((i+1)); done; printf READY; "
      "dd bs=1 count=1 2>/dev/null; i=0; while [ $i -lt 8 ]; do printf 'more\\r\\n'; i=$((i+1)); done; "
      "printf MORE; exec cat -uv");
  ASSERT_TRUE(shows("READY"));
  canvas().select({.begin = display->source().begin(), .end = find("line 98").end});
  terminal->ptySession().write("x");
  ASSERT_TRUE(shows("MORE"));
  EXPECT_TRUE(canvas().selectedText().endsWith(QStringLiteral("line 98")));
}

TEST_F(EmulationDisplayTest, DropsARectangleWhoseTextTheProgramRewrites) {
  run("stty raw -echo; printf 'abcdef\\r\\nghijkl\\r\\nREADY'; dd bs=1 count=1 2>/dev/null; "
      "printf '\\033[1;6HX\\033[5;1HNEXT'; dd bs=1 count=1 2>/dev/null; printf '\\033[2;3HX\\033[6;1HLAST'; exec cat "
      "-uv");
  ASSERT_TRUE(shows("READY"));
  const QPoint from = canvas().rectOf(find("b").begin).topLeft().toPoint() + QPoint(1, 3);
  const QPoint to = canvas().rectOf(find("k").begin).topLeft().toPoint() + QPoint(1, 3);
  QTest::mousePress(&view(), Qt::LeftButton, Qt::AltModifier, from);
  QMouseEvent move(QEvent::MouseMove, to, view().mapToGlobal(to), Qt::NoButton, Qt::LeftButton, Qt::AltModifier);
  QApplication::sendEvent(&view(), &move);
  QTest::mouseRelease(&view(), Qt::LeftButton, Qt::AltModifier, to);
  ASSERT_EQ(canvas().selectedText(), QStringLiteral("bcd\nhij"));
  terminal->ptySession().write("x");
  ASSERT_TRUE(shows("NEXT"));
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("bcd\nhij"));
  terminal->ptySession().write("x");
  ASSERT_TRUE(shows("LAST"));
  EXPECT_TRUE(canvas().selection().empty());
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
