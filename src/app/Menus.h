#pragma once

#include <QList>
#include <QMenu>
#include <QWidget>
#include <functional>
#include <vector>

#include "app/ActionChain.h"
#include "app/MenuItems.h"
#include "app/TerminalWindow.h"
#include "platform/UserDefaults.h"

namespace zolt {

/// What the menus of all windows share. Main thread.
struct MenuContext {
  const ActionChain& actions;
  /// The terminal windows on screen, in the order in which they were opened.
  std::function<std::vector<TerminalWindow*>()> windows;
  /// The user's own shortcuts.
  UserDefaults& defaults;
};

/// Creates one window's menus as its children: File, Edit, View, Terminal, Window, Help; and Split in the full
/// emulation. `context` must outlive them. On macOS the system moves the application menu's items to that menu.
QList<QMenu*> makeMenus(TerminalWindow& window, const MenuContext& context);

/// Does what choosing the item in the window's menus does.
void perform(const MenuItem& item, QWidget& window, const MenuContext& context);

/// Adds the menus' shortcuts to a window without a menu bar.
void addMenuShortcuts(QWidget& window, const MenuContext& context);

}  // namespace zolt
