#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "vt/input/InputText.h"
#include "vt/input/Keyboard.h"

namespace zolt::vt {

/// Bytes in caret notation: ^[ for ESC, ^? for DEL, and so on.
inline std::string shown(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    if (value < 0x20 || value == 0x7F) {
      text += '^';
      text += static_cast<char>(value ^ 0x40);
    } else {
      text += byte;
    }
  }
  return text;
}

inline KeyEvent pressed(Key key, Modifiers held = {}) {
  KeyEvent event;
  event.key = key;
  event.modifiers = held;
  return event;
}

/// A key of a US keyboard, by the character it types without Shift. It types nothing while a command modifier is held.
inline KeyEvent typed(char32_t character, Modifiers held = {}) {
  constexpr std::u32string_view plain = U"`1234567890-=[]\\;',./ ";
  constexpr std::u32string_view withShift = U"~!@#$%^&*()_+{}|:\"<>? ";
  KeyEvent event = pressed(Key::Character, held);
  event.character = character;
  const std::size_t place = plain.find(character);
  event.shifted = place == plain.npos ? character - U'a' + U'A' : withShift[place];
  const bool shift = held.hasAny(Modifier::Shift);
  if (!held.hasAny(kCommandModifiers)) appendUtf8(event.text, shift ? event.shifted : character);
  return event;
}

inline KeyEvent with(KeyAction action, KeyEvent event) {
  event.action = action;
  return event;
}

inline std::string keyBytes(const KeyEvent& event, const KeyboardModes& modes = {}) {
  return shown(encodeKey(event, modes));
}

}  // namespace zolt::vt
