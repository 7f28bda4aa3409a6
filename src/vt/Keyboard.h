#pragma once

#include <cstdint>
#include <string>

#include "vt/Key.h"
#include "vt/Modifiers.h"

namespace zolt::vt {

/// The numbers are those of the progressive protocol.
enum class KeyAction : std::uint8_t { Press = 1, Repeat = 2, Release = 3 };

/// What the keyboard did.
struct KeyEvent {
  Key key = Key::Character;
  /// For Key::Character: what the key types without Shift in the current layout; 0 where only its text is known, as
  /// for what an input method composed.
  char32_t character = 0;
  char32_t shifted = 0;     ///< for Key::Character: what it types with Shift; 0 where that is not known
  char32_t baseLayout = 0;  ///< for Key::Character: what the same key types in the layout of a PC-101; 0: not known
  /// What this event types, in UTF-8; may be empty, as for a dead key. Control characters in it are passed over.
  std::string text{};
  /// What is held, and the locks that are on. Not what the system used up to choose another layer of the layout: AltGr,
  /// or Option on a Mac that makes "å" of Option-A.
  /// For a modifier's own key: with that modifier on a press, and without it on a release, unless its other key is
  /// held.
  Modifiers modifiers{};
  KeyAction action = KeyAction::Press;
};

/// The progressive enhancements, bits of KeyboardModes::flags.
namespace keyFlags {
inline constexpr std::uint8_t disambiguate = 1;
inline constexpr std::uint8_t reportEvents = 2;
inline constexpr std::uint8_t reportAlternates = 4;
inline constexpr std::uint8_t reportAllKeys = 8;
inline constexpr std::uint8_t reportText = 16;  ///< only together with reportAllKeys
inline constexpr std::uint8_t all = 31;
}  // namespace keyFlags

/// What the program has asked for.
struct KeyboardModes {
  bool applicationCursor = false;     ///< DECCKM
  bool applicationKeypad = false;     ///< DECNKM, DECKPAM
  bool numLockEndsKeypadMode = true;  ///< 1035: the keypad types digits while Num Lock is on, whatever its mode
  bool backarrowIsBackspace = false;  ///< DECBKM: Backspace sends BS, and DEL with Control; else the other way round
  bool newLine = false;               ///< LNM: Enter sends CR LF
  bool altSendsEscape = true;         ///< 1036, 1039: Alt and Meta put ESC before what a key types; else nothing
  /// XTMODKEYS 4. 1: combinations with Control that have no control character of their own; from 2 on: all.
  int modifyOtherKeys = 0;
  /// XTFMTKEYS 4. 0: CSI 27 ; modifiers ; character ~ else CSI character ; modifiers u
  int formatOtherKeys = 0;
  /// XTMODKEYS 1 and 2: how modifiers are told. Below 0: not at all; 0: alone (CSI 5 A), after SS3 where the key
  /// has that; 1: alone, after CSI; 2: second (CSI 1;5 A); from 3 on: as private (CSI > 1;5 A). Those of Insert, Delete
  /// and the Page keys go with the function keys.
  int modifyCursorKeys = 2;
  int modifyFunctionKeys = 2;
  std::uint8_t flags = 0;  ///< progressive enhancements
};

/// The bytes that tell the program of `event`; none where there is nothing to tell. A pure function, on any thread.
///
/// Without flags as xterm has it (XTerm Control Sequences, "Alt and Meta Keys", "PC-Style Function Keys"; the manual
/// page on modifyOtherKeys). Super and Hyper have no encoding there, and keys held with them send nothing, nor do those
/// that xterm does not know. With flags by the progressive protocol
/// (https://sw.kovidgoyal.net/kitty/keyboard-protocol/), in which case modifyOtherKeys counts for nothing where the
/// flags disambiguate.
///
/// A control character is sent only where it is the key's own.
std::string encodeKey(const KeyEvent& event, const KeyboardModes& modes);

}  // namespace zolt::vt
