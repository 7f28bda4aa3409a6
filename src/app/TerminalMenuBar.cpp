#include "app/TerminalMenuBar.h"

#include <QAction>
#include <QProxyStyle>

namespace zolt {

namespace {

// The desktop's style, but a tap of Alt does not give the bar the keyboard, and leaving a menu by Escape does not
// either.
class WithoutAltNavigation : public QProxyStyle {
  Q_OBJECT

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
#ifndef Q_OS_MACOS  // there the bar is the screen's, and has a key of its own
  auto* open = new QAction(this);
  open->setShortcut(Qt::Key_F10);
  connect(open, &QAction::triggered, this, &TerminalMenuBar::openFirstMenu);
  window->addAction(open);
#endif
}

void TerminalMenuBar::openFirstMenu() {
  QAction* first = actions().value(0);
  if (first == nullptr || first->menu() == nullptr) return;
  setActiveAction(first);
  first->menu()->setActiveAction(first->menu()->actions().value(0));
}

}  // namespace zolt

#include "TerminalMenuBar.moc"
