#include <gtest/gtest.h>

#include <string>

#include "vt/KeyEvents.h"
#include "vt/input/Keyboard.h"

namespace zolt::vt {
namespace {

constexpr Modifiers kShift = Modifier::Shift;
constexpr Modifiers kAlt = Modifier::Alt;
constexpr Modifiers kControl = Modifier::Control;

TEST(VtKeyboardModes, NumbersModifiersLikeXterm) {
  struct Row {
    Modifiers held;
    std::string number;
  };
  const Modifiers meta = Modifier::Meta;
  const Row rows[] = {
      {kShift, "2"},
      {kAlt, "3"},
      {kShift | kAlt, "4"},
      {kControl, "5"},
      {kShift | kControl, "6"},
      {kAlt | kControl, "7"},
      {kShift | kAlt | kControl, "8"},
      {meta, "9"},
      {meta | kShift, "10"},
      {meta | kAlt, "11"},
      {meta | kAlt | kShift, "12"},
      {meta | kControl, "13"},
      {meta | kControl | kShift, "14"},
      {meta | kControl | kAlt, "15"},
      {meta | kControl | kAlt | kShift, "16"},
  };
  for (const Row& row : rows) {
    for (const bool application : {false, true}) {
      const KeyboardModes modes = {.applicationCursor = application};
      EXPECT_EQ(keyBytes(pressed(Key::Up, row.held), modes), "^[[1;" + row.number + "A");
      EXPECT_EQ(keyBytes(pressed(Key::F1, row.held), modes), "^[[1;" + row.number + "P");
      EXPECT_EQ(keyBytes(pressed(Key::F3, row.held | kLocks), modes), "^[[1;" + row.number + "R");
      EXPECT_EQ(keyBytes(pressed(Key::F5, row.held), modes), "^[[15;" + row.number + "~");
      EXPECT_EQ(keyBytes(pressed(Key::Delete, row.held), modes), "^[[3;" + row.number + "~");
    }
  }
}

TEST(VtKeyboardModes, TellModifiersOfTypingKeysOnlyInSomeProtocols) {
  EXPECT_FALSE(tellsModifiers({}));
  EXPECT_FALSE(tellsModifiers({.modifyOtherKeys = 1})) << "Alt with a letter is none of its combinations";
  EXPECT_TRUE(tellsModifiers({.modifyOtherKeys = 2}));
  EXPECT_FALSE(tellsModifiers({.flags = keyFlags::reportEvents | keyFlags::reportAlternates}));
  EXPECT_TRUE(tellsModifiers({.flags = keyFlags::disambiguate}));
  EXPECT_TRUE(tellsModifiers({.flags = keyFlags::reportAllKeys}));
}

TEST(VtKeyboardModes, EncodesModifiersOfCursorKeysInTheRequestedForm) {
  struct Row {
    int form;
    std::string normal, application;
  };
  const Row rows[] = {{-1, "^[[A", "^[OA"},
                      {0, "^[[5A", "^[O5A"},
                      {1, "^[[5A", "^[[5A"},
                      {2, "^[[1;5A", "^[[1;5A"},
                      {3, "^[[>1;5A", "^[[>1;5A"}};
  for (const Row& row : rows) {
    const KeyEvent event = pressed(Key::Up, kControl);
    EXPECT_EQ(keyBytes(event, {.modifyCursorKeys = row.form}), row.normal);
    EXPECT_EQ(keyBytes(event, {.applicationCursor = true, .modifyCursorKeys = row.form}), row.application);
    EXPECT_EQ(keyBytes(event, {.modifyFunctionKeys = row.form}), "^[[1;5A");
  }
}

TEST(VtKeyboardModes, EncodesModifiersOfFunctionKeysInTheRequestedForm) {
  struct Row {
    int form;
    std::string first, fifth, insert;
  };
  const Row rows[] = {{-1, "^[OP", "^[[15~", "^[[2~"},
                      {0, "^[O2P", "^[[15;2~", "^[[2;2~"},
                      {1, "^[[2P", "^[[15;2~", "^[[2;2~"},
                      {2, "^[[1;2P", "^[[15;2~", "^[[2;2~"},
                      {3, "^[[>1;2P", "^[[>15;2~", "^[[>2;2~"}};
  for (const Row& row : rows) {
    const KeyboardModes modes = {.modifyFunctionKeys = row.form};
    EXPECT_EQ(keyBytes(pressed(Key::F1, kShift), modes), row.first);
    EXPECT_EQ(keyBytes(pressed(Key::F5, kShift), modes), row.fifth);
    EXPECT_EQ(keyBytes(pressed(Key::Insert, kShift), modes), row.insert);
    EXPECT_EQ(keyBytes(pressed(Key::F5, kShift), {.modifyCursorKeys = row.form}), "^[[15;2~");
  }
}

TEST(VtKeyboardModes, SwapsBackspaceAndDelete) {
  const KeyboardModes modes = {.backarrowIsBackspace = true};
  EXPECT_EQ(keyBytes(pressed(Key::Backspace), modes), "^H");
  EXPECT_EQ(keyBytes(pressed(Key::Backspace, kControl), modes), "^?");
  EXPECT_EQ(keyBytes(pressed(Key::Backspace, kAlt), modes), "^[^H");
  EXPECT_EQ(keyBytes(pressed(Key::Delete), modes), "^[[3~");
}

TEST(VtKeyboardModes, SendsCrLfForEnterInNewLineMode) {
  const KeyboardModes modes = {.newLine = true};
  EXPECT_EQ(keyBytes(pressed(Key::Enter), modes), "^M^J");
  EXPECT_EQ(keyBytes(pressed(Key::Enter, kAlt), modes), "^[^M^J");
  EXPECT_EQ(keyBytes(pressed(Key::KeypadEnter), modes), "^M^J");
  EXPECT_EQ(keyBytes(typed('m', kControl), modes), "^M");
}

// XTerm Control Sequences, "VT220-Style Function Keys": the application keypad.
TEST(VtKeyboardModes, SendsTheApplicationKeypad) {
  struct Row {
    Key key;
    std::string numeric, application, withShift;
  };
  const Row rows[] = {
      {Key::Keypad0, "0", "^[Op", "^[[1;2p"},        {Key::Keypad1, "1", "^[Oq", "^[[1;2q"},
      {Key::Keypad2, "2", "^[Or", "^[[1;2r"},        {Key::Keypad3, "3", "^[Os", "^[[1;2s"},
      {Key::Keypad4, "4", "^[Ot", "^[[1;2t"},        {Key::Keypad5, "5", "^[Ou", "^[[1;2u"},
      {Key::Keypad6, "6", "^[Ov", "^[[1;2v"},        {Key::Keypad7, "7", "^[Ow", "^[[1;2w"},
      {Key::Keypad8, "8", "^[Ox", "^[[1;2x"},        {Key::Keypad9, "9", "^[Oy", "^[[1;2y"},
      {Key::KeypadDecimal, ".", "^[On", "^[[1;2n"},  {Key::KeypadDivide, "/", "^[Oo", "^[[1;2o"},
      {Key::KeypadMultiply, "*", "^[Oj", "^[[1;2j"}, {Key::KeypadSubtract, "-", "^[Om", "^[[1;2m"},
      {Key::KeypadAdd, "+", "^[Ok", "^[[1;2k"},      {Key::KeypadEnter, "^M", "^[OM", "^[[1;2M"},
      {Key::KeypadEqual, "=", "^[OX", "^[[1;2X"},    {Key::KeypadSeparator, ",", "^[Ol", "^[[1;2l"},
  };
  for (const Row& row : rows) {
    const KeyboardModes application = {.applicationKeypad = true};
    EXPECT_EQ(keyBytes(pressed(row.key)), row.numeric);
    EXPECT_EQ(keyBytes(pressed(row.key), application), row.application);
    EXPECT_EQ(keyBytes(pressed(row.key, kShift), application), row.withShift);
    EXPECT_EQ(keyBytes(pressed(row.key, Modifier::NumLock), application), row.numeric);
    EXPECT_EQ(
        keyBytes(pressed(row.key, Modifier::NumLock), {.applicationKeypad = true, .numLockEndsKeypadMode = false}),
        row.application);
    EXPECT_EQ(keyBytes(pressed(row.key, kAlt)), "^[" + row.numeric);
  }
  EXPECT_EQ(keyBytes(pressed(Key::KeypadUp), {.applicationKeypad = true}), "^[[A");
  EXPECT_EQ(keyBytes(typed('1'), {.applicationKeypad = true}), "1");
}

TEST(VtKeyboardModes, SendsTheDecimalPointOfTheLayout) {
  KeyEvent event = pressed(Key::KeypadDecimal);
  event.text = ",";
  EXPECT_EQ(keyBytes(event), ",");
}

// xterm(1), modifyOtherKeys: level 1 excludes keys with well-known control characters, level 2 does not.
TEST(VtKeyboardModes, EncodesOtherKeysByTheirCharacterCodes) {
  struct Row {
    KeyEvent event;
    std::string none, first, second;
  };
  const Modifiers three = kControl | kAlt | kShift;
  const Row rows[] = {
      {typed('a'), "a", "a", "a"},
      {typed('a', kShift), "A", "A", "A"},
      {typed('a', kControl), "^A", "^A", "^[[27;5;97~"},
      {typed('y', kControl | kShift), "^Y", "^Y", "^[[27;6;89~"},
      {typed('a', kAlt), "^[a", "^[a", "^[[27;3;97~"},
      {typed('a', kAlt | kShift), "^[A", "^[A", "^[[27;4;65~"},
      {typed('a', kAlt | kControl), "^[^A", "^[^A", "^[[27;7;97~"},
      {typed('a', three), "^[^A", "^[^A", "^[[27;8;65~"},
      {typed('a', Modifier::Meta), "^[a", "^[a", "^[[27;9;97~"},
      {typed(';', kControl), ";", "^[[27;5;59~", "^[[27;5;59~"},
      {typed('1', kControl | kShift), "!", "^[[27;6;33~", "^[[27;6;33~"},
      {typed(',', kControl | kAlt), "^[,", "^[[27;7;44~", "^[[27;7;44~"},
      {typed('3', kControl), "^[", "^[", "^[[27;5;51~"},
      {typed('/', kControl), "^_", "^_", "^[[27;5;47~"},
      {typed('3', kShift), "#", "#", "#"},
      {typed(' ', kControl), "^@", "^@", "^[[27;5;32~"},
      {typed(' ', kShift), " ", " ", "^[[27;2;32~"},
      {typed(' ', kAlt), "^[ ", "^[ ", "^[[27;3;32~"},
      {pressed(Key::Enter), "^M", "^M", "^M"},
      {pressed(Key::Enter, kShift), "^M", "^[[27;2;13~", "^[[27;2;13~"},
      {pressed(Key::Enter, kControl), "^M", "^[[27;5;13~", "^[[27;5;13~"},
      {pressed(Key::Enter, kAlt), "^[^M", "^[^M", "^[[27;3;13~"},
      {pressed(Key::Tab), "^I", "^I", "^I"},
      {pressed(Key::Tab, kShift), "^[[Z", "^[[Z", "^[[27;2;9~"},
      {pressed(Key::Tab, kControl), "^I", "^[[27;5;9~", "^[[27;5;9~"},
      {pressed(Key::Tab, kControl | kShift), "^[[Z", "^[[27;6;9~", "^[[27;6;9~"},
      {pressed(Key::Backspace), "^?", "^?", "^?"},
      {pressed(Key::Backspace, kControl), "^H", "^H", "^[[27;5;127~"},
      {pressed(Key::Backspace, kShift), "^?", "^?", "^[[27;2;127~"},
      {pressed(Key::Escape), "^[", "^[", "^["},
      {pressed(Key::Escape, kShift), "^[", "^[", "^[[27;2;27~"},
      {pressed(Key::Up, kControl), "^[[1;5A", "^[[1;5A", "^[[1;5A"},
      {pressed(Key::Enter, kLocks), "^M", "^M", "^M"},
      {typed('a', kLocks), "a", "a", "a"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.none + " " + row.first + " " + row.second);
    EXPECT_EQ(keyBytes(row.event), row.none);
    EXPECT_EQ(keyBytes(row.event, {.modifyOtherKeys = 1}), row.first);
    EXPECT_EQ(keyBytes(row.event, {.modifyOtherKeys = 2}), row.second);
    EXPECT_EQ(keyBytes(row.event, {.formatOtherKeys = 1}), row.none);
  }
}

TEST(VtKeyboardModes, EncodesOtherKeysInTheShorterForm) {
  const KeyboardModes modes = {.modifyOtherKeys = 2, .formatOtherKeys = 1};
  EXPECT_EQ(keyBytes(typed('a', kControl), modes), "^[[97;5u");
  EXPECT_EQ(keyBytes(typed('y', kControl | kShift), modes), "^[[89;6u");
  EXPECT_EQ(keyBytes(pressed(Key::Tab, kControl), modes), "^[[9;5u");
  EXPECT_EQ(keyBytes(pressed(Key::Backspace, kAlt), modes), "^[[127;3u");
}

TEST(VtKeyboardModes, EncodesOtherKeysOutsideAscii) {
  KeyEvent event = pressed(Key::Character, kControl);
  event.character = U'\u00E9';
  event.shifted = U'\u00C9';
  EXPECT_EQ(keyBytes(event, {.modifyOtherKeys = 1}), "^[[27;5;233~");
  event.modifiers = kControl | kShift;
  EXPECT_EQ(keyBytes(event, {.modifyOtherKeys = 1}), "^[[27;6;201~");
}

}  // namespace
}  // namespace zolt::vt
