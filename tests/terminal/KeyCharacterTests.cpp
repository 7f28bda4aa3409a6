// Keys that are identified by a character: which it is, what they type, and what the program gets.
#include <gtest/gtest.h>

#include <string>

#include "terminal/QtKeyEvents.h"
#include "terminal/input/PcKeyboard.h"
#include "vt/KeyEvents.h"

namespace zolt {
namespace {

using test::kMac;
using test::kXkb;
using test::QtPress;
using vt::Modifier;
using vt::Modifiers;

constexpr Qt::KeyboardModifiers kNone{};
constexpr Qt::KeyboardModifiers kShift = Qt::ShiftModifier;
constexpr Qt::KeyboardModifiers kControl = Qt::ControlModifier;
constexpr Qt::KeyboardModifiers kAlt = Qt::AltModifier;
constexpr Qt::KeyboardModifiers kMeta = Qt::MetaModifier;
constexpr Qt::KeyboardModifiers kAltGr = Qt::GroupSwitchModifier;

struct Case {
  const char* says;
  QtPress press;
  char32_t character;
  char32_t shifted;
  char32_t baseLayout;
  const char* text;
  Modifiers modifiers{};
  const char* legacy = "";  // the bytes without modes, in caret notation
};

std::string codePoint(char32_t character) {
  std::string text;
  if (character != 0) appendUtf8(text, character);
  return text;
}

void check(const Case& row, const KeyTranslationOptions& options) {
  SCOPED_TRACE(row.says);
  const auto event = translateKey(test::pressed(row.press), options);
  ASSERT_TRUE(event);
  EXPECT_EQ(event->key, vt::Key::Character);
  EXPECT_EQ(codePoint(event->character), codePoint(row.character));
  EXPECT_EQ(codePoint(event->shifted), codePoint(row.shifted));
  EXPECT_EQ(codePoint(event->baseLayout), codePoint(row.baseLayout));
  EXPECT_EQ(event->text, row.text);
  EXPECT_EQ(event->modifiers.bits(), row.modifiers.bits());
  EXPECT_EQ(vt::keyBytes(*event), row.legacy);
}

// clang-format off
const Case kXkbCases[] = {
    {"a letter",                 {Qt::Key_A, kNone, u"a", 38, 'a'},  'a', 'A', 'a', "a", {}, "a"},
    {"with Shift",               {Qt::Key_A, kShift, u"A", 38, 'A'}, 'a', 'A', 'a', "A", Modifier::Shift, "A"},
    {"with Caps Lock",           {Qt::Key_A, kNone, u"A", 38, 'A'},  'a', 'A', 'a', "A", {}, "A"},
    {"without native codes",     {Qt::Key_A, kShift, u"A"},          'a', 'A', 0,   "A", Modifier::Shift, "A"},
    {"the space bar",            {Qt::Key_Space, kNone, u" ", 65, ' '},      ' ', ' ', ' ', " ", {}, " "},
    {"the space bar with Control", {Qt::Key_Space, kControl, {u"\0", 1}, 65, ' '}, ' ', ' ', ' ', "", Modifier::Control, "^@"},
    {"a digit",                  {Qt::Key_1, kNone, u"1", 10, '1'},            '1', '!', '1', "1", {}, "1"},
    {"a symbol over a digit",    {Qt::Key_Exclam, kShift, u"!", 10, '!'},      '1', '!', '1', "!", Modifier::Shift, "!"},
    {"a symbol over a symbol",   {Qt::Key_Question, kShift, u"?", 61, '?'},    '/', '?', '/', "?", Modifier::Shift, "?"},
    {"German: Shift-7",          {Qt::Key_Slash, kShift, u"/", 16, '/'},       '7', '/', '7', "/", Modifier::Shift, "/"},
    {"German: Shift-ß",          {Qt::Key_Question, kShift, u"?", 20, '?'},    '?', '?', '-', "?", Modifier::Shift, "?"},
    {"German: y",                {Qt::Key_Y, kNone, u"y", 52, 'y'},            'y', 'Y', 'z', "y", {}, "y"},
    {"German: a letter that is not ASCII", {Qt::Key_Odiaeresis, kNone, u"ö", 47, 0xF6}, U'ö', U'Ö', ';', "ö", {}, "ö"},
    {"French: a symbol on a digit key", {Qt::Key_Ampersand, kNone, u"&", 10, '&'}, '&', 0, '1', "&", {}, "&"},
    {"French: its digit",        {Qt::Key_1, kShift, u"1", 10, '1'},           '1', '1', '1', "1", Modifier::Shift, "1"},
    {"a symbol without a place", {Qt::Key_Exclam, kShift, u"!"},               '!', '!', 0, "!", Modifier::Shift, "!"},

    {"Control with a letter",    {Qt::Key_C, kControl, u"\x03", 54, 'c'},           'c', 'C', 'c', "", Modifier::Control, "^C"},
    {"and Shift",                {Qt::Key_C, kControl | kShift, u"\x03", 54, 'C'},  'c', 'C', 'c', "", Modifier::Control | Modifier::Shift, "^C"},
    {"without native codes",     {Qt::Key_C, kControl, u"\x03"},                    'c', 'C', 0,   "", Modifier::Control, "^C"},
    {"without text",             {Qt::Key_C, kControl},                             'c', 'C', 0,   "", Modifier::Control, "^C"},
    {"Control with a digit",     {Qt::Key_3, kControl, u"\x1B", 12, '3'},           '3', '#', '3', "", Modifier::Control, "^["},
    {"Control with a digit that has no control character", {Qt::Key_1, kControl, u"1", 10, '1'}, '1', '!', '1', "1", Modifier::Control, "1"},
    {"Control with a bracket",   {Qt::Key_BracketLeft, kControl, u"\x1B", 34, '['}, '[', '{', '[', "", Modifier::Control, "^["},
    {"Control with 8, whose control character is DEL", {Qt::Key_8, kControl, u"\x7F", 17, '8'}, '8', '*', '8', "", Modifier::Control, "^?"},
    {"Control-Shift-2",          {Qt::Key_At, kControl | kShift, {u"\0", 1}, 11, '@'}, '2', '@', '2', "", Modifier::Control | Modifier::Shift, "^@"},
    {"Control with a letter that is not ASCII", {Qt::Key_Odiaeresis, kControl, u"ö", 47, 0xF6}, U'ö', U'Ö', ';', "ö", Modifier::Control, "ö"},

    {"Russian",                  {0x0421, kNone, u"с", 54, 0x6D3},                  U'с', U'С', 'c', "с", {}, "с"},
    {"Russian with Shift",       {0x0421, kShift, u"С", 54, 0x6F3},                 U'с', U'С', 'c', "С", Modifier::Shift, "С"},
    {"Russian with Control, which Qt reports as Latin", {Qt::Key_C, kControl, u"\x03", 54, 0x6D3}, U'с', U'С', 'c', "", Modifier::Control, "^C"},
    {"Greek with Control",       {Qt::Key_A, kControl, u"\x01", 38, 0x7E1},         U'α', U'Α', 'a', "", Modifier::Control, "^A"},
    {"Hebrew with Control",      {Qt::Key_C, kControl, u"\x03", 54, 0xCE1},         U'ב', 0, 'c', "", Modifier::Control, "^C"},
    {"a Unicode keysym with Control", {0x0561, kControl, u"", 38, 0x01000561},      U'ա', U'Ա', 'a', "", Modifier::Control, "^A"},

    {"Alt",                      {Qt::Key_X, kAlt, u"x", 53, 'x'},                  'x', 'X', 'x', "x", Modifier::Alt, "^[x"},
    {"Alt with Shift",           {Qt::Key_X, kAlt | kShift, u"X", 53, 'X'},         'x', 'X', 'x', "X", Modifier::Alt | Modifier::Shift, "^[X"},
    {"Alt with Control",         {Qt::Key_X, kAlt | kControl, u"\x18", 53, 'x'},    'x', 'X', 'x', "", Modifier::Alt | Modifier::Control, "^[^X"},
    {"Super",                    {Qt::Key_X, kMeta, u"x", 53, 'x'},                 'x', 'X', 'x', "x", Modifier::Super, ""},
    {"AltGr types",              {Qt::Key_At, kAltGr, u"@", 24, '@'},               '@', 0, 'q', "@", {}, "@"},
    {"AltGr with Alt held too",  {Qt::Key_At, kAltGr | kAlt, u"@", 24, '@'},        '@', 0, 'q', "@", Modifier::Alt, "^[@"},
    {"AltGr with Control",       {Qt::Key_BracketLeft, kAltGr | kControl, u"\x1B", 17, '['}, '[', 0, '8', "", Modifier::Control, "^["},

    {"a dead key",               {Qt::Key_Dead_Acute, kNone, u"", 21, 0xFE51},      0, 0, '=', "", {}, ""},
    {"the last dead key",        {Qt::Key_Dead_Longsolidusoverlay, kNone, u"", 21}, 0, 0, '=', "", {}, ""},
    {"a dead key with Alt",      {Qt::Key_Dead_Acute, kAlt, u"", 21, 0xFE51},       0, 0, '=', "", Modifier::Alt, ""},
    {"several characters",       {Qt::Key_unknown, kNone, u"ลำ"},                   0, 0, 0, "ลำ", {}, "ลำ"},
    {"a character outside the first plane", {Qt::Key_unknown, kNone, u"\U0001F600", 38, 0x0101F600}, U'\U0001F600', 0, 'a', "\U0001F600", {}, "\U0001F600"},
};

const Case kMacCases[] = {
    {"a letter",                 {Qt::Key_A, kNone, u"a", 0, 0x00},         'a', 'A', 'a', "a", {}, "a"},
    {"a symbol over a digit",    {Qt::Key_Exclam, kShift, u"!", 0, 0x12},   '1', '!', '1', "!", Modifier::Shift, "!"},
    {"German: z",                {Qt::Key_Z, kNone, u"z", 0, 0x10},         'z', 'Z', 'y', "z", {}, "z"},
    {"Control",                  {Qt::Key_C, kMeta, u"\x03", 0, 0x08},      'c', 'C', 'c', "", Modifier::Control, "^C"},
    {"Command",                  {Qt::Key_C, kControl, u"c", 0, 0x08},      'c', 'C', 'c', "c", Modifier::Super, ""},
    {"Option types",             {Qt::Key_A, kAlt, u"å", 0, 0x00},          'a', 'A', 'a', "å", {}, "å"},
    {"Option-Shift types",       {Qt::Key_A, kAlt | kShift, u"Å", 0, 0x00}, 'a', 'A', 'a', "Å", Modifier::Shift, "Å"},
    {"Option with a dead key",   {Qt::Key_E, kAlt, u"", 0, 0x0E},           'e', 'E', 'e', "", {}, ""},
    {"Option with Control",      {Qt::Key_A, kAlt | kMeta, u"\x01", 0, 0},  'a', 'A', 'a', "", Modifier::Alt | Modifier::Control, "^[^A"},
    {"Option with Command",      {Qt::Key_A, kAlt | kControl, u"å", 0, 0},  'a', 'A', 'a', "", Modifier::Alt | Modifier::Super, ""},
};

const Case kOptionIsMetaCases[] = {
    {"a letter",                 {Qt::Key_A, kAlt, u"å", 0, 0x00},          'a', 'A', 'a', "", Modifier::Alt, "^[a"},
    {"with Shift",               {Qt::Key_A, kAlt | kShift, u"Å", 0, 0x00}, 'a', 'A', 'a', "", Modifier::Alt | Modifier::Shift, "^[A"},
    {"a dead key",               {Qt::Key_E, kAlt, u"", 0, 0x0E},           'e', 'E', 'e', "", Modifier::Alt, "^[e"},
    {"a period",                 {Qt::Key_Period, kAlt, u"≥", 0, 0x2F},     '.', '>', '.', "", Modifier::Alt, "^[."},
};
// clang-format on

// clang-format off
const Case kAltTypesCases[] = {
    {"a letter",                 {Qt::Key_X, kAlt, u"x", 53, 'x'},               'x', 'X', 'x', "x", {}, "x"},
    {"with Shift",               {Qt::Key_X, kAlt | kShift, u"X", 53, 'X'},      'x', 'X', 'x', "X", Modifier::Shift, "X"},
    {"with AltGr",               {Qt::Key_At, kAltGr | kAlt, u"@", 24, '@'},     '@', 0, 'q', "@", {}, "@"},
    {"with Control",             {Qt::Key_X, kAlt | kControl, u"\x18", 53, 'x'}, 'x', 'X', 'x', "", Modifier::Alt | Modifier::Control, "^[^X"},
};
// clang-format on

TEST(KeyCharacters, AltOnlyTypesIfThatIsWantedOnX11AndWayland) {
  KeyTranslationOptions options = kXkb;
  options.optionIsMeta = false;
  for (const Case& row : kAltTypesCases) {
    check(row, options);
  }
  options.commandIsMeta = true;
  check({"Super", {Qt::Key_X, kMeta, u"x", 53, 'x'}, 'x', 'X', 'x', "x", Modifier::Alt, "^[x"}, options);
}

TEST(KeyCharacters, AltIsToldToAProgramThatIsToldModifiersOnX11AndWayland) {
  KeyTranslationOptions options = kXkb;
  options.optionIsMeta = false;
  options.tellsModifiers = true;
  const auto event = translateKey(test::pressed({Qt::Key_X, kAlt, u"x", 53, 'x'}), options);
  ASSERT_TRUE(event);
  EXPECT_EQ(vt::keyBytes(*event, {.flags = vt::keyFlags::disambiguate}), "^[[120;3u");
  EXPECT_EQ(vt::keyBytes(*event, {.modifyOtherKeys = 2}), "^[[27;3;120~");
  options.system = KeyboardSystem::Mac;
  check({"Option still types", {Qt::Key_A, kAlt, u"å", 0, 0}, 'a', 'A', 'a', "å", {}, "å"}, options);
}

TEST(KeyCharacters, AndTextAndBytesAreThoseOfTheKeyOnX11AndWayland) {
  for (const Case& row : kXkbCases) {
    check(row, kXkb);
  }
}

TEST(KeyCharacters, AndTextAndBytesAreThoseOfTheKeyOnAMac) {
  for (const Case& row : kMacCases) {
    check(row, kMac);
  }
}

TEST(KeyCharacters, OptionIsAltIfWantedOnAMac) {
  KeyTranslationOptions options = kMac;
  options.optionIsMeta = true;
  for (const Case& row : kOptionIsMetaCases) {
    check(row, options);
  }
}

TEST(KeyCharacters, OptionIsAltWithKeysThatTypeNothing) {
  const auto event = translateKey(test::pressed({.key = Qt::Key_Left, .modifiers = kAlt | Qt::KeypadModifier}), kMac);
  ASSERT_TRUE(event);
  EXPECT_EQ(event->modifiers, Modifiers(Modifier::Alt));
  EXPECT_EQ(vt::keyBytes(*event), "^[[1;3D");
}

TEST(KeyCharacters, CommandIsAltIfWanted) {
  KeyTranslationOptions options = kXkb;
  options.commandIsMeta = true;
  check({"Super", {Qt::Key_X, kMeta, u"x", 53, 'x'}, 'x', 'X', 'x', "x", Modifier::Alt, "^[x"}, options);
  options = kMac;
  options.commandIsMeta = true;
  check({"Command", {Qt::Key_X, kControl, u"x", 0, 7}, 'x', 'X', 'x', "x", Modifier::Alt, "^[x"}, options);
  check({"Option still types", {Qt::Key_A, kAlt, u"å", 0, 0}, 'a', 'A', 'a', "å", {}, "å"}, options);
}

TEST(KeyCharacters, ThePcKeyboardHasEveryPrintableCharacterOnce) {
  std::string characters;
  for (const PcKey& key : pcKeys()) {
    characters += key.plain;
    if (key.shifted != key.plain) characters += key.shifted;
    const QtPress xkb{.key = key.plain, .scanCode = key.xkbCode};
    EXPECT_EQ(pcKeyOf(test::pressed(xkb), KeyboardSystem::Xkb), &key) << key.plain;
    const QtPress mac{.key = key.plain, .virtualKey = key.macCode};
    EXPECT_EQ(pcKeyOf(test::pressed(mac), KeyboardSystem::Mac), &key) << key.plain;
  }
  std::ranges::sort(characters);
  std::string expected;
  for (char c = ' '; c <= '~'; ++c) {
    expected += c;
  }
  EXPECT_EQ(characters, expected);
}

}  // namespace
}  // namespace zolt
