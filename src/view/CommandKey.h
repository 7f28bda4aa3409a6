#pragma once

#include <QKeySequence>
#include <QList>

namespace zolt {

/// Shortcuts for the command key with `key` and perhaps `Qt::SHIFT`: Command on macOS; elsewhere Ctrl+Shift, for
/// Control alone belongs to the shell, and the Super key. The first is the one to show.
QList<QKeySequence> commandShortcuts(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

}  // namespace zolt
