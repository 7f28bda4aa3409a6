#pragma once

#include <cstdint>

#include "vt/Key.h"

namespace zolt::vt {

/// What a key is, as far as its bytes depend on it.
enum class KeyKind : std::uint8_t {
  Character,  ///< known by its character
  Control,    ///< Escape, Enter, Tab, Backspace: a C0 control, or DEL
  Cursor,     ///< a letter, after CSI or SS3 as DECCKM says
  Function,   ///< a letter after SS3
  Numbered,   ///< CSI number ~
  Keypad,     ///< a character, or in application mode a letter after SS3
  Extra,      ///< unknown to xterm
  Modifier,   ///< a modifier or a lock, which is told to those only who ask for every key
};

/// How a key is told.
struct KeyRow {
  Key key;
  KeyKind kind;
  /// In the progressive protocol: CSI number ; modifiers final. Number 1 goes with a letter of its own and is left out
  /// where it can be. 0 for Key::Character, whose number is its character.
  std::uint16_t number;
  char final;
  /// In xterm's encoding: the final, and for kind Numbered what stands before it.
  std::uint16_t legacyNumber;
  char legacyFinal;
  /// What a key of kind Keypad types where it is not in application mode.
  char character;
};

const KeyRow& keyRow(Key key);

}  // namespace zolt::vt
