#include <gtest/gtest.h>

#include <string>

#include "vt/KeyEvents.h"
#include "vt/KeyExpectations.h"
#include "vt/input/Keyboard.h"

// The progressive keyboard protocol: https://sw.kovidgoyal.net/kitty/keyboard-protocol/
namespace zolt::vt {
namespace {

constexpr Modifiers kShift = Modifier::Shift;
constexpr Modifiers kAlt = Modifier::Alt;
constexpr Modifiers kControl = Modifier::Control;

constexpr std::uint8_t kDisambiguate = 1, kEvents = 2, kAlternates = 4, kEvery = 8, kText = 16;

std::string flagged(unsigned flags, const KeyEvent& event) {
  return keyBytes(event, {.flags = static_cast<std::uint8_t>(flags)});
}

KeyEvent repeated(const KeyEvent& event) {
  return with(KeyAction::Repeat, event);
}

KeyEvent released(const KeyEvent& event) {
  return with(KeyAction::Release, event);
}

TEST(VtEveryKeyOfTheProtocol, HasItsNumber) {
  for (const KeyExpectation& expected : keyExpectations()) {
    SCOPED_TRACE(expected.every);
    EXPECT_EQ(flagged(kDisambiguate, pressed(expected.key)), expected.disambiguated);
    EXPECT_EQ(flagged(kEvery, pressed(expected.key)), expected.every);
    EXPECT_EQ(flagged(kEvery, pressed(expected.key, kControl)), expected.everyControl);
    EXPECT_EQ(flagged(kEvery | kDisambiguate, pressed(expected.key, kControl)), expected.everyControl);
  }
}

TEST(VtEveryKeyOfTheProtocol, IsNotAffectedByXtermsModes) {
  for (const KeyExpectation& expected : keyExpectations()) {
    SCOPED_TRACE(expected.every);
    const KeyboardModes modes = {.applicationCursor = true,
                                 .applicationKeypad = true,
                                 .modifyOtherKeys = 2,
                                 .formatOtherKeys = 1,
                                 .modifyCursorKeys = 0,
                                 .modifyFunctionKeys = 3,
                                 .flags = kDisambiguate};
    EXPECT_EQ(keyBytes(pressed(expected.key), modes), expected.disambiguated);
  }
}

TEST(VtEveryKeyOfTheProtocol, ReportsRepeatsAndReleases) {
  // The same sequence with modifiers 1 and the event type.
  const auto withEvent = [](std::string sequence, const std::string& number) {
    const char final = sequence.back();
    sequence.pop_back();
    return sequence + (sequence.back() == '[' ? "1;1:" : ";1:") + number + final;
  };
  for (const KeyExpectation& expected : keyExpectations()) {
    SCOPED_TRACE(expected.every);
    const KeyEvent event = pressed(expected.key);
    const unsigned flags = kEvery | kEvents;
    EXPECT_EQ(flagged(flags, event), expected.every);
    EXPECT_EQ(flagged(flags, repeated(event)), withEvent(expected.every, "2"));
    EXPECT_EQ(flagged(flags, released(event)), withEvent(expected.every, "3"));
    EXPECT_EQ(flagged(kEvery, repeated(event)), expected.every);
    EXPECT_EQ(flagged(kEvery, released(event)), "");
  }
}

TEST(VtKeyboardProtocol, DisambiguatesWhatXtermSendsForTwoKeys) {
  EXPECT_EQ(flagged(kDisambiguate, pressed(Key::Escape)), "^[[27u");
  EXPECT_EQ(flagged(kDisambiguate, typed('c', kControl)), "^[[99;5u");
  EXPECT_EQ(flagged(kDisambiguate, typed('[', kAlt)), "^[[91;3u");
  EXPECT_EQ(flagged(kDisambiguate, typed('a', kControl | kShift)), "^[[97;6u");
  EXPECT_EQ(flagged(kDisambiguate, typed('a', kShift | kAlt)), "^[[97;4u");
  EXPECT_EQ(flagged(kDisambiguate, typed('a', kControl | kAlt)), "^[[97;7u");
  EXPECT_EQ(flagged(kDisambiguate, typed(' ', kControl)), "^[[32;5u");
  EXPECT_EQ(flagged(kDisambiguate, pressed(Key::Tab, kControl | kShift)), "^[[9;6u");
}

TEST(VtKeyboardProtocol, LeavesTextAsText) {
  for (const unsigned flags : {1U, 2U, 3U, 4U, 7U, 16U, 23U}) {
    EXPECT_EQ(flagged(flags, typed('a')), "a") << flags;
    EXPECT_EQ(flagged(flags, typed('a', kShift)), "A") << flags;
    EXPECT_EQ(flagged(flags, typed(' ', kShift)), " ") << flags;
    EXPECT_EQ(flagged(flags, repeated(typed('a'))), "a") << flags;
    EXPECT_EQ(flagged(flags, released(typed('a'))), "") << flags;
    EXPECT_EQ(flagged(flags, pressed(Key::Keypad7)), "7") << flags;
    EXPECT_EQ(flagged(flags, released(pressed(Key::Keypad7))), "") << flags;
    KeyEvent dead = pressed(Key::Character);
    dead.character = U'\u00B4';
    EXPECT_EQ(flagged(flags, dead), "") << flags;
    EXPECT_EQ(flagged(flags, released(dead)), "") << flags;
  }
}

TEST(VtKeyboardProtocol, KeepsEnterTabAndBackspaceUnlessAllKeysAreReported) {
  struct Row {
    Key key;
    std::string bytes, number;
  };
  for (const Row& row : {Row{Key::Enter, "^M", "13"}, Row{Key::Tab, "^I", "9"}, Row{Key::Backspace, "^?", "127"}}) {
    for (const unsigned flags : {1U, 2U, 3U, 7U, 23U}) {
      EXPECT_EQ(flagged(flags, pressed(row.key)), row.bytes) << flags;
      EXPECT_EQ(flagged(flags, pressed(row.key, kLocks)), row.bytes) << flags;
      EXPECT_EQ(flagged(flags, repeated(pressed(row.key))), row.bytes) << flags;
      EXPECT_EQ(flagged(flags, released(pressed(row.key))), "") << flags;
      EXPECT_EQ(flagged(flags, released(pressed(row.key, kShift))), "") << flags;
    }
    EXPECT_EQ(flagged(kDisambiguate, pressed(row.key, kShift)), "^[[" + row.number + ";2u");
    EXPECT_EQ(flagged(kDisambiguate | kEvents, repeated(pressed(row.key, kShift))), "^[[" + row.number + ";2:2u");
    EXPECT_EQ(flagged(kEvery, pressed(row.key)), "^[[" + row.number + "u");
    EXPECT_EQ(flagged(kEvery | kEvents, released(pressed(row.key))), "^[[" + row.number + ";1:3u");
  }
  EXPECT_EQ(keyBytes(pressed(Key::Backspace), {.backarrowIsBackspace = true, .flags = kDisambiguate}), "^H");
  EXPECT_EQ(keyBytes(pressed(Key::Enter), {.newLine = true, .flags = kDisambiguate}), "^M^J");
  EXPECT_EQ(flagged(kEvents, repeated(pressed(Key::Backspace, kControl))), "^H");
}

TEST(VtKeyboardProtocol, NumbersEveryCombinationOfModifiers) {
  for (unsigned bits = 1; bits < 0x100; ++bits) {
    const Modifiers held = Modifiers::fromBits(static_cast<std::uint8_t>(bits));
    const std::string number = std::to_string(bits + 1);
    EXPECT_EQ(flagged(kDisambiguate, pressed(Key::Escape, held)), "^[[27;" + number + "u");
    EXPECT_EQ(flagged(kDisambiguate, pressed(Key::Up, held)), "^[[1;" + number + "A");
    EXPECT_EQ(flagged(kDisambiguate, pressed(Key::F3, held)), "^[[13;" + number + "~");
    EXPECT_EQ(flagged(kEvery, typed('a', held)), "^[[97;" + number + "u");
  }
}

TEST(VtKeyboardProtocol, ReportsLocksWithTextKeysOnlyIfAllKeysAreReported) {
  const Modifiers held = kControl | kLocks;
  EXPECT_EQ(flagged(kDisambiguate, typed('a', held)), "^[[97;5u");
  EXPECT_EQ(flagged(kDisambiguate, pressed(Key::Keypad1, held)), "^[[57400;5u");
  EXPECT_EQ(flagged(kEvery, typed('a', held)), "^[[97;197u");
  EXPECT_EQ(flagged(kEvery, pressed(Key::Keypad1, held)), "^[[57400;197u");
  EXPECT_EQ(flagged(kDisambiguate, pressed(Key::KeypadEnter, Modifier::NumLock)), "^[[57414;129u");
  EXPECT_EQ(flagged(kDisambiguate, pressed(Key::Left, Modifier::CapsLock)), "^[[1;65D");
  EXPECT_EQ(flagged(kDisambiguate, typed('a', Modifier::CapsLock)), "a");
  EXPECT_EQ(flagged(kEvery, typed('a', Modifier::CapsLock)), "^[[97;65u");
}

TEST(VtKeyboardProtocol, ReportsEventsOfKeysWithoutText) {
  const unsigned flags = kDisambiguate | kEvents;
  EXPECT_EQ(flagged(flags, typed('c', kControl)), "^[[99;5u");
  EXPECT_EQ(flagged(flags, repeated(typed('c', kControl))), "^[[99;5:2u");
  EXPECT_EQ(flagged(flags, released(typed('c', kControl))), "^[[99;5:3u");
  EXPECT_EQ(flagged(flags, repeated(pressed(Key::Up))), "^[[1;1:2A");
  EXPECT_EQ(flagged(flags, released(pressed(Key::Delete, kShift))), "^[[3;2:3~");
  EXPECT_EQ(flagged(kDisambiguate, released(typed('c', kControl))), "");
  EXPECT_EQ(flagged(kDisambiguate, repeated(pressed(Key::Up))), "^[[A");
}

// Without disambiguation, presses keep their legacy encoding; only events without one use the protocol's.
TEST(VtKeyboardProtocol, ReportsEventsAlongsideTheLegacyEncoding) {
  const KeyboardModes modes = {.applicationCursor = true, .flags = kEvents};
  EXPECT_EQ(keyBytes(pressed(Key::Up), modes), "^[OA");
  EXPECT_EQ(keyBytes(repeated(pressed(Key::Up)), modes), "^[[1;1:2A");
  EXPECT_EQ(keyBytes(released(pressed(Key::Up)), modes), "^[[1;1:3A");
  EXPECT_EQ(keyBytes(typed('c', kControl), modes), "^C");
  EXPECT_EQ(keyBytes(released(typed('c', kControl)), modes), "^[[99;5:3u");
  EXPECT_EQ(keyBytes(pressed(Key::Escape), modes), "^[");
  EXPECT_EQ(keyBytes(released(pressed(Key::Escape)), modes), "^[[27;1:3u");
  EXPECT_EQ(keyBytes(pressed(Key::F25), modes), "^[[57388u");
  EXPECT_EQ(keyBytes(pressed(Key::Up, Modifier::Super), modes), "^[[1;9A");
  EXPECT_EQ(keyBytes(typed('a', Modifier::Super), modes), "^[[97;9u");
  EXPECT_EQ(keyBytes(typed('a', kControl), {.modifyOtherKeys = 2, .flags = kEvents}), "^[[27;5;97~");
}

TEST(VtKeyboardProtocol, ReportsAlternateKeys) {
  const unsigned flags = kDisambiguate | kAlternates;
  EXPECT_EQ(flagged(flags, typed('a', kControl)), "^[[97;5u");
  EXPECT_EQ(flagged(flags, typed('a', kControl | kShift)), "^[[97:65;6u");
  EXPECT_EQ(flagged(flags, typed('=', kControl | kShift)), "^[[61:43;6u");
  EXPECT_EQ(flagged(flags, typed(' ', kControl | kShift)), "^[[32;6u");

  KeyEvent cyrillic = pressed(Key::Character, kControl);
  cyrillic.character = U'\u0441';
  cyrillic.shifted = U'\u0421';
  cyrillic.baseLayout = U'c';
  EXPECT_EQ(flagged(flags, cyrillic), "^[[1089::99;5u");
  EXPECT_EQ(flagged(kDisambiguate, cyrillic), "^[[1089;5u");
  cyrillic.modifiers = kControl | kShift;
  EXPECT_EQ(flagged(flags, cyrillic), "^[[1089:1057:99;6u");
  EXPECT_EQ(flagged(kAlternates | kEvery, cyrillic), "^[[1089:1057:99;6u");
  cyrillic.baseLayout = U'\u0441';
  EXPECT_EQ(flagged(flags, cyrillic), "^[[1089:1057;6u");

  KeyEvent odd = typed('a', kControl | kShift);
  odd.shifted = 0x1B;
  odd.baseLayout = 0xD800;
  EXPECT_EQ(flagged(flags, odd), "^[[97;6u");
  EXPECT_EQ(flagged(flags, pressed(Key::Up, kShift)), "^[[1;2A");
  EXPECT_EQ(flagged(kAlternates, typed('a', kControl | kShift)), "^A");
}

TEST(VtKeyboardProtocol, ReportsTheTextOfAKey) {
  const unsigned flags = kEvery | kText;
  EXPECT_EQ(flagged(flags, typed('a')), "^[[97;;97u");
  EXPECT_EQ(flagged(flags, typed('a', kShift)), "^[[97;2;65u");
  EXPECT_EQ(flagged(flags | kAlternates, typed('a', kShift)), "^[[97:65;2;65u");
  KeyEvent option = typed('a');
  option.text = "\u00E5";
  EXPECT_EQ(flagged(flags, option), "^[[97;;229u");
  option.text = "a\u0301\U0001F600";
  EXPECT_EQ(flagged(flags, option), "^[[97;;97:769:128512u");
  option.text = "\x1B\u009Bx\x7F";
  EXPECT_EQ(flagged(flags, option), "^[[97;;120u");
  option.text = "\r";
  EXPECT_EQ(flagged(flags, option), "^[[97u");
  EXPECT_EQ(flagged(flags, pressed(Key::Keypad1)), "^[[57400;;49u");
  EXPECT_EQ(flagged(flags, pressed(Key::Enter)), "^[[13u");
  EXPECT_EQ(flagged(flags, typed('a', kControl)), "^[[97;5u");
  EXPECT_EQ(flagged(flags, typed('a', kAlt)), "^[[97;3u");
  EXPECT_EQ(flagged(flags | kEvents, repeated(typed('a'))), "^[[97;1:2;97u");
  EXPECT_EQ(flagged(flags | kEvents, released(typed('a'))), "^[[97;1:3u");
  EXPECT_EQ(flagged(kEvery, typed('a')), "^[[97u");
  EXPECT_EQ(flagged(kText, typed('a')), "a");
  EXPECT_EQ(flagged(kText | kDisambiguate, typed('a', kAlt)), "^[[97;3u");
}

TEST(VtKeyboardProtocol, ReportsKeyZeroForTextWithoutAKey) {
  KeyEvent composed = pressed(Key::Character);
  composed.text = "\u65E5\u672C";
  EXPECT_EQ(flagged(kEvery | kText, composed), "^[[0;;26085:26412u");
  EXPECT_EQ(flagged(kEvery, composed), "\u65E5\u672C");
  EXPECT_EQ(flagged(kDisambiguate, composed), "\u65E5\u672C");
  EXPECT_EQ(flagged(kEvery | kText | kEvents, released(composed)), "");
  composed.text.clear();
  EXPECT_EQ(flagged(kEvery | kText, composed), "");
}

TEST(VtKeyboardProtocol, ReportsModifiersAndLocksOnlyIfAllKeysAreReported) {
  for (const unsigned flags : {0U, 1U, 2U, 3U, 7U, 16U, 23U}) {
    for (const Key key : {Key::LeftShift, Key::RightMeta, Key::CapsLock, Key::NumLock, Key::IsoLevel3Shift}) {
      EXPECT_EQ(flagged(flags, pressed(key, kShift)), "") << flags;
      EXPECT_EQ(flagged(flags, released(pressed(key))), "") << flags;
    }
  }
  EXPECT_EQ(flagged(kEvery, pressed(Key::LeftControl, kControl)), "^[[57442;5u");
  EXPECT_EQ(flagged(kEvery | kEvents, released(pressed(Key::LeftControl))), "^[[57442;1:3u");
  EXPECT_EQ(flagged(kEvery | kEvents, released(pressed(Key::LeftControl, kControl))), "^[[57442;5:3u");
  EXPECT_EQ(flagged(kEvery, pressed(Key::CapsLock, Modifier::CapsLock)), "^[[57358;65u");
}

TEST(VtKeyboardProtocol, ReportsADeadKeyIfAllKeysAreReported) {
  KeyEvent dead = pressed(Key::Character);
  dead.character = U'\u00B4';
  EXPECT_EQ(flagged(kEvery, dead), "^[[180u");
  EXPECT_EQ(flagged(kEvery | kText, dead), "^[[180u");
}

TEST(VtKeyboardProtocol, DistinguishesKeypadKeys) {
  EXPECT_EQ(flagged(kDisambiguate, pressed(Key::KeypadHome)), "^[[57423u");
  EXPECT_EQ(flagged(kDisambiguate, pressed(Key::KeypadBegin)), "^[[E");
  EXPECT_EQ(flagged(kDisambiguate, pressed(Key::KeypadBegin, kControl)), "^[[1;5E");
  EXPECT_EQ(flagged(kDisambiguate, pressed(Key::Keypad5, kControl)), "^[[57404;5u");
  EXPECT_EQ(flagged(kDisambiguate, pressed(Key::KeypadAdd, kAlt)), "^[[57413;3u");
  const KeyboardModes application = {.applicationKeypad = true, .flags = kEvents};
  EXPECT_EQ(keyBytes(pressed(Key::Keypad5), application), "^[Ou");
  EXPECT_EQ(keyBytes(repeated(pressed(Key::Keypad5)), application), "^[Ou");
}

}  // namespace
}  // namespace zolt::vt
