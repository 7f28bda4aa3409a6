#pragma once

#include <QMainWindow>
#include <QString>
#include <memory>

#include "app/OutputSaving.h"
#include "app/TerminalWindowController.h"

namespace zolt {

/// The size of the terminal in a new window on the primary screen, from its parts' measures: so that its shell can be
/// started before the window is built. What differs in the end is told to the shell as any other change is.
TerminalSize terminalSizeOfNewWindow();

/// A terminal's window: 900 by 600, in the middle of the screen, or at its corner where it is too large for it.
///
/// Closing hides it; its terminal goes on until the window is released, while saving its output is cancelled. Performs
/// the action "saveOutputAs". Main thread.
class TerminalWindow : public QMainWindow {
  Q_OBJECT

 public:
  TerminalWindow(const QString& title, const QString& subtitle, std::unique_ptr<TerminalWindowController> controller);
  ~TerminalWindow() override;

  TerminalWindowController& contentViewController() { return *m_controller; }
  /// Stands at the end of the menu bar, where the window has one. Set once.
  const QString& subtitle() const { return m_subtitle; }

  /// Moves the window to the middle of its screen.
  void center();
  /// Shows the window before all others and gives it the keyboard.
  void makeKeyAndOrderFront();

  Q_INVOKABLE void saveOutputAs();
  OutputSaving& outputSaving() { return *m_saving; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QString m_subtitle;
  std::unique_ptr<TerminalWindowController> m_controller;
  std::unique_ptr<OutputSaving> m_saving;
};

}  // namespace zolt
