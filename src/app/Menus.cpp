#include "app/Menus.h"

#include <QAction>
#include <QActionGroup>
#include <array>

#include "controls/CommandKey.h"
#include "platform/NotificationCenter.h"
#include "view/Notifications.h"

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

// Control alone belongs to the shell here too. With Shift some layouts make other characters of these keys; "=" is the
// key of "+" on many.
template <Qt::Key key, Qt::Key other>
QList<QKeySequence> zoomShortcuts() {
  return commandShortcuts(key) + commandShortcuts(other);
}

// What choosing an item does. A toggle is an action that is on or off.
enum class Does { SendAction, Toggle, PostNotification, Close, Minimize, ToggleFullScreen, Separate };

struct Item {
  const char* menu;
  const char* title;
  Does does;
  const char* name;  // of the action or the notification
  Shortcuts shortcuts;
  QAction::MenuRole role = QAction::NoRole;
};

constexpr Item separator(const char* menu) {
  return {menu, "", Does::Separate, "", none};
}

// Items with a role go to the application menu on macOS; elsewhere they stay in place. Items have mnemonics, because an
// open menu has the keyboard; titles have none, because Alt belongs to the program in the terminal.
constexpr std::array kItems{
    Item{"File", "&New Window", Does::SendAction, "newWindow", command<Qt::Key_N>},
    Item{"File", "New &Tab", Does::SendAction, "newTab", command<Qt::Key_T>},
    separator("File"),
    Item{"File", "Save &Output As...", Does::SendAction, "saveOutputAs", command<Qt::Key_S>},
    separator("File"),
    Item{"File", "&Close Window", Does::Close, "", command<Qt::Key_W>},
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
    separator("Terminal"),
    Item{"Terminal", "Full &Emulation", Does::Toggle, "toggleFullEmulation", command<Qt::Key_E, Qt::ShiftModifier>},
    Item{"Window", "&Minimize", Does::Minimize, "", command<Qt::Key_M>},
    Item{"Window", "&Full Screen", Does::ToggleFullScreen, "", fullScreenShortcuts},
    separator("Window"),
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

// Items are validated when their menu opens. While it is closed they stay enabled, because a disabled action would take
// its shortcut with it; the responder decides for itself then.
void validateItems(QMenu& menu, const MenuContext& context) {
  for (const Item& item : kItems) {
    if (item.does != Does::SendAction && item.does != Does::Toggle) continue;
    if (auto* action = menu.findChild<QAction*>(QString::fromLatin1(item.name), Qt::FindDirectChildrenOnly)) {
      action->setEnabled(context.actions.isEnabled(item.name));
      if (item.does == Does::Toggle) action->setChecked(context.actions.isOn(item.name));
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

QList<QMenu*> makeMenus(QWidget& window, const MenuContext& context) {
  QList<QMenu*> menus;
  for (const Item& item : kItems) {
    const QString title = QMenu::tr(item.menu);
    if (menus.isEmpty() || menus.back()->title() != title) {
      auto* menu = new QMenu(title, &window);
      QObject::connect(menu, &QMenu::aboutToShow, &window, [menu, &context] { validateItems(*menu, context); });
      QObject::connect(menu, &QMenu::aboutToHide, &window, [menu] {
        const QList<QAction*> actions = menu->actions();
        for (QAction* action : actions) {
          action->setEnabled(true);
        }
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
  return menus;
}

void addMenuShortcuts(QWidget& window, const MenuContext& context) {
  for (const Item& item : kItems) {
    // The widgets of such a window handle copy and paste themselves, and are not zoomed.
    if (std::string_view(item.menu) == "Edit" && item.role == QAction::NoRole) continue;
    if (std::string_view(item.menu) == "View") continue;
    // Nor does such a window go full screen.
    if (item.does == Does::ToggleFullScreen) continue;
    if (!item.shortcuts().isEmpty()) window.addAction(makeAction(item, window, context, &window));
  }
}

}  // namespace zolt
