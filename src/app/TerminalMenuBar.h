#pragma once

#include <QMenuBar>

namespace zolt {

/// The menu bar of a terminal's window. F10, Command-F10 and the mouse open its menus, and F10 closes them; Alt does
/// nothing, because it belongs to the program in the terminal.
class TerminalMenuBar : public QMenuBar {
  Q_OBJECT

 public:
  /// Adds the shortcut to `window`.
  explicit TerminalMenuBar(QWidget* window);

 protected:
  void actionEvent(QActionEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void openFirstMenu();
};

}  // namespace zolt
