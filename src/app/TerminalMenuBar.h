#pragma once

#include <QMenuBar>

namespace zolt {

/// The menu bar of a terminal's window. F10 and the mouse open its menus; Alt does nothing to it, because Alt belongs
/// to the program in the terminal.
class TerminalMenuBar : public QMenuBar {
  Q_OBJECT

 public:
  /// Gives `window` the shortcut.
  explicit TerminalMenuBar(QWidget* window);

 private:
  void openFirstMenu();
};

}  // namespace zolt
