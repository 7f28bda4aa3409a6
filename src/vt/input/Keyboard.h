#pragma once

#include <cstdint>
#include <string>

#include "vt/input/Key.h"
#include "vt/input/Modifiers.h"

namespace zolt::vt {

/// Numbered as in the kitty keyboard protocol.
enum class KeyAction : std::uint8_t { Press = 1, Repeat = 2, Release = 3 };

/// A keyboard event.
struct KeyEvent {
  Key key = Key::Character;
  // The next three are for Key::Character, and 0 if unknown.
  char32_t character = 0;   ///< typed without Shift in the current layout; unknown for text from an input method
  char32_t shifted = 0;     ///< typed with Shift
  char32_t baseLayout = 0;  ///< typed by this key in the layout of a PC-101
  /// What this event types, in UTF-8. May be empty, as for a dead key. Control characters are ignored.
  std::string text{};
  /// Modifiers that are held and locks that are on, except those that the system used to select another layer of the
  /// layout: AltGr, or Option on a Mac where Option-A types "å".
  /// For a modifier key itself: including that modifier on press, and without it on release unless its counterpart is
  /// still held.
  Modifiers modifiers{};
  KeyAction action = KeyAction::Press;
};

/// The kitty keyboard protocol's progressive enhancements: bits of KeyboardModes::flags.
namespace keyFlags {
inline constexpr std::uint8_t disambiguate = 1;
inline constexpr std::uint8_t reportEvents = 2;
inline constexpr std::uint8_t reportAlternates = 4;
inline constexpr std::uint8_t reportAllKeys = 8;
inline constexpr std::uint8_t reportText = 16;  ///< only takes effect with reportAllKeys
inline constexpr std::uint8_t all = 31;
}  // namespace keyFlags

/// The settings of the program that keys depend on.
struct KeyboardModes {
  bool applicationCursor = false;     ///< DECCKM
  bool applicationKeypad = false;     ///< DECNKM, DECKPAM
  bool numLockEndsKeypadMode = true;  ///< 1035: while Num Lock is on, the keypad types digits in any mode
  bool backarrowIsBackspace = false;  ///< DECBKM: Backspace sends BS, and DEL with Control; otherwise vice versa
  bool newLine = false;               ///< LNM: Enter sends CR LF
  bool altSendsEscape = true;         ///< 1036, 1039: Alt and Meta prefix text with ESC; otherwise they are ignored
  /// XTMODKEYS 4. 1: encodes Control combinations that have no control character; 2 and up: encodes all.
  int modifyOtherKeys = 0;
  /// XTFMTKEYS 4. 0: CSI 27 ; modifiers ; character ~, otherwise CSI character ; modifiers u
  int formatOtherKeys = 0;
  /// XTMODKEYS 1 and 2: how modifiers are encoded. Below 0: not at all; 0: as the only parameter (CSI 5 A), after SS3
  /// for keys that have it; 1: the same, always after CSI; 2: as the second parameter (CSI 1;5 A); 3 and up: with a
  /// private prefix (CSI > 1;5 A). Insert, Delete and the Page keys count as function keys.
  int modifyCursorKeys = 2;
  int modifyFunctionKeys = 2;
  std::uint8_t flags = 0;  ///< keyFlags

  friend bool operator==(const KeyboardModes&, const KeyboardModes&) = default;
};

/// Whether the program is told the modifiers of a key that types a character, and not only what it types.
bool tellsModifiers(const KeyboardModes& modes);

/// Encodes `event` for the program; empty if nothing is sent. A pure function, for any thread.
///
/// Without flags, the encoding is xterm's (XTerm Control Sequences, "Alt and Meta Keys", "PC-Style Function Keys"; its
/// manual page on modifyOtherKeys), in which keys that xterm does not know, and keys with Super or Hyper, send nothing.
/// With flags, it is the kitty keyboard protocol's (https://sw.kovidgoyal.net/kitty/keyboard-protocol/), which
/// overrides modifyOtherKeys if `keyFlags::disambiguate` is set.
///
/// Control characters are sent only for keys that stand for them, never because they are in `event.text`.
std::string encodeKey(const KeyEvent& event, const KeyboardModes& modes);

}  // namespace zolt::vt
