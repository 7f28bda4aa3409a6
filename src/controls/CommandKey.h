#pragma once

#include <QKeySequence>
#include <QList>

namespace zolt {

/// Shortcuts for a command, with `key` and perhaps `Qt::SHIFT`: Command+key on macOS; elsewhere Ctrl+Shift+key (Ctrl
/// alone belongs to the shell) and Super+key. The first is the one shown in menus.
QList<QKeySequence> commandShortcuts(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// Whether the key that makes a click a command is held: Command on macOS, Control elsewhere.
constexpr bool holdsCommandKey(Qt::KeyboardModifiers held) {
  return held.testFlag(Qt::ControlModifier);  // Qt calls the Command key Ctrl
}

}  // namespace zolt
