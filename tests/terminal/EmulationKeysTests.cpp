// Keys, composed text and pastes in the full emulation, as a real program gets them.
#include <QClipboard>
#include <QInputMethodEvent>
#include <QPushButton>

#include "canvas/CanvasLiterals.h"
#include "terminal/DisplayFixture.h"
#include "terminal/input/KeyTranslation.h"

namespace zolt {
namespace {

using test::waitFor;

class EmulationKeysTest : public test::DisplayTest {};

TEST_F(EmulationKeysTest, SendsKeysInTheModesOfTheProgram) {
  start();
  QTest::keyClicks(&canvas(), QStringLiteral("ab"));
  QTest::keyClick(&canvas(), Qt::Key_Up);
  QTest::keyClick(&canvas(), Qt::Key_C, Qt::ControlModifier);
  ASSERT_TRUE(isSent("ab^[[A^C")) << sent();
}

TEST_F(EmulationKeysTest, SendsCursorKeysAsTheProgramAsksForThem) {
  start("\\033[?1h");
  QTest::keyClick(&canvas(), Qt::Key_Up);
  ASSERT_TRUE(isSent("^[OA")) << sent();
}

TEST_F(EmulationKeysTest, SendsReleasesWhereTheProgramAsksForEvents) {
  start("\\033[>3u");
  QTest::keyClick(&canvas(), Qt::Key_F1);
  ASSERT_TRUE(isSent("^[[P^[[1;1:3P")) << sent();
}

TEST_F(EmulationKeysTest, ComposesTextAtTheCursorAndSendsWhatIsCommitted) {
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

TEST_F(EmulationKeysTest, TellsOfTheReleaseOnlyOfKeysWhosePressItHasTold) {
  start("\\033[>3u");
  QTest::keyPress(&canvas(), Qt::Key_PageUp, Qt::ShiftModifier);  // scrolls
  QTest::keyRelease(&canvas(), Qt::Key_PageUp, Qt::ShiftModifier);
  QTest::keyRelease(&canvas(), Qt::Key_Escape);  // pressed elsewhere
  QTest::keyPress(&canvas(), Qt::Key_F5);
  QTest::keyRelease(&canvas(), Qt::Key_F5);
  ASSERT_TRUE(isSent("^[[15~^[[15;1:3~")) << sent();
}

TEST_F(EmulationKeysTest, TellsThatAKeyRepeatsWhichIsPressedWhileItIsHeld) {
  start("\\033[>3u");
  for (int i = 0; i < 3; ++i) {
    QTest::keyPress(&canvas(), Qt::Key_F5);
  }
  QTest::keyRelease(&canvas(), Qt::Key_F5);
  QTest::keyPress(&canvas(), Qt::Key_F5);
  ASSERT_TRUE(isSent("^[[15~^[[15;1:2~^[[15;1:2~^[[15;1:3~^[[15~")) << sent();
}

TEST_F(EmulationKeysTest, SendsNoRepeatsWithoutAutoRepeat) {
  start("\\033[?8l");
  for (int i = 0; i < 3; ++i) {
    QTest::keyPress(&canvas(), Qt::Key_A, Qt::NoModifier);
  }
  QTest::keyRelease(&canvas(), Qt::Key_A);
  QTest::keyClick(&canvas(), Qt::Key_B);
  ASSERT_TRUE(isSent("ab")) << sent();
}

TEST_F(EmulationKeysTest, PastesWhatIsSelectedWithShiftInsert) {
  start();
  QClipboard* clipboard = QApplication::clipboard();
  clipboard->setText(QStringLiteral("selected"),
                     clipboard->supportsSelection() ? QClipboard::Selection : QClipboard::Clipboard);
  QTest::keyClick(&canvas(), Qt::Key_Insert, Qt::ShiftModifier);
  ASSERT_TRUE(isSent("selected")) << sent();
}

TEST_F(EmulationKeysTest, ClaimsAllKeysWithSuperWhereThatIsMeta) {
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

TEST_F(EmulationKeysTest, ClaimsFunctionKeysOfTheWindowForTheProgram) {
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

TEST_F(EmulationKeysTest, ScrollsByPagesWithShift) {
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

TEST_F(EmulationKeysTest, AsksBeforeAPasteOfSeveralLinesAndSendsItOnlyThen) {
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

TEST_F(EmulationKeysTest, PastesWithoutAQuestionBetweenBrackets) {
  start("\\033[?2004h");
  QApplication::clipboard()->setText(QStringLiteral("one\ntwo\x1b[201~x"));
  canvas().paste();
  EXPECT_EQ(question(), nullptr);
  ASSERT_TRUE(isSent("^[[200~one^Mtwo[201~x^[[201~")) << sent();
}

TEST_F(EmulationKeysTest, AsksNothingBeforeAPasteIfTheUserHasTurnedThatOff) {
  settings.askBeforeRiskyPaste = false;
  start();
  QApplication::clipboard()->setText(QStringLiteral("one\ntwo"));
  canvas().paste();
  EXPECT_EQ(question(), nullptr);
  ASSERT_TRUE(isSent("one^Mtwo")) << sent();
}

TEST_F(EmulationKeysTest, SendsAltAsTheUserHasSetIt) {
  settings.optionSendsMeta = true;
  start();
  QTest::keyClick(&canvas(), Qt::Key_A, Qt::AltModifier);
  ASSERT_TRUE(isSent("^[a")) << sent();
  settings.optionSendsMeta = false;
  display->setSettings(settings, true);
  QTest::keyClick(&canvas(), Qt::Key_A, Qt::AltModifier);
  ASSERT_TRUE(isSent("^[aa")) << sent();
}

TEST_F(EmulationKeysTest, SendsAltInAnyCaseToAProgramThatAsksForModifiers) {
  settings.optionSendsMeta = false;
  start("\\033[>4;2m");
  QTest::keyClick(&canvas(), Qt::Key_A, Qt::AltModifier);
#ifdef Q_OS_MACOS
  ASSERT_TRUE(isSent("a")) << sent();
#else
  ASSERT_TRUE(isSent("^[[27;3;97~")) << sent();
#endif
}

}  // namespace
}  // namespace zolt
