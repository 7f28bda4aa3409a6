#include "app/TerminalMenuBar.h"

#include <QAction>
#include <QActionEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QProxyStyle>

#include "controls/CommandKey.h"

namespace zolt {

namespace {

// The desktop's style, except that neither a tap of Alt nor leaving a menu with Escape gives the bar the focus.
class WithoutAltNavigation : public QProxyStyle {
 public:
  explicit WithoutAltNavigation(QObject* parent) { setParent(parent); }

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override {
    if (hint == SH_MenuBar_AltKeyNavigation) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
  }
};

}  // namespace

TerminalMenuBar::TerminalMenuBar(QWidget* window) : QMenuBar(window) {
  setStyle(new WithoutAltNavigation(this));
#ifndef Q_OS_MACOS  // there the bar is at the top of the screen and has a key of its own
  auto* open = new QAction(this);
  // In the full emulation F10 alone is the program's.
  open->setShortcuts(QList{QKeySequence(Qt::Key_F10)} + commandShortcuts(Qt::Key_F10));
  connect(open, &QAction::triggered, this, &TerminalMenuBar::openFirstMenu);
  window->addAction(open);
#endif
}

void TerminalMenuBar::actionEvent(QActionEvent* event) {
  QMenuBar::actionEvent(event);
  QMenu* menu = event->action()->menu();
  if (event->type() == QEvent::ActionAdded && menu != nullptr) menu->installEventFilter(this);
}

// An open menu receives all keys, shortcuts included.
bool TerminalMenuBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F10) {
    static_cast<QMenu*>(watched)->close();
    return true;
  }
  return QMenuBar::eventFilter(watched, event);
}

void TerminalMenuBar::openFirstMenu() {
  QAction* first = actions().value(0);
  if (first == nullptr || first->menu() == nullptr) return;
  setActiveAction(first);
  first->menu()->setActiveAction(first->menu()->actions().value(0));
}

}  // namespace zolt
