#pragma once

#include <QList>
#include <QMenu>
#include <QWidget>
#include <functional>
#include <vector>

#include "app/ActionChain.h"
#include "app/TerminalWindow.h"

namespace zolt {

/// What the menus of every window have in common. Main thread.
struct MenuContext {
  const ActionChain& actions;
  /// The terminal windows on screen, in the order in which they were opened.
  std::function<std::vector<TerminalWindow*>()> windows;
};

/// Makes the application's menus for one window, as its children: File, Edit, Terminal, Window, Help. `context` must
/// outlive them. On macOS the system moves the items of the application menu there.
QList<QMenu*> makeMenus(QWidget& window, const MenuContext& context);

/// Gives a window without a menu bar the shortcuts of the menus.
void addMenuShortcuts(QWidget& window, const MenuContext& context);

}  // namespace zolt
