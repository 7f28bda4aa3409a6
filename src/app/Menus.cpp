#include "app/Menus.h"

#include <QAction>
#include <QActionGroup>

#include "app/OwnShortcuts.h"
#include "platform/NotificationCenter.h"
#include "view/TerminalTabs.h"

namespace zolt {

namespace {

QAction* makeAction(const MenuItem& item, QWidget& window, const MenuContext& context, QObject* parent,
                    const QList<QKeySequence>& shortcuts) {
  auto* action = new QAction(QMenu::tr(item.title), parent);
  action->setObjectName(QString::fromLatin1(item.name));
  action->setShortcuts(shortcuts);
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
  for (const MenuItem& item : menuItems()) {
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
  for (const MenuItem& item : menuItems()) {
    const bool isOfTabs = item.where == Where::FullEmulation && isAction(item) &&
                          tabs.metaObject()->indexOfMethod((QByteArray(item.name) + "()").constData()) >= 0;
    if (!isOfTabs) continue;
    for (QAction* action : window.findChildren<QAction*>(QString::fromLatin1(item.name))) {
      action->setEnabled(tabs.validate(item.name));
    }
  }
}

void updateShortcut(const std::string& key, const QWidget& window, const MenuContext& context) {
  for (const MenuItem& item : menuItems()) {
    if (!isIn(item, Display::FullEmulation) || shortcutKey(item) != key) continue;
    for (QAction* action : window.findChildren<QAction*>(QString::fromLatin1(item.name))) {
      action->setShortcuts(shortcutsOf(item, context.defaults));
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

void perform(const MenuItem& item, QWidget& window, const MenuContext& context) {
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

QList<QMenu*> makeMenus(TerminalWindow& window, const MenuContext& context) {
  QList<QMenu*> menus;
  const Display display = window.kind().display;
  const auto* tabs = display == Display::FullEmulation
                         ? static_cast<TerminalTabs*>(&window.contentViewController().rootView().area())
                         : nullptr;
  // What is laid down for the log's windows, the user cannot change.
  const auto shortcuts = [tabs, &context](const MenuItem& item) {
    return tabs == nullptr ? item.shortcuts() : shortcutsOf(item, context.defaults);
  };
  for (const MenuItem& item : menuItems()) {
    if (!isIn(item, display)) continue;
    if (isInNoMenu(item)) {
      window.addAction(makeAction(item, window, context, &window, shortcuts(item)));
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
    menus.back()->addAction(makeAction(item, window, context, menus.back(), shortcuts(item)));
    if (item.does == Does::ToggleFullScreen) {
      QMenu* menu = menus.back();
      QObject::connect(menu, &QMenu::aboutToShow, &window,
                       [menu, &window, &context] { listWindows(*menu, window, context); });
    }
  }
  if (tabs != nullptr) {
    QObject::connect(&context.defaults, &UserDefaults::changed, &window,
                     [&window, &context](const std::string& key) { updateShortcut(key, window, context); });
    QObject::connect(tabs, &TerminalTabs::arrangementChanged, &window,
                     [&window, tabs] { validateTabActions(window, *tabs); });
    validateTabActions(window, *tabs);
  }
  return menus;
}

void addMenuShortcuts(QWidget& window, const MenuContext& context) {
  for (const MenuItem& item : menuItems()) {
    if (!isIn(item, Display::Log)) continue;
    // The widgets of such a window handle copy and paste themselves, and are not zoomed.
    if (std::string_view(item.menu) == "Edit" && item.role == QAction::NoRole) continue;
    if (std::string_view(item.menu) == "View") continue;
    // Nor does such a window go full screen.
    if (item.does == Does::ToggleFullScreen) continue;
    if (!item.shortcuts().isEmpty()) window.addAction(makeAction(item, window, context, &window, item.shortcuts()));
  }
}

}  // namespace zolt
