#pragma once

#include <QMainWindow>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "app/Display.h"
#include "app/OutputSaving.h"
#include "app/TerminalWindowController.h"

namespace zolt {

/// The size that the terminal in a new window on the primary screen will have, computed from the sizes of its parts, so
/// that its shell can be started before the window is built. If the size turns out different, the shell is told as for
/// any resize.
///
/// `footer` is what will stand below the terminal, or null; `window` is the window's size in logical pixels if it is
/// not that of every new one.
TerminalSize terminalSizeOfNewWindow(const CanvasFont& font = {}, const QWidget* footer = nullptr,
                                     std::optional<QSize> window = std::nullopt);

/// One line that says what that size depends on, as far as can be told without loading fonts.
std::string whatTerminalSizeDependsOn(const CanvasFont& font, const QWidget* footer, std::optional<QSize> window);

/// What a window shows.
struct TerminalWindowKind {
  Display display = Display::Log;
  bool isForProgram = false;  ///< a program that was given on the command line, instead of a shell
};

/// A terminal's window: 900 by 600, in the middle of the screen, or in the screen's top left corner if it does not fit.
///
/// Closing only hides it: its terminal keeps running until the window is destroyed, but a save in progress is
/// cancelled. What owns it may ask before, and end more. Performs the action "saveOutputAs". Main thread.
class TerminalWindow : public QMainWindow {
  Q_OBJECT

 public:
  TerminalWindow(const QString& title, const QString& subtitle, std::unique_ptr<TerminalWindowController> controller,
                 const TerminalWindowKind& kind = {});
  ~TerminalWindow() override;

  const TerminalWindowKind& kind() const { return m_kind; }

  TerminalWindowController& contentViewController() { return *m_controller; }
  /// Shown at the end of the menu bar, if the window has one. Set once.
  const QString& subtitle() const { return m_subtitle; }

  /// Moves the window to the middle of its screen.
  void center();
  /// Shows the window, raises it and gives it the focus.
  void makeKeyAndOrderFront();

  /// Called whenever the window is about to close: it stays open if `mayClose` returns false. An empty function lets it
  /// close.
  void setCloseCheck(std::function<bool()> mayClose) { m_mayClose = std::move(mayClose); }
  /// Closes the window whatever the check would say.
  void closeNow();

  Q_INVOKABLE void saveOutputAs();
  OutputSaving& outputSaving() { return *m_saving; }

 Q_SIGNALS:
  /// The window is closing, and will not be kept from it any more.
  void closed();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QString m_subtitle;
  TerminalWindowKind m_kind;
  std::function<bool()> m_mayClose;
  bool m_isAgreed = false;  // to close
  std::unique_ptr<TerminalWindowController> m_controller;
  std::unique_ptr<OutputSaving> m_saving;
};

}  // namespace zolt
