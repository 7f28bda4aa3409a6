#pragma once

#include <QAction>
#include <QKeySequence>
#include <QList>
#include <span>

#include "app/Display.h"

namespace zolt {

/// What choosing a menu item does. A toggle is an action that is on or off.
enum class Does { SendAction, Toggle, PostNotification, Close, Minimize, ToggleFullScreen, Separate };

/// In which windows an item is; those without terminals count as windows of the log display.
enum class Where { Everywhere, Log, FullEmulation };

/// A command of the menus.
struct MenuItem {
  const char* menu;   ///< its title; empty: it has a shortcut and no place in a menu
  const char* title;  ///< with the mnemonic
  Does does;
  const char*
      name;  ///< of the action or the notification, and of the item where its shortcut is stored; empty for a separator
  QList<QKeySequence> (*shortcuts)();  ///< the usual ones
  QAction::MenuRole role = QAction::NoRole;
  Where where = Where::Everywhere;
};

/// All items, in the order of the menus.
std::span<const MenuItem> menuItems();

/// Whether windows of this display have the item.
bool isIn(const MenuItem& item, Display display);
bool isInNoMenu(const MenuItem& item);
/// Whether it is an action that responders perform.
bool isAction(const MenuItem& item);

}  // namespace zolt
