#pragma once

#include <QKeyEvent>
#include <cstdint>
#include <optional>
#include <span>

#include "terminal/input/KeyboardSystem.h"
#include "vt/input/Key.h"
#include "vt/input/Modifiers.h"

namespace zolt {

/// `count` keys with consecutive numbers in both Qt and the engine.
struct QtKeyRow {
  int qtKey;
  vt::Key key;
  int count = 1;
};

/// A key that is told by a native virtual key: a keysym, or a virtual key code of a Mac.
struct NativeKeyRow {
  std::uint32_t virtualKey;
  vt::Key key;
};

/// A modifier key, and what it stands for while it is held.
struct ModifierKeyRow {
  vt::Key key;
  vt::Modifier modifier;
};

std::span<const QtKeyRow> mainKeys();
std::span<const QtKeyRow> keypadKeys();
/// Keys that are others on a Mac than where a PC has them. They come before `mainKeys` and `keypadKeys` there.
std::span<const QtKeyRow> macKeys();
/// What only the native virtual key tells, such as left from right.
std::span<const NativeKeyRow> nativeKeys(KeyboardSystem system);
std::span<const ModifierKeyRow> modifierKeys();

/// The key of a functional key event; nothing for a key that stands for a character, and for keys not known here. A
/// modifier key is the left one if the event does not tell.
std::optional<vt::Key> functionalKeyOf(const QKeyEvent& event, KeyboardSystem system);

/// The modifier that a modifier key stands for; empty for all other keys, and for locks.
vt::Modifiers modifierOf(vt::Key key);

}  // namespace zolt
