#include "terminal/input/QtKeys.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

#include "terminal/QtKeyEvents.h"

namespace zolt {
namespace {

using test::kMac;
using test::kXkb;
using test::pressed;
using test::QtPress;
using vt::Key;
using vt::KeyAction;
using vt::Modifier;
using vt::Modifiers;

Key keyOf(const QtPress& press, const KeyTranslationOptions& options) {
  const auto event = translateKey(pressed(press), options);
  return event ? event->key : Key::Character;
}

Key keyAfter(Key key, int count) {
  return static_cast<Key>(static_cast<int>(key) + count);
}

// Checks that every key of the rows is translated as they say, and notes it.
void expectEveryRow(std::span<const QtKeyRow> rows, Qt::KeyboardModifiers modifiers,
                    const KeyTranslationOptions& options, std::set<Key>& reached) {
  for (const QtKeyRow& row : rows) {
    for (int i = 0; i < row.count; ++i) {
      const Key key = keyOf({.key = row.qtKey + i, .modifiers = modifiers}, options);
      EXPECT_EQ(key, keyAfter(row.key, i)) << std::hex << row.qtKey + i;
      reached.insert(key);
    }
  }
}

TEST(QtKeys, AllKeysThatTheSystemCanReportAreReachedAndEveryRowIsUsed) {
  std::set<Key> reached{Key::Character};
  expectEveryRow(mainKeys(), {}, kXkb, reached);
  expectEveryRow(keypadKeys(), Qt::KeypadModifier, kXkb, reached);
  for (const NativeKeyRow& row : nativeKeys(KeyboardSystem::Xkb)) {
    EXPECT_EQ(keyOf({.virtualKey = row.virtualKey}, kXkb), row.key) << std::hex << row.virtualKey;
    reached.insert(row.key);
  }
  for (int key = 0; key <= static_cast<int>(vt::kLastKey); ++key) {
    const bool isUnknownToQt = static_cast<Key>(key) == Key::MediaReverse;
    EXPECT_EQ(reached.contains(static_cast<Key>(key)), !isUnknownToQt) << key;
  }
}

TEST(QtKeys, EveryRowOfAMacIsUsed) {
  std::set<Key> reached;
  expectEveryRow(macKeys(), {}, kMac, reached);
  expectEveryRow(macKeys(), Qt::KeypadModifier, kMac, reached);
  for (const NativeKeyRow& row : nativeKeys(KeyboardSystem::Mac)) {
    EXPECT_EQ(keyOf({.virtualKey = row.virtualKey}, kMac), row.key) << std::hex << row.virtualKey;
  }
}

TEST(QtKeys, NumLockHasChosenBetweenTheTwoKeysOfAKeypadKey) {
  EXPECT_EQ(keyOf({.key = Qt::Key_7, .modifiers = Qt::KeypadModifier, .text = u"7"}, kXkb), Key::Keypad7);
  EXPECT_EQ(keyOf({.key = Qt::Key_Home, .modifiers = Qt::KeypadModifier}, kXkb), Key::KeypadHome);
  EXPECT_EQ(keyOf({.key = Qt::Key_7, .text = u"7"}, kXkb), Key::Character);
  EXPECT_EQ(keyOf({.key = Qt::Key_Home}, kXkb), Key::Home);
}

TEST(QtKeys, KeypadKeysHaveNoPlaceInTheMainLayout) {
  const auto event = translateKey(
      pressed({.key = Qt::Key_Slash, .modifiers = Qt::KeypadModifier, .text = u"/", .scanCode = 106}), kXkb);
  ASSERT_TRUE(event);
  EXPECT_EQ(event->key, Key::KeypadDivide);
  EXPECT_EQ(event->text, "/");
  EXPECT_EQ(event->character, 0U);
  EXPECT_EQ(event->baseLayout, 0U);
}

TEST(QtKeys, TheKeypadOfAMacHasNumLockButNoArrowKeys) {
  EXPECT_EQ(keyOf({.key = Qt::Key_Enter, .modifiers = Qt::KeypadModifier, .text = u"\r"}, kMac), Key::KeypadEnter);
  EXPECT_EQ(keyOf({.key = Qt::Key_5, .modifiers = Qt::KeypadModifier, .text = u"5", .virtualKey = 0x57}, kMac),
            Key::Keypad5);
  EXPECT_EQ(keyOf({.key = Qt::Key_Up, .modifiers = Qt::KeypadModifier}, kMac), Key::Up);
  EXPECT_EQ(keyOf({.key = Qt::Key_Clear, .modifiers = Qt::KeypadModifier}, kMac), Key::NumLock);
}

TEST(QtKeys, FunctionalKeysHaveNeitherCharactersNorTheControlCharactersOfTheirText) {
  for (const QtPress& press :
       {QtPress{.key = Qt::Key_Return, .text = u"\r", .scanCode = 36}, QtPress{.key = Qt::Key_Escape, .text = u"\x1B"},
        QtPress{.key = Qt::Key_Backspace, .text = u"\b"}, QtPress{.key = Qt::Key_Delete, .text = u"\x7F"}}) {
    const auto event = translateKey(pressed(press), kXkb);
    ASSERT_TRUE(event);
    EXPECT_NE(event->key, Key::Character);
    EXPECT_EQ(event->text, "");
    EXPECT_EQ(event->character, 0U);
  }
}

TEST(QtKeys, BacktabIsTabWithShift) {
  for (const Qt::KeyboardModifiers held : {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ShiftModifier)}) {
    const auto event = translateKey(pressed({.key = Qt::Key_Backtab, .modifiers = held}), kXkb);
    ASSERT_TRUE(event);
    EXPECT_EQ(event->key, Key::Tab);
    EXPECT_EQ(event->modifiers, Modifiers(Modifier::Shift));
  }
}

TEST(QtKeys, PressesRepeatsAndReleasesAreTold) {
  const QtPress up{.key = Qt::Key_Up};
  EXPECT_EQ(translateKey(pressed(up), kXkb)->action, KeyAction::Press);
  EXPECT_EQ(translateKey(pressed(up, QEvent::KeyPress, true), kXkb)->action, KeyAction::Repeat);
  EXPECT_EQ(translateKey(pressed(up, QEvent::KeyRelease), kXkb)->action, KeyAction::Release);
  EXPECT_FALSE(translateKey(pressed(up, QEvent::KeyRelease, true), kXkb)) << "made up between repeats";
}

TEST(QtKeys, KeysThatAreUnknownAndTypeNothingAreNotTranslated) {
  for (const int key : {0, int(Qt::Key_unknown), int(Qt::Key_Multi_key), int(Qt::Key_LaunchMail)}) {
    EXPECT_FALSE(translateKey(pressed({.key = key}), kXkb)) << std::hex << key;
    EXPECT_FALSE(translateKey(pressed({.key = key}), kMac)) << std::hex << key;
  }
  const auto event = translateKey(pressed({.key = Qt::Key_unknown, .text = u"ﬁ"}), kXkb);
  ASSERT_TRUE(event);
  EXPECT_EQ(event->key, Key::Character);
  EXPECT_EQ(event->text, "ﬁ");
}

TEST(ModifierKeys, IncludeThemselvesWhenPressedAndNotWhenReleased) {
  // Qt takes a modifier key's own modifier from the state before the event.
  for (const auto& [key, keysym, modifier] :
       {std::tuple{Qt::Key_Shift, 0xFFE2U, Modifier::Shift}, std::tuple{Qt::Key_Control, 0xFFE3U, Modifier::Control},
        std::tuple{Qt::Key_Alt, 0xFFEAU, Modifier::Alt}, std::tuple{Qt::Key_Meta, 0xFFEBU, Modifier::Super},
        std::tuple{Qt::Key_Hyper_L, 0xFFEDU, Modifier::Hyper}, std::tuple{Qt::Key_Meta, 0xFFE8U, Modifier::Meta}}) {
    const QtPress press{.key = key, .virtualKey = keysym};
    const auto down = translateKey(pressed(press), kXkb);
    ASSERT_TRUE(down);
    EXPECT_TRUE(down->modifiers.hasAny(modifier)) << std::hex << keysym;
    const auto up = translateKey(pressed(press, QEvent::KeyRelease), kXkb);
    EXPECT_FALSE(up->modifiers.hasAny(modifier)) << std::hex << keysym;
  }
}

TEST(ModifierKeys, EveryOneHasAModifierAndOthersHaveNone) {
  for (int i = 0; i <= static_cast<int>(vt::kLastKey); ++i) {
    const Key key = static_cast<Key>(i);
    const bool isModifier = key >= Key::LeftShift && key <= Key::RightMeta;
    EXPECT_EQ(!modifierOf(key).isEmpty(), isModifier) << i;
  }
}

TEST(ModifierKeys, AltThatIsMetaWithShiftStaysAlt) {
  const QtPress press{.key = Qt::Key_Meta, .modifiers = Qt::ShiftModifier, .scanCode = 64, .virtualKey = 0xFFE7};
  EXPECT_EQ(keyOf(press, kXkb), Key::LeftAlt);
  EXPECT_EQ(keyOf({.key = Qt::Key_Meta, .modifiers = Qt::ShiftModifier, .virtualKey = 0xFFE8}, kXkb), Key::RightAlt);
  EXPECT_EQ(keyOf({.key = Qt::Key_Meta, .virtualKey = 0xFFE7}, kXkb), Key::LeftMeta);
}

TEST(ModifierKeys, CommandActsAsAltIfWanted) {
  KeyTranslationOptions options = kXkb;
  options.commandIsMeta = true;
  const auto super = translateKey(pressed({.key = Qt::Key_Meta, .virtualKey = 0xFFEC}), options);
  ASSERT_TRUE(super);
  EXPECT_EQ(super->key, Key::RightAlt);
  EXPECT_EQ(super->modifiers, Modifiers(Modifier::Alt));
  EXPECT_EQ(keyOf({.key = Qt::Key_Super_L}, options), Key::LeftAlt);
  options.system = KeyboardSystem::Mac;
  EXPECT_EQ(keyOf({.key = Qt::Key_Control, .virtualKey = 0x37}, options), Key::LeftAlt);
  EXPECT_EQ(translateKey(pressed({.key = Qt::Key_Left, .modifiers = Qt::ControlModifier}), options)->modifiers,
            Modifiers(Modifier::Alt));
}

TEST(Modifiers, AreThoseOfTheSystem) {
  struct Row {
    Qt::KeyboardModifiers held;
    Modifiers xkb;
    Modifiers mac;
  };
  const Row rows[] = {
      {Qt::NoModifier, {}, {}},
      {Qt::ShiftModifier, Modifier::Shift, Modifier::Shift},
      {Qt::AltModifier, Modifier::Alt, Modifier::Alt},
      {Qt::ControlModifier, Modifier::Control, Modifier::Super},
      {Qt::MetaModifier, Modifier::Super, Modifier::Control},
      {Qt::KeypadModifier | Qt::GroupSwitchModifier, {}, {}},
      {Qt::ShiftModifier | Qt::MetaModifier, Modifier::Shift | Modifier::Super, Modifier::Shift | Modifier::Control},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(translateModifiers(row.held, KeyboardSystem::Xkb), row.xkb) << row.held;
    EXPECT_EQ(translateModifiers(row.held, KeyboardSystem::Mac), row.mac) << row.held;
  }
}

TEST(Modifiers, IncludeTheLocksThatAreOn) {
  KeyTranslationOptions options = kXkb;
  options.capsLock = true;
  EXPECT_EQ(translateKey(pressed({.key = Qt::Key_Up}), options)->modifiers, Modifiers(Modifier::CapsLock));
  options.numLock = true;
  EXPECT_EQ(translateKey(pressed({.key = Qt::Key_Up, .modifiers = Qt::ShiftModifier}), options)->modifiers,
            Modifier::Shift | vt::kLocks);
}

TEST(Modifiers, LocksAreAmongTheNativeOnes) {
  const auto locks = [](quint32 native, KeyboardSystem system) {
    return nativeLocks(QKeyEvent(QEvent::KeyPress, Qt::Key_A, {}, 38, 'a', native), system);
  };
  EXPECT_EQ(locks(0x00, KeyboardSystem::Xkb), Modifiers());
  EXPECT_EQ(locks(0x02, KeyboardSystem::Xkb), Modifiers(Modifier::CapsLock));
  EXPECT_EQ(locks(0x10, KeyboardSystem::Xkb), Modifiers(Modifier::NumLock));
  EXPECT_EQ(locks(0xED, KeyboardSystem::Xkb), Modifiers());
  EXPECT_EQ(locks(0x10000, KeyboardSystem::Mac), Modifiers(Modifier::CapsLock));
  EXPECT_EQ(locks(0x20012, KeyboardSystem::Mac), Modifiers());
}

}  // namespace
}  // namespace zolt
