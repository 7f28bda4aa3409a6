#pragma once

#include <cstdint>

#include "vt/input/Key.h"

namespace zolt::vt {

/// Keys by how they are encoded.
enum class KeyKind : std::uint8_t {
  Character,  ///< identified by a character
  Control,    ///< Escape, Enter, Tab, Backspace: a C0 control, or DEL
  Cursor,     ///< a letter after CSI or SS3, depending on DECCKM
  Function,   ///< a letter after SS3
  Numbered,   ///< CSI number ~
  Keypad,     ///< a character; in application mode a letter after SS3
  Extra,      ///< unknown to xterm
  Modifier,   ///< a modifier or a lock; reported only with reportAllKeys
};

/// How a key is encoded.
struct KeyRow {
  Key key;
  KeyKind kind;
  /// For the kitty protocol: CSI number ; modifiers final. Number 1 is omitted where possible, the letter being unique.
  /// 0 for Key::Character, whose number is its character.
  std::uint16_t number;
  char final;
  /// For xterm's encoding: the final, and the number before it for kind Numbered.
  std::uint16_t legacyNumber;
  char legacyFinal;
  /// What a key of kind Keypad types outside application mode.
  char character;
};

const KeyRow& keyRow(Key key);

}  // namespace zolt::vt
