// The mouse in the full emulation: reports, selections, links, the wheel and drops.
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>

#include "terminal/DisplayFixture.h"

namespace zolt {
namespace {

using test::waitFor;

class EmulationMouseTest : public test::DisplayTest {};

TEST_F(EmulationMouseTest, ReportsTheMouseToAProgramThatTracksIt) {
  start("\\033[?1000h\\033[?1006h\\033[3;1Hhere\\033[10;1H");
  const QPoint at = middleOf(find("here").begin + 2);
  QTest::mouseClick(&view(), Qt::LeftButton, Qt::NoModifier, at);
  ASSERT_TRUE(isSent("^[[<0;3;3M^[[<0;3;3m")) << sent();
  EXPECT_TRUE(canvas().selection().empty());
}

TEST_F(EmulationMouseTest, KeepsTheMouseForTheUserWithShiftAndWithoutTracking) {
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

TEST_F(EmulationMouseTest, BeginsASelectionWithShiftEachTimeWhereTheProgramUsesTheMouse) {
  start("\\033[?1002h\\033[?1006h\\033[3;1Hone two three four\\033[10;1H");
  drag(find("one").begin, find("one").end, Qt::ShiftModifier);
  drag(find("three").begin, find("three").end, Qt::ShiftModifier);
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("three"));
}

TEST_F(EmulationMouseTest, ExtendsTheSelectionWithShiftWhereItDoesNot) {
  start("\\033[3;1Hone two three four\\033[10;1H");
  drag(find("one").begin, find("one").end, Qt::NoModifier);
  drag(find("three").end, find("three").end, Qt::ShiftModifier);
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("one two three"));
}

TEST_F(EmulationMouseTest, BeginsANewSelectionOnTheOtherScreen) {
  start("\\033[3;1Hone two three four\\033[10;1H");
  drag(find("one").begin, find("one").end, Qt::NoModifier);
  display->emulator().feed(Bytes(std::string("\033[?1049h\033[5;1Hfour five six")));
  ASSERT_TRUE(shows("four five six"));
  drag(find("five").begin, find("five").end, Qt::ShiftModifier);
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("five"));
}

TEST_F(EmulationMouseTest, ReportsTheReleaseOfAButtonThatWasReportedWhateverIsHeldByThen) {
  start("\\033[?1002h\\033[?1006h\\033[3;1Hhere\\033[10;1H");
  const QPoint at = middleOf(find("here").begin);
  QTest::mousePress(&view(), Qt::LeftButton, Qt::NoModifier, at);
  QTest::mouseRelease(&view(), Qt::LeftButton, Qt::ShiftModifier, at);
  ASSERT_TRUE(isSent("^[[<0;1;3M^[[<4;1;3m")) << sent();
  EXPECT_TRUE(canvas().selection().empty());
}

TEST_F(EmulationMouseTest, ReportsAReleaseThatGotLostWhenThePointerMovesAgain) {
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

TEST_F(EmulationMouseTest, ShowsNoMenuWhereTheProgramTakesTheClick) {
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

TEST_F(EmulationMouseTest, LeavesTheClipboardAloneWhereNothingCanBeCopied) {
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

TEST_F(EmulationMouseTest, SelectsRectanglesWithAlt) {
  start("\\033[1;1Habcdef\\r\\nghijkl\\r\\nmnopqr\\033[10;1H");
  drag(find("b").begin, find("q").begin, Qt::AltModifier);
  EXPECT_EQ(canvas().selectedText(), QStringLiteral("bcd\nhij\nnop"));
}

TEST_F(EmulationMouseTest, TurnsTheWheelIntoCursorKeysOnTheAlternateScreen) {
  start("\\033[?1049h");
  const QPoint at(50, 50);
  QWheelEvent turn(at, view().mapToGlobal(at), {}, QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                   false);
  QApplication::sendEvent(&view(), &turn);
  ASSERT_TRUE(isSent("^[[A^[[A^[[A")) << sent();
}

TEST_F(EmulationMouseTest, ScrollsTheViewWithTheWheelOverTheHistoryWhateverTheProgramTracks) {
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

TEST_F(EmulationMouseTest, TypesThePathOfADroppedFileQuoted) {
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

TEST_F(EmulationMouseTest, ShowsWhereALinkLeadsAndAsksBeforeUnusualOnes) {
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

TEST_F(EmulationMouseTest, HidesWhereALinkLeadsOnceAnotherTextIsUnderThePointer) {
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

TEST_F(EmulationMouseTest, OpensALinkWithoutTellingAProgramThatUsesTheMouse) {
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

TEST_F(EmulationMouseTest, DropsASelectionWhoseTextTheProgramRewrites) {
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

TEST_F(EmulationMouseTest, KeepsASelectionThatScrollsIntoTheHistoryOrIsWrappedAnew) {
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

TEST_F(EmulationMouseTest, KeepsWhatIsLeftOfASelectionThatIsTrimmed) {
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

TEST_F(EmulationMouseTest, DropsARectangleWhoseTextTheProgramRewrites) {
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

}  // namespace
}  // namespace zolt
