#include "terminal/input/QtKeys.h"

#include <algorithm>

namespace zolt {

namespace {

using vt::Key;
using vt::Modifier;

// clang-format off
constexpr QtKeyRow kMainKeys[] = {
    {Qt::Key_Escape,      Key::Escape},
    {Qt::Key_Return,      Key::Enter},
    {Qt::Key_Enter,       Key::KeypadEnter},
    {Qt::Key_Tab,         Key::Tab},
    {Qt::Key_Backtab,     Key::Tab},
    {Qt::Key_Backspace,   Key::Backspace},
    {Qt::Key_Insert,      Key::Insert},
    {Qt::Key_Delete,      Key::Delete},
    {Qt::Key_Left,        Key::Left},
    {Qt::Key_Right,       Key::Right},
    {Qt::Key_Up,          Key::Up},
    {Qt::Key_Down,        Key::Down},
    {Qt::Key_PageUp,      Key::PageUp},
    {Qt::Key_PageDown,    Key::PageDown},
    {Qt::Key_Home,        Key::Home},
    {Qt::Key_End,         Key::End},
    {Qt::Key_CapsLock,    Key::CapsLock},
    {Qt::Key_ScrollLock,  Key::ScrollLock},
    {Qt::Key_NumLock,     Key::NumLock},
    {Qt::Key_Print,       Key::PrintScreen},
    {Qt::Key_SysReq,      Key::PrintScreen},  // the same key with Alt
    {Qt::Key_Pause,       Key::Pause},
    {Qt::Key_Menu,        Key::Menu},
    {Qt::Key_F1,          Key::F1, 35},
    {Qt::Key_MediaPlay,            Key::MediaPlay},
    {Qt::Key_MediaPause,           Key::MediaPause},
    {Qt::Key_MediaTogglePlayPause, Key::MediaPlayPause},
    {Qt::Key_MediaStop,            Key::MediaStop},
    {Qt::Key_AudioForward,         Key::MediaFastForward},
    {Qt::Key_AudioRewind,          Key::MediaRewind},
    {Qt::Key_MediaNext,            Key::MediaTrackNext},
    {Qt::Key_MediaPrevious,        Key::MediaTrackPrevious},
    {Qt::Key_MediaRecord,          Key::MediaRecord},
    {Qt::Key_VolumeDown,           Key::LowerVolume},
    {Qt::Key_VolumeUp,             Key::RaiseVolume},
    {Qt::Key_VolumeMute,           Key::MuteVolume},
    {Qt::Key_Shift,       Key::LeftShift},
    {Qt::Key_Control,     Key::LeftControl},
    {Qt::Key_Alt,         Key::LeftAlt},
    {Qt::Key_Meta,        Key::LeftSuper},
    {Qt::Key_Super_L,     Key::LeftSuper},
    {Qt::Key_Super_R,     Key::RightSuper},
    {Qt::Key_Hyper_L,     Key::LeftHyper},
    {Qt::Key_Hyper_R,     Key::RightHyper},
    {Qt::Key_AltGr,       Key::IsoLevel3Shift},
};

constexpr QtKeyRow kKeypadKeys[] = {
    {Qt::Key_0,        Key::Keypad0, 10},
    {Qt::Key_Period,   Key::KeypadDecimal},
    {Qt::Key_Slash,    Key::KeypadDivide},
    {Qt::Key_Asterisk, Key::KeypadMultiply},
    {Qt::Key_Minus,    Key::KeypadSubtract},
    {Qt::Key_Plus,     Key::KeypadAdd},
    {Qt::Key_Equal,    Key::KeypadEqual},
    {Qt::Key_Comma,    Key::KeypadSeparator},
    {Qt::Key_Left,     Key::KeypadLeft},
    {Qt::Key_Right,    Key::KeypadRight},
    {Qt::Key_Up,       Key::KeypadUp},
    {Qt::Key_Down,     Key::KeypadDown},
    {Qt::Key_PageUp,   Key::KeypadPageUp},
    {Qt::Key_PageDown, Key::KeypadPageDown},
    {Qt::Key_Home,     Key::KeypadHome},
    {Qt::Key_End,      Key::KeypadEnd},
    {Qt::Key_Insert,   Key::KeypadInsert},
    {Qt::Key_Delete,   Key::KeypadDelete},
    {Qt::Key_Clear,    Key::KeypadBegin},
};

constexpr QtKeyRow kMacKeys[] = {
    {Qt::Key_Clear,   Key::NumLock},    // where a PC has Num Lock
    {Qt::Key_Help,    Key::Insert},     // where a PC has Insert
    {Qt::Key_Control, Key::LeftSuper},  // Qt's name for Command
    {Qt::Key_Meta,    Key::LeftControl},
    {Qt::Key_Left,    Key::Left},       // Qt puts the arrow keys on the keypad
    {Qt::Key_Right,   Key::Right},
    {Qt::Key_Up,      Key::Up},
    {Qt::Key_Down,    Key::Down},
};

// X11/keysymdef.h
constexpr NativeKeyRow kKeysyms[] = {
    {0xFFBD, Key::KeypadEqual},  // Qt does not put it on the keypad
    {0xFFE1, Key::LeftShift},    {0xFFE2, Key::RightShift},
    {0xFFE3, Key::LeftControl},  {0xFFE4, Key::RightControl},
    {0xFFE7, Key::LeftMeta},     {0xFFE8, Key::RightMeta},
    {0xFFE9, Key::LeftAlt},      {0xFFEA, Key::RightAlt},
    {0xFFEB, Key::LeftSuper},    {0xFFEC, Key::RightSuper},
    {0xFFED, Key::LeftHyper},    {0xFFEE, Key::RightHyper},
    {0xFE03, Key::IsoLevel3Shift},
    {0xFE11, Key::IsoLevel5Shift},
};

// HIToolbox/Events.h
constexpr NativeKeyRow kVirtualKeys[] = {
    {0x38, Key::LeftShift},   {0x3C, Key::RightShift},
    {0x3B, Key::LeftControl}, {0x3E, Key::RightControl},
    {0x3A, Key::LeftAlt},     {0x3D, Key::RightAlt},
    {0x37, Key::LeftSuper},   {0x36, Key::RightSuper},
};

constexpr ModifierKeyRow kModifierKeys[] = {
    {Key::LeftShift,   Modifier::Shift},   {Key::RightShift,   Modifier::Shift},
    {Key::LeftControl, Modifier::Control}, {Key::RightControl, Modifier::Control},
    {Key::LeftAlt,     Modifier::Alt},     {Key::RightAlt,     Modifier::Alt},
    {Key::LeftSuper,   Modifier::Super},   {Key::RightSuper,   Modifier::Super},
    {Key::LeftHyper,   Modifier::Hyper},   {Key::RightHyper,   Modifier::Hyper},
    {Key::LeftMeta,    Modifier::Meta},    {Key::RightMeta,    Modifier::Meta},
};
// clang-format on

std::optional<Key> find(std::span<const QtKeyRow> rows, int qtKey) {
  for (const QtKeyRow& row : rows) {
    if (qtKey < row.qtKey || qtKey >= row.qtKey + row.count) continue;
    return static_cast<Key>(static_cast<int>(row.key) + qtKey - row.qtKey);
  }
  return std::nullopt;
}

// The usual layouts of XKB have Meta on the Alt keys with Shift. Its modifier is Alt, and the key is released as Alt if
// Shift goes first.
Key withoutShiftedMeta(Key key, const QKeyEvent& event) {
  if (!event.modifiers().testFlag(Qt::ShiftModifier)) return key;
  return key == Key::LeftMeta ? Key::LeftAlt : key == Key::RightMeta ? Key::RightAlt : key;
}

}  // namespace

std::span<const QtKeyRow> mainKeys() {
  return kMainKeys;
}

std::span<const QtKeyRow> keypadKeys() {
  return kKeypadKeys;
}

std::span<const QtKeyRow> macKeys() {
  return kMacKeys;
}

std::span<const NativeKeyRow> nativeKeys(KeyboardSystem system) {
  if (system == KeyboardSystem::Mac) return kVirtualKeys;
  return kKeysyms;
}

std::span<const ModifierKeyRow> modifierKeys() {
  return kModifierKeys;
}

std::optional<vt::Key> functionalKeyOf(const QKeyEvent& event, KeyboardSystem system) {
  const std::span<const NativeKeyRow> native = nativeKeys(system);
  const auto row = std::ranges::find(native, event.nativeVirtualKey(), &NativeKeyRow::virtualKey);
  if (row != native.end()) return withoutShiftedMeta(row->key, event);

  std::optional<Key> key;
  if (system == KeyboardSystem::Mac) key = find(kMacKeys, event.key());
  if (!key && event.modifiers().testFlag(Qt::KeypadModifier)) key = find(kKeypadKeys, event.key());
  return key ? key : find(kMainKeys, event.key());
}

vt::Modifiers modifierOf(vt::Key key) {
  const auto* row = std::ranges::find(kModifierKeys, key, &ModifierKeyRow::key);
  return row == std::end(kModifierKeys) ? vt::Modifiers() : vt::Modifiers(row->modifier);
}

}  // namespace zolt
