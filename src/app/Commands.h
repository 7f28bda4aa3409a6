#pragma once

#include "app/Menus.h"
#include "app/TerminalWindow.h"

namespace zolt {

/// Lists all commands of the menus over a window of the full emulation, to choose one by its name, or to give it
/// another shortcut. Main thread.
void showCommands(TerminalWindow& window, const MenuContext& context);

}  // namespace zolt
