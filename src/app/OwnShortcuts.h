#pragma once

#include <QKeySequence>
#include <QList>
#include <optional>
#include <string>

#include "app/MenuItems.h"
#include "platform/UserDefaults.h"

namespace zolt {

/// The shortcuts of the menus' items in windows of the full emulation: the usual ones, unless the user has chosen
/// another for an item, or none. Stored under keys of their own. Main thread.
std::string shortcutKey(const MenuItem& item);
QList<QKeySequence> shortcutsOf(const MenuItem& item, const UserDefaults& defaults);
/// An empty sequence: none; nothing: the usual ones again.
void setShortcut(const MenuItem& item, const std::optional<QKeySequence>& shortcut, UserDefaults& defaults);

/// The other item that has a shortcut; null if there is none.
const MenuItem* otherItemWith(const QKeySequence& shortcut, const MenuItem& item, const UserDefaults& defaults);
/// Whether the keys can be a shortcut: those that type something cannot.
bool canBeShortcut(const QKeySequence& keys);

}  // namespace zolt
