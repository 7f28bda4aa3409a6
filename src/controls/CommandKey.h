#pragma once

#include <QKeySequence>
#include <QList>

namespace zolt {

/// Shortcuts for a command, with `key` and perhaps `Qt::SHIFT`: Command+key on macOS; elsewhere Ctrl+Shift+key (Ctrl
/// alone belongs to the shell) and Super+key. The first is the one shown in menus.
QList<QKeySequence> commandShortcuts(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

}  // namespace zolt
