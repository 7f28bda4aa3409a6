#include "app/Menus.h"

#include <QAction>
#include <QActionGroup>
#include <array>

#include "controls/CommandKey.h"
#include "platform/NotificationCenter.h"
#include "view/Notifications.h"
#include "view/TerminalTabs.h"

namespace zolt {

namespace {

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

// Control alone belongs to the shell here too. With Shift some layouts make other characters of these keys; "=" is the
// key of "+" on many.
template <Qt::Key key, Qt::Key other>
QList<QKeySequence> zoomShortcuts() {
  return commandShortcuts(key) + commandShortcuts(other);
}

// What choosing an item does. A toggle is an action that is on or off.
enum class Does { SendAction, Toggle, PostNotification, Close, Minimize, ToggleFullScreen, Separate };

// In which windows an item is; those without terminals count as windows of the log display.
enum class Where { Everywhere, Log, FullEmulation };

struct Item {
  const char* menu;
  const char* title;
  Does does;
  const char* name;  // of the action or the notification
  Shortcuts shortcuts;
  QAction::MenuRole role = QAction::NoRole;
  Where where = Where::Everywhere;
};

constexpr Item separator(const char* menu, Where where = Where::Everywhere) {
  return {menu, "", Does::Separate, "", none, QAction::NoRole, where};
}

// An action of tabs and splits.
constexpr Item full(const char* menu, const char* title, const char* action, Shortcuts shortcuts,
                    Does does = Does::SendAction) {
  return {menu, title, does, action, shortcuts, QAction::NoRole, Where::FullEmulation};
}

// One that has a shortcut and no place in a menu.
constexpr const char* kNoMenu = "";

bool isInNoMenu(const Item& item) {
  return std::string_view(item.menu).empty();
}

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
    Item{"File", "&Close Window", Does::Close, "", command<Qt::Key_W>, QAction::NoRole, Where::Log},
    Item{"File", "&Close Window", Does::Close, "", closeWindowShortcuts, QAction::NoRole, Where::FullEmulation},
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
    full(kNoMenu, "", "moveDividerLeft", command<Qt::Key_Left, Qt::AltModifier>),
    full(kNoMenu, "", "moveDividerRight", command<Qt::Key_Right, Qt::AltModifier>),
    full(kNoMenu, "", "moveDividerUp", command<Qt::Key_Up, Qt::AltModifier>),
    full(kNoMenu, "", "moveDividerDown", command<Qt::Key_Down, Qt::AltModifier>),
    full(kNoMenu, "", "selectTab1", digitShortcuts<Qt::Key_1, Qt::Key_Exclam>),
    full(kNoMenu, "", "selectTab2", digitShortcuts<Qt::Key_2, Qt::Key_At>),
    full(kNoMenu, "", "selectTab3", digitShortcuts<Qt::Key_3, Qt::Key_NumberSign>),
    full(kNoMenu, "", "selectTab4", digitShortcuts<Qt::Key_4, Qt::Key_Dollar>),
    full(kNoMenu, "", "selectTab5", digitShortcuts<Qt::Key_5, Qt::Key_Percent>),
    full(kNoMenu, "", "selectTab6", digitShortcuts<Qt::Key_6, Qt::Key_AsciiCircum>),
    full(kNoMenu, "", "selectTab7", digitShortcuts<Qt::Key_7, Qt::Key_Ampersand>),
    full(kNoMenu, "", "selectTab8", digitShortcuts<Qt::Key_8, Qt::Key_Asterisk>),
    full(kNoMenu, "", "selectLastTab", digitShortcuts<Qt::Key_9, Qt::Key_ParenLeft>),
    Item{"Window", "&Minimize", Does::Minimize, "", command<Qt::Key_M>},
    Item{"Window", "&Full Screen", Does::ToggleFullScreen, "", fullScreenShortcuts},
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

void perform(const Item& item, QWidget& window, const MenuContext& context) {
  switch (item.does) {
    case Does::SendAction:
    case Does::Toggle:
      context.actions.sendAction(item.name);
      break;
    case Does::PostNotification:
      NotificationCenter::defaultCenter().post(item.name);
      break;
    case Does::Close:
      window.close();
      break;
    case Does::Minimize:
      window.showMinimized();
      break;
    case Does::ToggleFullScreen:
      window.setWindowState(window.windowState() ^ Qt::WindowFullScreen);
      break;
    case Does::Separate:
      break;
  }
}

QAction* makeAction(const Item& item, QWidget& window, const MenuContext& context, QObject* parent) {
  auto* action = new QAction(QMenu::tr(item.title), parent);
  action->setObjectName(QString::fromLatin1(item.name));
  action->setShortcuts(item.shortcuts());
  action->setMenuRole(item.role);
  action->setSeparator(item.does == Does::Separate);
  if (item.does == Does::Toggle) {
    action->setCheckable(true);
    action->setChecked(context.actions.isOn(item.name));
  }
  QObject::connect(action, &QAction::triggered, &window,
                   [&item, &window, &context] { perform(item, window, context); });
  return action;
}

bool isIn(const Item& item, Display display) {
  if (item.where == Where::Everywhere) return true;
  return (item.where == Where::FullEmulation) == (display == Display::FullEmulation);
}

bool isAction(const Item& item) {
  return item.does == Does::SendAction || item.does == Does::Toggle;
}

// Items are validated when their menu opens. While it is closed they stay enabled, because a disabled action would take
// its shortcut with it; the responder decides for itself then.
void validateItems(QMenu& menu, const MenuContext& context) {
  for (const Item& item : kItems) {
    if (!isAction(item)) continue;
    if (auto* action = menu.findChild<QAction*>(QString::fromLatin1(item.name), Qt::FindDirectChildrenOnly)) {
      action->setEnabled(context.actions.isEnabled(item.name));
      if (item.does == Does::Toggle) action->setChecked(context.actions.isOn(item.name));
    }
  }
}

// Tab and split actions are enabled only while they apply: otherwise the key is the program's.
void validateTabActions(const QWidget& window, const TerminalTabs& tabs) {
  if (tabs.count() == 0) return;
  for (const Item& item : kItems) {
    const bool isOfTabs = item.where == Where::FullEmulation && isAction(item) &&
                          tabs.metaObject()->indexOfMethod((QByteArray(item.name) + "()").constData()) >= 0;
    if (!isOfTabs) continue;
    for (QAction* action : window.findChildren<QAction*>(QString::fromLatin1(item.name))) {
      action->setEnabled(tabs.validate(item.name));
    }
  }
}

// Numbered entries for the open windows; this window's is checked.
void listWindows(QMenu& menu, const QWidget& self, const MenuContext& context) {
  const QString name = QStringLiteral("windowItem");
  qDeleteAll(menu.findChildren<QAction*>(name, Qt::FindDirectChildrenOnly));
  int number = 0;
  for (TerminalWindow* window : context.windows()) {
    ++number;
    const QString mnemonic = number < 10 ? QStringLiteral("&") : QString();
    QString names = window->windowTitle() + QStringLiteral(" – ") + window->subtitle();
    names.replace(QLatin1Char('&'), QStringLiteral("&&"));
    auto* action = new QAction(QStringLiteral("%1%2  %3").arg(mnemonic).arg(number).arg(names), &menu);
    action->setObjectName(name);
    action->setCheckable(true);
    action->setChecked(window == &self);
    QObject::connect(action, &QAction::triggered, window, &TerminalWindow::makeKeyAndOrderFront);
    menu.addAction(action);
  }
}

}  // namespace

QList<QMenu*> makeMenus(TerminalWindow& window, const MenuContext& context) {
  QList<QMenu*> menus;
  const Display display = window.kind().display;
  const auto* tabs = display == Display::FullEmulation
                         ? static_cast<TerminalTabs*>(&window.contentViewController().rootView().area())
                         : nullptr;
  for (const Item& item : kItems) {
    if (!isIn(item, display)) continue;
    if (isInNoMenu(item)) {
      window.addAction(makeAction(item, window, context, &window));
      continue;
    }
    const QString title = QMenu::tr(item.menu);
    if (menus.isEmpty() || menus.back()->title() != title) {
      auto* menu = new QMenu(title, &window);
      QObject::connect(menu, &QMenu::aboutToShow, &window, [menu, &context] { validateItems(*menu, context); });
      QObject::connect(menu, &QMenu::aboutToHide, &window, [menu, &window, tabs] {
        const QList<QAction*> actions = menu->actions();
        for (QAction* action : actions) {
          action->setEnabled(true);
        }
        if (tabs != nullptr) validateTabActions(window, *tabs);
      });
      menus.append(menu);
    }
    menus.back()->addAction(makeAction(item, window, context, menus.back()));
    if (item.does == Does::ToggleFullScreen) {
      QMenu* menu = menus.back();
      QObject::connect(menu, &QMenu::aboutToShow, &window,
                       [menu, &window, &context] { listWindows(*menu, window, context); });
    }
  }
  if (tabs != nullptr) {
    QObject::connect(tabs, &TerminalTabs::arrangementChanged, &window,
                     [&window, tabs] { validateTabActions(window, *tabs); });
    validateTabActions(window, *tabs);
  }
  return menus;
}

void addMenuShortcuts(QWidget& window, const MenuContext& context) {
  for (const Item& item : kItems) {
    if (!isIn(item, Display::Log)) continue;
    // The widgets of such a window handle copy and paste themselves, and are not zoomed.
    if (std::string_view(item.menu) == "Edit" && item.role == QAction::NoRole) continue;
    if (std::string_view(item.menu) == "View") continue;
    // Nor does such a window go full screen.
    if (item.does == Does::ToggleFullScreen) continue;
    if (!item.shortcuts().isEmpty()) window.addAction(makeAction(item, window, context, &window));
  }
}

}  // namespace zolt
