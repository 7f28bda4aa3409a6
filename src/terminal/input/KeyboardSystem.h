#pragma once

#include <QtGlobal>

namespace zolt {

/// Where Qt's key events come from, which decides what their native codes and some modifiers mean.
enum class KeyboardSystem {
  /// X11 and Wayland: nativeVirtualKey() is a keysym, nativeScanCode() an XKB keycode, nativeModifiers() the state.
  Xkb,
  /// Cocoa: nativeVirtualKey() is a virtual key code, which tells the key's place in any layout; nativeScanCode() is
  /// not used, and nativeModifiers() are NSEventModifierFlags.
  Mac,
};

#ifdef Q_OS_MACOS
inline constexpr KeyboardSystem kKeyboardSystem = KeyboardSystem::Mac;
#else
inline constexpr KeyboardSystem kKeyboardSystem = KeyboardSystem::Xkb;
#endif

}  // namespace zolt
