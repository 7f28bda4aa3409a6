#pragma once

#include <QKeyEvent>
#include <QString>
#include <optional>

namespace zolt {

/// Hardware key codes of the keys that send their own sequences, in one numbering for all platforms.
enum class KeyCode : int {
  Return = 36,
  Tab = 48,
  Delete = 51,  ///< the backspace key
  Escape = 53,
  Home = 115,
  PageUp = 116,
  ForwardDelete = 117,
  End = 119,
  PageDown = 121,
  LeftArrow = 123,
  RightArrow = 124,
  DownArrow = 125,
  UpArrow = 126,
};

/// The key code of a key press; nothing for keys not listed above, which include the keypad and the function keys.
std::optional<KeyCode> keyCodeOf(const QKeyEvent& event);

/// Whether the Control key is held; on macOS that is not the Command key.
bool hasControl(const QKeyEvent& event);

/// The characters that the key produces without modifiers other than Shift; empty if it produces none.
QString charactersIgnoringModifiers(const QKeyEvent& event);

}  // namespace zolt
