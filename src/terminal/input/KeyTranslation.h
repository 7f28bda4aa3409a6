#pragma once

#include <QKeyEvent>
#include <optional>

#include "terminal/input/KeyboardSystem.h"
#include "vt/input/Keyboard.h"

namespace zolt {

struct KeyTranslationOptions {
  /// Alt, a Mac's Option, is Alt with every key. Otherwise it is so with keys that type nothing, and where Control or
  /// Command (Super) is held; with others it only types: on a Mac the layout's other characters.
  bool optionIsMeta = false;
  /// The program is told modifiers (vt::tellsModifiers): Alt with a key that types the same without it stays Alt.
  bool tellsModifiers = false;
  /// Command (Super where there is none) acts as Alt.
  bool commandIsMeta = false;
  /// The key was held already: the platform may not say so.
  bool repeats = false;
  /// Whether the locks are on, which Qt does not report; see `nativeLocks`.
  bool capsLock = false;
  bool numLock = false;
  KeyboardSystem system = kKeyboardSystem;
};

/// The key event for the engine; nothing for a key that it does not know and that types nothing, and for the releases
/// that Qt makes up between the repeats of a key. `event` is a KeyPress or a KeyRelease. Pure, any thread.
///
/// - Control characters are left out of the text: a key with Control has its character, but no text.
/// - Without Shift, a symbol's `shifted` is known only if it is that of a PC-101. With Shift, so is `character`, except
///   for the digits below the symbols of other layouts; if it is not known, it equals `shifted`.
/// - A dead key is a Key::Character without a character and without text.
/// - AltGr is not among the modifiers; Alt and Control that are held with it are.
/// - The release of a modifier key never includes that modifier: Qt does not tell whether its counterpart is held.
std::optional<vt::KeyEvent> translateKey(const QKeyEvent& event, const KeyTranslationOptions& options);

/// The modifiers that Qt reports, without locks. On a Mac Qt calls Command Control, and Control Meta.
vt::Modifiers translateModifiers(Qt::KeyboardModifiers held, KeyboardSystem system);

/// The locks that are on at the event, from its native modifiers: of Xkb the first eight, among which Mod2 is Num Lock
/// in all usual keymaps; a Mac has Caps Lock only. Empty for events that do not come from a keyboard.
vt::Modifiers nativeLocks(const QKeyEvent& event, KeyboardSystem system = kKeyboardSystem);

}  // namespace zolt
