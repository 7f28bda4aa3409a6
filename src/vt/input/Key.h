#pragma once

#include <cstdint>

namespace zolt::vt {

/// The functional keys of the kitty keyboard protocol, in its order
/// (https://sw.kovidgoyal.net/kitty/keyboard-protocol/#functional-key-definitions), and `Character` for every key that
/// is identified by a character, including the space bar.
///
/// A key on the keypad is reported as one of two, depending on Num Lock and Shift: Keypad7 or KeypadHome.
enum class Key : std::uint8_t {
  Character,
  // clang-format off
  Escape, Enter, Tab, Backspace, Insert, Delete, Left, Right, Up, Down, PageUp, PageDown, Home, End,
  CapsLock, ScrollLock, NumLock, PrintScreen, Pause, Menu,
  F1, F2, F3, F4, F5, F6, F7, F8, F9, F10, F11, F12, F13, F14, F15, F16, F17, F18, F19, F20, F21, F22, F23, F24, F25,
  F26, F27, F28, F29, F30, F31, F32, F33, F34, F35,
  Keypad0, Keypad1, Keypad2, Keypad3, Keypad4, Keypad5, Keypad6, Keypad7, Keypad8, Keypad9,
  KeypadDecimal, KeypadDivide, KeypadMultiply, KeypadSubtract, KeypadAdd, KeypadEnter, KeypadEqual, KeypadSeparator,
  KeypadLeft, KeypadRight, KeypadUp, KeypadDown, KeypadPageUp, KeypadPageDown, KeypadHome, KeypadEnd,
  KeypadInsert, KeypadDelete, KeypadBegin,
  MediaPlay, MediaPause, MediaPlayPause, MediaReverse, MediaStop, MediaFastForward, MediaRewind,
  MediaTrackNext, MediaTrackPrevious, MediaRecord, LowerVolume, RaiseVolume, MuteVolume,
  LeftShift, LeftControl, LeftAlt, LeftSuper, LeftHyper, LeftMeta,
  RightShift, RightControl, RightAlt, RightSuper, RightHyper, RightMeta,
  IsoLevel3Shift, IsoLevel5Shift,
  // clang-format on
};

inline constexpr Key kLastKey = Key::IsoLevel5Shift;

}  // namespace zolt::vt
