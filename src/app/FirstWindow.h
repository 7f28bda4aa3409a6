#pragma once

#include <QObject>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "view/ContentView.h"

namespace zolt {

/// The shell record that runs `program` with its arguments: found through PATH as a shell finds it.
Shell shellForProgram(const std::vector<std::string>& program);

/// The size of the terminal in a window that `makeTerminalWindow` makes, so that the shell knows it from its start.
WindowSize terminalSizeOfNewWindow();

/// Makes a terminal's window: 900 by 600, titled "Zolt", in the middle of the screen, or at its corner where it is too
/// large for it. Not shown yet.
std::unique_ptr<ContentView> makeTerminalWindow(std::unique_ptr<TerminalController> terminal);

/// Waits for the program of a window to end and for all its output to be shown; then saves a picture if one is wanted,
/// and ends the application with the program's status, 128 + n for one killed by signal n.
class ProgramRun : public QObject {
  Q_OBJECT

 public:
  ProgramRun(ContentView& window, std::optional<std::string> screenshotFile);

  /// What the application is to end with now. When the window is closed before the program has ended: that of a program
  /// that was hung up.
  int exitStatus() const { return m_exitStatus; }

 private:
  void programEnded(int status);
  void finishWhenDrained();
  void finish();

  ContentView& m_window;
  std::optional<std::string> m_screenshotFile;
  int m_exitStatus;
  std::chrono::steady_clock::time_point m_drainDeadline;
};

}  // namespace zolt
