#pragma once

#include <QMainWindow>
#include <QString>
#include <memory>

#include "app/OutputSaving.h"
#include "app/TerminalWindowController.h"

namespace zolt {

/// The size that the terminal in a new window on the primary screen will have, computed from the sizes of its parts, so
/// that its shell can be started before the window is built. If the size turns out different, the shell is told as for
/// any resize.
TerminalSize terminalSizeOfNewWindow(const CanvasFont& font = {});

/// A terminal's window: 900 by 600, in the middle of the screen, or in the screen's top left corner if it does not fit.
///
/// Closing only hides it: its terminal keeps running until the window is destroyed, but a save in progress is
/// cancelled. Performs the action "saveOutputAs". Main thread.
class TerminalWindow : public QMainWindow {
  Q_OBJECT

 public:
  TerminalWindow(const QString& title, const QString& subtitle, std::unique_ptr<TerminalWindowController> controller);
  ~TerminalWindow() override;

  TerminalWindowController& contentViewController() { return *m_controller; }
  /// Shown at the end of the menu bar, if the window has one. Set once.
  const QString& subtitle() const { return m_subtitle; }

  /// Moves the window to the middle of its screen.
  void center();
  /// Shows the window, raises it and gives it the focus.
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
