#pragma once

#include <QKeyEvent>
#include <QString>
#include <optional>

namespace zolt {

/// Hardware key codes of the keys that send sequences of their own, as one numbering for every platform.
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

/// The key code of a key press; nothing for every other key, the keypad's and the function keys included.
std::optional<KeyCode> keyCodeOf(const QKeyEvent& event);

/// Whether the Control key is held: not the Command key of macOS.
bool hasControl(const QKeyEvent& event);

/// The characters that the key gives without its modifiers, Shift excepted; empty for a key that gives none.
QString charactersIgnoringModifiers(const QKeyEvent& event);

}  // namespace zolt
