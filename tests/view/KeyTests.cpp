#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>

#include "view/KeyCodes.h"
#include "view/ViewFixture.h"

namespace zolt {
namespace {

// Every key goes through the widget to a real program, which sends back what it got.
class KeyTest : public test::TerminalWindowTest {
 protected:
  void SetUp() override {
    open({"cat"});
    ASSERT_TRUE(waitForText("ready"));
    recordOutput();
    view().setFocus();
  }

  std::string bytesFor(const std::function<void()>& action) {
    recorded.clear();
    action();
    // A mark that follows the keys: all before it has arrived when it has.
    window->terminal().sendInput("|");
    EXPECT_TRUE(test::waitFor([&] { return recorded.ends_with('|'); }));
    return recorded.substr(0, recorded.size() - 1);
  }
  std::string bytesFor(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) {
    return bytesFor([&] {
      QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
      QApplication::sendEvent(&view(), &press);
    });
  }
};

struct KeyRow {
  Qt::Key key;
  const char* bytes;
};

TEST_F(KeyTest, SpecialKeysSendTheirSequences) {
  const KeyRow rows[] = {
      {Qt::Key_Return, "\r"},      {Qt::Key_Tab, "\t"},      {Qt::Key_Backspace, "\x08"}, {Qt::Key_Escape, "\x1B"},
      {Qt::Key_Home, "\x1B[H"},    {Qt::Key_End, "\x1B[F"},  {Qt::Key_PageUp, "\x1B[5~"}, {Qt::Key_PageDown, "\x1B[6~"},
      {Qt::Key_Delete, "\x1B[3~"}, {Qt::Key_Left, "\x1B[D"}, {Qt::Key_Right, "\x1B[C"},   {Qt::Key_Down, "\x1B[B"},
      {Qt::Key_Up, "\x1B[A"},
  };
  for (const KeyRow& row : rows) {
    EXPECT_EQ(bytesFor(row.key), row.bytes) << row.key;
  }
}

TEST_F(KeyTest, OtherModifiersDoNotChangeSpecialKeys) {
  EXPECT_EQ(bytesFor(Qt::Key_Up, Qt::ShiftModifier), "\x1B[A");
  EXPECT_EQ(bytesFor(Qt::Key_Home, Qt::AltModifier), "\x1B[H");
  EXPECT_EQ(bytesFor(Qt::Key_Backtab, Qt::ShiftModifier), "\t");
}

TEST_F(KeyTest, ControlWithALetterSendsItsControlByte) {
  EXPECT_EQ(bytesFor(Qt::Key_C, Qt::ControlModifier, QStringLiteral("\x03")), "\x03");
  EXPECT_EQ(bytesFor(Qt::Key_D, Qt::ControlModifier), "\x04");
  EXPECT_EQ(bytesFor(Qt::Key_BracketLeft, Qt::ControlModifier), "\x1B");
  EXPECT_EQ(bytesFor(Qt::Key_1, Qt::ControlModifier), "\x11");
  EXPECT_EQ(bytesFor(Qt::Key_Space, Qt::ControlModifier), std::string(1, '\0'));
  EXPECT_EQ(bytesFor(Qt::Key_At, Qt::ControlModifier | Qt::ShiftModifier), std::string(1, '\0'));
  EXPECT_EQ(bytesFor(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier), "\x05");
}

TEST_F(KeyTest, ControlComesBeforeTheSpecialKeysThatHaveACharacter) {
  EXPECT_EQ(bytesFor(Qt::Key_Tab, Qt::ControlModifier), "\t");
  EXPECT_EQ(bytesFor(Qt::Key_Return, Qt::ControlModifier), "\r");
  EXPECT_EQ(bytesFor(Qt::Key_Escape, Qt::ControlModifier), "\x1B");
  EXPECT_EQ(bytesFor(Qt::Key_Backspace, Qt::ControlModifier), "\x08");
  // Its character is DEL: the one key for which both orders do not come to the same byte.
  EXPECT_EQ(bytesFor(Qt::Key_Delete, Qt::ControlModifier), "\x1F");
}

TEST_F(KeyTest, ControlWithAKeyWithoutACharacterSendsTheSpecialKey) {
  EXPECT_EQ(bytesFor(Qt::Key_Up, Qt::ControlModifier), "\x1B[A");
  EXPECT_EQ(bytesFor(Qt::Key_PageDown, Qt::ControlModifier), "\x1B[6~");
  EXPECT_EQ(bytesFor(Qt::Key_Control, Qt::ControlModifier), "");
}

TEST_F(KeyTest, TypedTextIsSentUnchanged) {
  EXPECT_EQ(bytesFor(Qt::Key_A, Qt::NoModifier, QStringLiteral("a")), "a");
  EXPECT_EQ(bytesFor(Qt::Key_A, Qt::AltModifier, QStringLiteral("å")), "å");
  EXPECT_EQ(bytesFor(Qt::Key_Eacute, Qt::NoModifier, QStringLiteral("é")), "é");
}

TEST_F(KeyTest, KeypadAndFunctionKeysSendTheTextTheyGive) {
  EXPECT_EQ(bytesFor(Qt::Key_Enter, Qt::KeypadModifier, QStringLiteral("\r")), "\r");
  EXPECT_EQ(bytesFor(Qt::Key_5, Qt::KeypadModifier, QStringLiteral("5")), "5");
  EXPECT_EQ(bytesFor(Qt::Key_Home, Qt::KeypadModifier), "");
  EXPECT_EQ(bytesFor(Qt::Key_F1), "");
}

TEST_F(KeyTest, InputMethodsCommitText) {
  EXPECT_EQ(bytesFor([&] {
              QInputMethodEvent compose(QStringLiteral("にほ"), {});
              QApplication::sendEvent(&view(), &compose);
            }),
            "")
      << "text being composed is not sent";
  EXPECT_EQ(bytesFor([&] {
              QInputMethodEvent commit;
              commit.setCommitString(QStringLiteral("日本"));
              QApplication::sendEvent(&view(), &commit);
            }),
            "日本");
}

TEST_F(KeyTest, PasteSendsTheClipboard) {
  QApplication::clipboard()->setText(QStringLiteral("echo one\ntwo"));
  EXPECT_EQ(bytesFor([&] { view().paste(); }), "echo one\ntwo");
}

TEST_F(KeyTest, TypingNeverChangesTheText) {
  const std::string before = shown();
  QTest::keyClicks(&view(), QStringLiteral("hello"));
  QTest::keyClick(&view(), Qt::Key_Return);
  QTest::keyClick(&view(), Qt::Key_Backspace);
  EXPECT_EQ(shown(), before) << "what appears is what the program sends back, and that goes elsewhere here";
}

TEST_F(KeyTest, TabStaysInTheView) {
  EXPECT_EQ(bytesFor([&] { QTest::keyClick(&view(), Qt::Key_Tab); }), "\t");
  EXPECT_TRUE(view().hasFocus());
}

TEST(CharactersIgnoringModifiers, AreThoseOfTheKeyWithShiftAlone) {
  const auto of = [](Qt::Key key, Qt::KeyboardModifiers modifiers) {
    return charactersIgnoringModifiers(QKeyEvent(QEvent::KeyPress, key, modifiers)).toStdString();
  };
  EXPECT_EQ(of(Qt::Key_A, Qt::ControlModifier), "a");
  EXPECT_EQ(of(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier), "A");
  EXPECT_EQ(of(Qt::Key_Eacute, Qt::AltModifier), "é");
  EXPECT_EQ(of(Qt::Key_F1, Qt::NoModifier), "");
}

TEST(KeyDeathTest, ControlWithANonAsciiKeyStopsTheProgram) {
  EXPECT_DEATH(
      {
        ContentView window(test::runTestChild({"wait"}));
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Eacute, Qt::ControlModifier, QStringLiteral("é"));
        QApplication::sendEvent(&window.textView(), &press);
      },
      "Control with a character that has no ASCII code");
}

TEST(KeyWithoutATerminal, IsIgnored) {
  TerminalNSTextView view;
  QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
  QApplication::sendEvent(&view, &press);
  QKeyEvent special(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
  QApplication::sendEvent(&view, &special);
  EXPECT_TRUE(view.textStorage().empty());
}

}  // namespace
}  // namespace zolt
