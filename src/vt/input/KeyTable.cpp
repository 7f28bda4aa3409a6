#include "vt/input/KeyTable.h"

#include <array>
#include <cstddef>

namespace zolt::vt {

namespace {

constexpr std::size_t kKeys = static_cast<std::size_t>(kLastKey) + 1;

// clang-format off
constexpr KeyRow control(Key key, std::uint16_t number)                                     { return {key, KeyKind::Control,  number, 'u',   0,            0,      0}; }
constexpr KeyRow cursor(Key key, char letter, std::uint16_t number, char final)             { return {key, KeyKind::Cursor,   number, final, 0,            letter, 0}; }
constexpr KeyRow function(Key key, char letter, std::uint16_t number, char final)           { return {key, KeyKind::Function, number, final, 0,            letter, 0}; }
constexpr KeyRow numbered(Key key, std::uint16_t legacyNumber, std::uint16_t number, char final) { return {key, KeyKind::Numbered, number, final, legacyNumber, '~', 0}; }
constexpr KeyRow keypad(Key key, char character, std::uint16_t number, char letter)         { return {key, KeyKind::Keypad,   number, 'u',   0,            letter, character}; }
constexpr KeyRow extra(Key key, std::uint16_t number)                                       { return {key, KeyKind::Extra,    number, 'u',   0,            0,      0}; }
constexpr KeyRow modifier(Key key, std::uint16_t number)                                    { return {key, KeyKind::Modifier, number, 'u',   0,            0,      0}; }
// clang-format on

// Letters and small numbers come from XTerm Control Sequences, "PC-Style Function Keys"; those of F13 to F20 and of the
// application keypad from its "VT220-Style Function Keys", where Menu (Do) has the number of F16.
// clang-format off
constexpr KeyRow kRows[] = {
    {Key::Character, KeyKind::Character, 0, 'u', 0, 0, 0},
    control( Key::Escape,                      27),
    control( Key::Enter,                       13),
    control( Key::Tab,                          9),
    control( Key::Backspace,                  127),
    numbered(Key::Insert,             2,        2, '~'),
    numbered(Key::Delete,             3,        3, '~'),
    cursor(  Key::Left,               'D',      1, 'D'),
    cursor(  Key::Right,              'C',      1, 'C'),
    cursor(  Key::Up,                 'A',      1, 'A'),
    cursor(  Key::Down,               'B',      1, 'B'),
    numbered(Key::PageUp,             5,        5, '~'),
    numbered(Key::PageDown,           6,        6, '~'),
    cursor(  Key::Home,               'H',      1, 'H'),
    cursor(  Key::End,                'F',      1, 'F'),
    modifier(Key::CapsLock,                 57358),
    modifier(Key::ScrollLock,               57359),
    modifier(Key::NumLock,                  57360),
    extra(   Key::PrintScreen,              57361),
    extra(   Key::Pause,                    57362),
    numbered(Key::Menu,               29,   57363, 'u'),
    function(Key::F1,                 'P',      1, 'P'),
    function(Key::F2,                 'Q',      1, 'Q'),
    // Not CSI R, which is the cursor position report.
    function(Key::F3,                 'R',     13, '~'),
    function(Key::F4,                 'S',      1, 'S'),
    numbered(Key::F5,                 15,      15, '~'),
    numbered(Key::F6,                 17,      17, '~'),
    numbered(Key::F7,                 18,      18, '~'),
    numbered(Key::F8,                 19,      19, '~'),
    numbered(Key::F9,                 20,      20, '~'),
    numbered(Key::F10,                21,      21, '~'),
    numbered(Key::F11,                23,      23, '~'),
    numbered(Key::F12,                24,      24, '~'),
    numbered(Key::F13,                25,   57376, 'u'),
    numbered(Key::F14,                26,   57377, 'u'),
    numbered(Key::F15,                28,   57378, 'u'),
    numbered(Key::F16,                29,   57379, 'u'),
    numbered(Key::F17,                31,   57380, 'u'),
    numbered(Key::F18,                32,   57381, 'u'),
    numbered(Key::F19,                33,   57382, 'u'),
    numbered(Key::F20,                34,   57383, 'u'),
    extra(   Key::F21,                      57384),
    extra(   Key::F22,                      57385),
    extra(   Key::F23,                      57386),
    extra(   Key::F24,                      57387),
    extra(   Key::F25,                      57388),
    extra(   Key::F26,                      57389),
    extra(   Key::F27,                      57390),
    extra(   Key::F28,                      57391),
    extra(   Key::F29,                      57392),
    extra(   Key::F30,                      57393),
    extra(   Key::F31,                      57394),
    extra(   Key::F32,                      57395),
    extra(   Key::F33,                      57396),
    extra(   Key::F34,                      57397),
    extra(   Key::F35,                      57398),
    keypad(  Key::Keypad0,            '0',  57399, 'p'),
    keypad(  Key::Keypad1,            '1',  57400, 'q'),
    keypad(  Key::Keypad2,            '2',  57401, 'r'),
    keypad(  Key::Keypad3,            '3',  57402, 's'),
    keypad(  Key::Keypad4,            '4',  57403, 't'),
    keypad(  Key::Keypad5,            '5',  57404, 'u'),
    keypad(  Key::Keypad6,            '6',  57405, 'v'),
    keypad(  Key::Keypad7,            '7',  57406, 'w'),
    keypad(  Key::Keypad8,            '8',  57407, 'x'),
    keypad(  Key::Keypad9,            '9',  57408, 'y'),
    keypad(  Key::KeypadDecimal,      '.',  57409, 'n'),
    keypad(  Key::KeypadDivide,       '/',  57410, 'o'),
    keypad(  Key::KeypadMultiply,     '*',  57411, 'j'),
    keypad(  Key::KeypadSubtract,     '-',  57412, 'm'),
    keypad(  Key::KeypadAdd,          '+',  57413, 'k'),
    keypad(  Key::KeypadEnter,        '\r', 57414, 'M'),
    keypad(  Key::KeypadEqual,        '=',  57415, 'X'),
    keypad(  Key::KeypadSeparator,    ',',  57416, 'l'),
    cursor(  Key::KeypadLeft,         'D',  57417, 'u'),
    cursor(  Key::KeypadRight,        'C',  57418, 'u'),
    cursor(  Key::KeypadUp,           'A',  57419, 'u'),
    cursor(  Key::KeypadDown,         'B',  57420, 'u'),
    numbered(Key::KeypadPageUp,       5,    57421, 'u'),
    numbered(Key::KeypadPageDown,     6,    57422, 'u'),
    cursor(  Key::KeypadHome,         'H',  57423, 'u'),
    cursor(  Key::KeypadEnd,          'F',  57424, 'u'),
    numbered(Key::KeypadInsert,       2,    57425, 'u'),
    numbered(Key::KeypadDelete,       3,    57426, 'u'),
    cursor(  Key::KeypadBegin,        'E',      1, 'E'),
    extra(   Key::MediaPlay,                57428),
    extra(   Key::MediaPause,               57429),
    extra(   Key::MediaPlayPause,           57430),
    extra(   Key::MediaReverse,             57431),
    extra(   Key::MediaStop,                57432),
    extra(   Key::MediaFastForward,         57433),
    extra(   Key::MediaRewind,              57434),
    extra(   Key::MediaTrackNext,           57435),
    extra(   Key::MediaTrackPrevious,       57436),
    extra(   Key::MediaRecord,              57437),
    extra(   Key::LowerVolume,              57438),
    extra(   Key::RaiseVolume,              57439),
    extra(   Key::MuteVolume,               57440),
    modifier(Key::LeftShift,                57441),
    modifier(Key::LeftControl,              57442),
    modifier(Key::LeftAlt,                  57443),
    modifier(Key::LeftSuper,                57444),
    modifier(Key::LeftHyper,                57445),
    modifier(Key::LeftMeta,                 57446),
    modifier(Key::RightShift,               57447),
    modifier(Key::RightControl,             57448),
    modifier(Key::RightAlt,                 57449),
    modifier(Key::RightSuper,               57450),
    modifier(Key::RightHyper,               57451),
    modifier(Key::RightMeta,                57452),
    modifier(Key::IsoLevel3Shift,           57453),
    modifier(Key::IsoLevel5Shift,           57454),
};
// clang-format on

// Evaluated at compile time, where a throw is an error that shows the text.
consteval std::array<KeyRow, kKeys> makeTable() {
  if (std::size(kRows) != kKeys) throw "every key needs a row";
  std::array<KeyRow, kKeys> table{};
  for (std::size_t i = 0; i < kKeys; ++i) {
    if (kRows[i].key != static_cast<Key>(i)) throw "the rows must be in the order of Key";
    table[i] = kRows[i];
  }
  return table;
}

constexpr std::array<KeyRow, kKeys> kTable = makeTable();

}  // namespace

const KeyRow& keyRow(Key key) {
  return kTable[static_cast<std::size_t>(key)];
}

}  // namespace zolt::vt
