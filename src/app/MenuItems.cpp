#include "app/MenuItems.h"

#include <array>
#include <string_view>

#include "controls/CommandKey.h"
#include "view/Notifications.h"

namespace zolt {

namespace {

using Item = MenuItem;
using Shortcuts = QList<QKeySequence> (*)();

template <Qt::Key key, Qt::KeyboardModifier modifier = Qt::NoModifier>
QList<QKeySequence> command() {
  return commandShortcuts(key, modifier);
}

QList<QKeySequence> none() {
  return {};
}

// No shell uses Control+comma, and people know it from other applications.
QList<QKeySequence> preferencesShortcuts() {
#ifdef Q_OS_MACOS
  return commandShortcuts(Qt::Key_Comma);
#else
  return QList<QKeySequence>{QKeySequence(Qt::CTRL | Qt::Key_Comma)} + commandShortcuts(Qt::Key_Comma);
#endif
}

// If the command key is Ctrl+Shift, Shift cannot be added to it: the neighbouring letter is used instead.
QList<QKeySequence> findPreviousShortcuts() {
#ifdef Q_OS_MACOS
  return commandShortcuts(Qt::Key_G, Qt::ShiftModifier);
#else
  return commandShortcuts(Qt::Key_H);
#endif
}

QList<QKeySequence> findSelectionShortcuts() {
#ifdef Q_OS_MACOS
  return commandShortcuts(Qt::Key_E);
#else
  return {};
#endif
}

QList<QKeySequence> fullScreenShortcuts() {
#ifdef Q_OS_MACOS
  return {QKeySequence(QKeySequence::FullScreen)};
#else
  // Qt defines none on desktops that it does not know. F11 alone is the program's in the full emulation.
  return QList{QKeySequence(Qt::Key_F11)} + commandShortcuts(Qt::Key_F11);
#endif
}

// Where Command-W closes a split or a tab, the window needs another key.
QList<QKeySequence> closeWindowShortcuts() {
#ifdef Q_OS_MACOS
  return commandShortcuts(Qt::Key_W, Qt::ShiftModifier);
#else
  return {QKeySequence(Qt::META | Qt::SHIFT | Qt::Key_W)};
#endif
}

// On a Mac the key that browsers have for it. Elsewhere Shift is part of the command key, so that is New Tab.
QList<QKeySequence> reopenShortcuts() {
#ifdef Q_OS_MACOS
  return commandShortcuts(Qt::Key_T, Qt::ShiftModifier);
#else
  return commandShortcuts(Qt::Key_R);
#endif
}

QList<QKeySequence> splitDownShortcuts() {
#ifdef Q_OS_MACOS
  return commandShortcuts(Qt::Key_D, Qt::ShiftModifier);
#else
  return commandShortcuts(Qt::Key_J);
#endif
}

// With Shift the digit keys give other characters; these are those of the US layout.
template <Qt::Key key, Qt::Key other>
QList<QKeySequence> digitShortcuts() {
  return commandShortcuts(key) + commandShortcuts(other).mid(0, 1);
}

// On a Mac Command-P prints.
QList<QKeySequence> commandsShortcuts() {
#ifdef Q_OS_MACOS
  return commandShortcuts(Qt::Key_P, Qt::ShiftModifier);
#else
  return commandShortcuts(Qt::Key_P);
#endif
}

// Control alone belongs to the shell here too. With Shift some layouts make other characters of these keys; "=" is the
// key of "+" on many.
template <Qt::Key key, Qt::Key other>
QList<QKeySequence> zoomShortcuts() {
  return commandShortcuts(key) + commandShortcuts(other);
}

constexpr Item separator(const char* menu, Where where = Where::Everywhere) {
  return {menu, "", Does::Separate, "", none, QAction::NoRole, where};
}

// An action of tabs and splits.
constexpr Item full(const char* menu, const char* title, const char* action, Shortcuts shortcuts,
                    Does does = Does::SendAction) {
  return {menu, title, does, action, shortcuts, QAction::NoRole, Where::FullEmulation};
}

constexpr const char* kNoMenu = "";

// Items with a role go to the application menu on macOS; elsewhere they stay in place. Items have mnemonics, because an
// open menu has the keyboard; titles have none, because Alt belongs to the program in the terminal.
constexpr std::array kItems{
    Item{"File", "&New Window", Does::SendAction, "newWindow", command<Qt::Key_N>},
    Item{"File", "New &Tab", Does::SendAction, "newTab", command<Qt::Key_T>},
    separator("File"),
    Item{"File", "Save &Output As...", Does::SendAction, "saveOutputAs", command<Qt::Key_S>},
    separator("File"),
    full("File", "C&lose", "closePane", command<Qt::Key_W>),
    full("File", "Close Ta&b", "closeTab", none),
    Item{"File", "&Close Window", Does::Close, "closeWindow", command<Qt::Key_W>, QAction::NoRole, Where::Log},
    Item{"File", "&Close Window", Does::Close, "closeWindow", closeWindowShortcuts, QAction::NoRole,
         Where::FullEmulation},
    full("File", "R&eopen Closed", "reopenClosed", reopenShortcuts),
    separator("File"),
    Item{"File", "&Quit", Does::SendAction, "quit", command<Qt::Key_Q>, QAction::QuitRole},
    Item{"Edit", "&Copy", Does::SendAction, "copy", command<Qt::Key_C>},
    Item{"Edit", "&Paste", Does::SendAction, "paste", command<Qt::Key_V>},
    Item{"Edit", "Select &All", Does::SendAction, "selectAll", command<Qt::Key_A>},
    separator("Edit"),
    Item{"Edit", "&Find...", Does::SendAction, "find", command<Qt::Key_F>},
    Item{"Edit", "Find Ne&xt", Does::SendAction, "findNext", command<Qt::Key_G>},
    Item{"Edit", "Find Pre&vious", Does::SendAction, "findPrevious", findPreviousShortcuts},
    Item{"Edit", "Use Se&lection for Find", Does::SendAction, "findSelection", findSelectionShortcuts},
    separator("Edit"),
    Item{"Edit", "Pr&eferences...", Does::SendAction, "showPreferences", preferencesShortcuts,
         QAction::PreferencesRole},
    Item{"View", "Zoom &In", Does::SendAction, "zoomIn", zoomShortcuts<Qt::Key_Plus, Qt::Key_Equal>},
    Item{"View", "Zoom &Out", Does::SendAction, "zoomOut", zoomShortcuts<Qt::Key_Minus, Qt::Key_Underscore>},
    Item{"View", "Actual &Size", Does::SendAction, "resetZoom", zoomShortcuts<Qt::Key_0, Qt::Key_ParenRight>},
    separator("View", Where::FullEmulation),
    full("View", "&Commands...", "showCommands", commandsShortcuts),
    Item{"Terminal", "&Clear Screen", Does::PostNotification, clearTerminal, command<Qt::Key_K>},
    Item{"Terminal", "Toggle Homebrew &Sidebar", Does::PostNotification, toggleBrewSidebar,
         command<Qt::Key_B, Qt::ShiftModifier>},
    separator("Terminal", Where::FullEmulation),
    full("Terminal", "&Previous Prompt", "previousPrompt", command<Qt::Key_Z>),
    full("Terminal", "&Next Prompt", "nextPrompt", command<Qt::Key_X>),
    full("Terminal", "Select Command &Output", "selectCommandOutput", command<Qt::Key_O>),
    full("Terminal", "Cop&y Command Output", "copyCommandOutput", none),
    separator("Terminal", Where::FullEmulation),
    full("Terminal", "Show &Hints", "showHints", command<Qt::Key_L>),
    full("Terminal", "Copy &Mode", "toggleCopyMode", command<Qt::Key_Y>, Does::Toggle),
    separator("Terminal"),
    Item{"Terminal", "Full &Emulation", Does::Toggle, "toggleFullEmulation", command<Qt::Key_E, Qt::ShiftModifier>},
    full("Split", "Split &Right", "splitRight", command<Qt::Key_D>),
    full("Split", "Split &Down", "splitDown", splitDownShortcuts),
    separator("Split", Where::FullEmulation),
    full("Split", "Go &Left", "goLeft", command<Qt::Key_Left>),
    full("Split", "Go R&ight", "goRight", command<Qt::Key_Right>),
    full("Split", "Go &Up", "goUp", command<Qt::Key_Up>),
    full("Split", "Go Do&wn", "goDown", command<Qt::Key_Down>),
    separator("Split", Where::FullEmulation),
    full("Split", "&Zoom Split", "zoomPane", command<Qt::Key_Return>, Does::Toggle),
    full("Split", "&Equalize Sizes", "equalisePanes", none),
    full("Split", "&Swap with Next", "swapPanes", none),
    full("Split", "Move to &New Tab", "movePaneToNewTab", none),
    separator("Split", Where::FullEmulation),
    full("Split", "&Type into All Splits", "typeIntoAll", command<Qt::Key_I>, Does::Toggle),
    full(kNoMenu, "Move Divider Left", "moveDividerLeft", command<Qt::Key_Left, Qt::AltModifier>),
    full(kNoMenu, "Move Divider Right", "moveDividerRight", command<Qt::Key_Right, Qt::AltModifier>),
    full(kNoMenu, "Move Divider Up", "moveDividerUp", command<Qt::Key_Up, Qt::AltModifier>),
    full(kNoMenu, "Move Divider Down", "moveDividerDown", command<Qt::Key_Down, Qt::AltModifier>),
    full(kNoMenu, "Go to Tab 1", "selectTab1", digitShortcuts<Qt::Key_1, Qt::Key_Exclam>),
    full(kNoMenu, "Go to Tab 2", "selectTab2", digitShortcuts<Qt::Key_2, Qt::Key_At>),
    full(kNoMenu, "Go to Tab 3", "selectTab3", digitShortcuts<Qt::Key_3, Qt::Key_NumberSign>),
    full(kNoMenu, "Go to Tab 4", "selectTab4", digitShortcuts<Qt::Key_4, Qt::Key_Dollar>),
    full(kNoMenu, "Go to Tab 5", "selectTab5", digitShortcuts<Qt::Key_5, Qt::Key_Percent>),
    full(kNoMenu, "Go to Tab 6", "selectTab6", digitShortcuts<Qt::Key_6, Qt::Key_AsciiCircum>),
    full(kNoMenu, "Go to Tab 7", "selectTab7", digitShortcuts<Qt::Key_7, Qt::Key_Ampersand>),
    full(kNoMenu, "Go to Tab 8", "selectTab8", digitShortcuts<Qt::Key_8, Qt::Key_Asterisk>),
    full(kNoMenu, "Go to Last Tab", "selectLastTab", digitShortcuts<Qt::Key_9, Qt::Key_ParenLeft>),
    Item{"Window", "&Minimize", Does::Minimize, "minimize", command<Qt::Key_M>},
    Item{"Window", "&Full Screen", Does::ToggleFullScreen, "toggleFullScreen", fullScreenShortcuts},
    separator("Window"),
    full("Window", "&Next Tab", "nextTab", command<Qt::Key_PageDown>),
    full("Window", "&Previous Tab", "previousTab", command<Qt::Key_PageUp>),
    full("Window", "Move Tab &Right", "moveTabForward", command<Qt::Key_PageDown, Qt::AltModifier>),
    full("Window", "Move Tab &Left", "moveTabBackward", command<Qt::Key_PageUp, Qt::AltModifier>),
    full("Window", "R&ename Tab...", "renameTab", none),
    full("Window", "Move Tab to New &Window", "moveTabToNewWindow", none),
    full("Window", "Mer&ge All Windows", "mergeAllWindows", none),
    separator("Window", Where::FullEmulation),
    Item{"Help", "&About Zolt", Does::SendAction, "showAbout", none, QAction::AboutRole},
    Item{"Help", "Check for &Updates...", Does::SendAction, "checkForUpdates", none, QAction::ApplicationSpecificRole},
};

}  // namespace

std::span<const MenuItem> menuItems() {
  return kItems;
}

bool isIn(const MenuItem& item, Display display) {
  if (item.where == Where::Everywhere) return true;
  return (item.where == Where::FullEmulation) == (display == Display::FullEmulation);
}

bool isInNoMenu(const MenuItem& item) {
  return std::string_view(item.menu).empty();
}

bool isAction(const MenuItem& item) {
  return item.does == Does::SendAction || item.does == Does::Toggle;
}

}  // namespace zolt
