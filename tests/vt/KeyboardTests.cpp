#include "vt/input/Keyboard.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

#include "text/GraphemeClusters.h"
#include "vt/KeyEvents.h"
#include "vt/KeyExpectations.h"

namespace zolt::vt {
namespace {

constexpr Modifiers kNone;
constexpr Modifiers kShift = Modifier::Shift;
constexpr Modifiers kAlt = Modifier::Alt;
constexpr Modifiers kControl = Modifier::Control;

TEST(VtEveryKey, IsEncodedLikeXterm) {
  for (const KeyExpectation& expected : keyExpectations()) {
    SCOPED_TRACE(expected.every);
    EXPECT_EQ(keyBytes(pressed(expected.key)), expected.legacy);
    EXPECT_EQ(keyBytes(pressed(expected.key), {.applicationCursor = true}), expected.applicationCursor);
    EXPECT_EQ(keyBytes(pressed(expected.key, kControl)), expected.legacyControl);
    EXPECT_EQ(keyBytes(pressed(expected.key, kControl), {.applicationCursor = true}), expected.legacyControl);
  }
}

TEST(VtEveryKey, SendsNothingWhenReleasedAndTheSameAgainWhenRepeated) {
  for (const KeyExpectation& expected : keyExpectations()) {
    SCOPED_TRACE(expected.every);
    const KeyEvent event = pressed(expected.key);
    EXPECT_EQ(keyBytes(with(KeyAction::Release, event)), "");
    EXPECT_EQ(keyBytes(with(KeyAction::Repeat, event)), expected.legacy);
  }
}

TEST(VtEveryKey, IgnoresLocksAndSendsNothingWithSuperOrHyper) {
  for (const KeyExpectation& expected : keyExpectations()) {
    SCOPED_TRACE(expected.every);
    EXPECT_EQ(keyBytes(pressed(expected.key, kLocks)), expected.legacy);
    EXPECT_EQ(keyBytes(pressed(expected.key, Modifier::Super)), "");
    EXPECT_EQ(keyBytes(pressed(expected.key, Modifier::Hyper)), "");
  }
}

TEST(VtKeyboard, HasAnExpectationForEveryKey) {
  std::set<int> keys = {static_cast<int>(Key::Character)};
  for (const KeyExpectation& expected : keyExpectations()) {
    EXPECT_TRUE(keys.insert(static_cast<int>(expected.key)).second) << expected.every;
  }
  EXPECT_EQ(keys.size(), 112U);
  EXPECT_EQ(*keys.rbegin(), static_cast<int>(kLastKey));
}

struct Combination {
  KeyEvent event;
  std::string expected;
};

void expectAll(const std::vector<Combination>& combinations, const KeyboardModes& modes) {
  for (const Combination& one : combinations) {
    EXPECT_EQ(keyBytes(one.event, modes), one.expected)
        << "key " << static_cast<int>(one.event.key) << ", character " << static_cast<int>(one.event.character)
        << ", modifiers " << static_cast<int>(one.event.modifiers.bits());
  }
}

// The kitty protocol's table "C0 controls".
TEST(VtKeyboard, SendsControlCharactersForControlKeys) {
  struct Row {
    KeyEvent key;
    std::string plain, control, alt, shift, controlShift, altShift, controlAlt;
  };
  const Row rows[] = {
      {pressed(Key::Enter), "^M", "^M", "^[^M", "^M", "^M", "^[^M", "^[^M"},
      {pressed(Key::Escape), "^[", "^[", "^[^[", "^[", "^[", "^[^[", "^[^["},
      {pressed(Key::Backspace), "^?", "^H", "^[^?", "^?", "^H", "^[^?", "^[^H"},
      {pressed(Key::Tab), "^I", "^I", "^[^I", "^[[Z", "^[[Z", "^[^[[Z", "^[^I"},
      {typed(' '), " ", "^@", "^[ ", " ", "^@", "^[ ", "^[^@"},
  };
  for (const Row& row : rows) {
    const auto held = [&](Modifiers modifiers) {
      return row.key.key == Key::Character ? typed(' ', modifiers) : pressed(row.key.key, modifiers);
    };
    expectAll({{held(kNone), row.plain},
               {held(kControl), row.control},
               {held(kAlt), row.alt},
               {held(kShift), row.shift},
               {held(kControl | kShift), row.controlShift},
               {held(kAlt | kShift), row.altShift},
               {held(kControl | kAlt), row.controlAlt}},
              {});
  }
}

// The kitty protocol's table "Emitted bytes when ctrl is held down", and the other characters with a control.
TEST(VtKeyboard, SendsControlCharactersForControlWithACharacter) {
  expectAll({{typed(' ', kControl), "^@"},          {typed('/', kControl), "^_"},
             {typed('0', kControl), "0"},           {typed('1', kControl), "1"},
             {typed('2', kControl), "^@"},          {typed('3', kControl), "^["},
             {typed('4', kControl), "^\\"},         {typed('5', kControl), "^]"},
             {typed('6', kControl), "^^"},          {typed('7', kControl), "^_"},
             {typed('8', kControl), "^?"},          {typed('9', kControl), "9"},
             {typed('/', kControl | kShift), "^?"}, {typed('2', kControl | kShift), "^@"},
             {typed('[', kControl), "^["},          {typed('\\', kControl), "^\\"},
             {typed(']', kControl), "^]"},          {typed('6', kControl | kShift), "^^"},
             {typed('-', kControl | kShift), "^_"}, {typed('`', kControl | kShift), "^^"},
             {typed('`', kControl), "^@"},          {typed('[', kControl | kShift), "^["},
             {typed('-', kControl), "-"},           {typed('=', kControl), "="},
             {typed(';', kControl), ";"},           {typed(',', kControl), ","},
             {typed('1', kControl | kShift), "!"},  {typed('=', kControl | kShift), "+"}},
            {});
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    const std::string expected = {'^', static_cast<char>(letter - 'a' + 'A')};
    const auto character = static_cast<char32_t>(letter);
    EXPECT_EQ(keyBytes(typed(character, kControl)), expected);
    EXPECT_EQ(keyBytes(typed(character, kControl | kShift)), expected);
    EXPECT_EQ(keyBytes(typed(character, kControl | Modifier::CapsLock)), expected);
    EXPECT_EQ(keyBytes(typed(character, kControl | kAlt)), "^[" + expected);
  }
}

TEST(VtKeyboard, SendsTextAndPrefixesItWithEscapeForAlt) {
  expectAll({{typed('i'), "i"},
             {typed('i', kShift), "I"},
             {typed('i', kAlt), "^[i"},
             {typed('i', kShift | kAlt), "^[I"},
             {typed('3', kShift), "#"},
             {typed('3', kAlt), "^[3"},
             {typed('3', kShift | kAlt), "^[#"},
             {typed(';', kControl | kAlt), "^[;"},
             {typed('i', Modifier::Meta), "^[i"}},
            {});
  expectAll({{typed('i', kAlt), "i"},
             {typed('i', kAlt | kControl), "^I"},
             {pressed(Key::Enter, kAlt), "^M"},
             {pressed(Key::Tab, kAlt | kShift), "^[[Z"}},
            {.altSendsEscape = false});
}

TEST(VtKeyboard, SendsTextInAnyScriptWithoutControlCharacters) {
  KeyEvent event = typed('a');
  event.text = "\u00e9\u65e5\U0001F600";
  EXPECT_EQ(keyBytes(event), "\u00e9\u65e5\U0001F600");
  event.text = "x\x1B[2J\u009B\x7Fy\r";
  EXPECT_EQ(keyBytes(event), "x[2Jy");
  event.text = "\x1B";
  EXPECT_EQ(keyBytes(event), "");
  event.text = "a\xFFz\xE6\x97";
  EXPECT_EQ(keyBytes(event), "a\uFFFDz\uFFFD");
}

TEST(VtKeyboard, SendsNothingForADeadKeyOrOneWithSuper) {
  KeyEvent dead = pressed(Key::Character);
  dead.character = U'\u00B4';
  EXPECT_EQ(keyBytes(dead), "");
  KeyEvent command = typed('a', Modifier::Super);
  command.text = "a";
  EXPECT_EQ(keyBytes(command), "");
}

TEST(VtKeyboard, NeverSendsAnInvalidCharacter) {
  for (const char32_t character :
       {char32_t{0x1B}, char32_t{0x9B}, char32_t{0x7F}, char32_t{0xD800}, char32_t{0x110000}}) {
    KeyEvent event = pressed(Key::Character, kAlt);
    event.character = character;
    EXPECT_EQ(keyBytes(event), "") << static_cast<unsigned>(character);
    for (int level = 0; level <= 2; ++level) {
      event.modifiers = kControl | kAlt | kShift;
      EXPECT_EQ(keyBytes(event, {.modifyOtherKeys = level}), "") << static_cast<unsigned>(character);
    }
  }
}

TEST(VtKeyboard, UsesTheBaseLayoutForControlInOtherScripts) {
  KeyEvent event = pressed(Key::Character, kControl);
  event.character = U'\u0441';  // Cyrillic es, on the key of "c"
  event.baseLayout = U'c';
  EXPECT_EQ(keyBytes(event), "^C");
  event.modifiers = kAlt;
  EXPECT_EQ(keyBytes(event), "^[\u0441");
  // On French keyboards the "2" key types "é".
  event.modifiers = kControl;
  event.character = U'\u00E9';
  event.baseLayout = U'2';
  EXPECT_EQ(keyBytes(event), "\u00E9");
}

TEST(VtKeyboard, UsesTheKeyRatherThanItsOtherLayersWithAlt) {
  KeyEvent event = typed('a', kAlt);
  event.text = "\u00E5";  // what Option types
  EXPECT_EQ(keyBytes(event), "^[a");
  event.text = "A";  // Caps Lock
  EXPECT_EQ(keyBytes(event), "^[A");
  event.text.clear();
  event.shifted = 0;
  event.modifiers = kAlt | kShift;
  EXPECT_EQ(keyBytes(event), "^[a");
}

// Control characters in a key's text are never sent.
TEST(VtKeyboard, SendsNoControlCharactersFromText) {
  std::mt19937 random(7);
  constexpr char kPieces[] = "\x1B[]O\r\n\t\0\x7F\xC2\x9B\x80\xE2\x82\xAC\xF0xyz";
  for (int round = 0; round < 20000; ++round) {
    KeyEvent event = pressed(round % 3 == 0 ? Key::Keypad5 : Key::Character);
    event.character = random() % 0x100;
    event.modifiers = (random() % 2 == 0 ? kShift : kNone) | (random() % 2 == 0 ? kLocks : kNone);
    for (auto length = random() % 8; length > 0; --length) {
      event.text += kPieces[random() % (sizeof kPieces - 1)];
    }
    const KeyboardModes modes = {.flags = static_cast<std::uint8_t>(random() % 8)};
    const std::string bytes = encodeKey(event, modes);
    ASSERT_TRUE(isValidUtf8(bytes)) << shown(event.text);
    forEachScalar(bytes, [&](char32_t scalar) { ASSERT_FALSE(isControl(scalar)) << shown(event.text); });
  }
}

}  // namespace
}  // namespace zolt::vt
