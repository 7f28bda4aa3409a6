#pragma once

#include <QObject>
#include <optional>
#include <string>
#include <vector>

#include "app/TerminalWindow.h"

namespace zolt {

/// The shell record that runs `program` with its arguments; looked up in PATH as a shell would.
Shell shellForProgram(const std::vector<std::string>& program);

/// Waits for the program of a window to end and for all its output to be shown; then saves a picture if one is wanted,
/// and ends the application with the program's status, 128 + n for one killed by signal n.
class ProgramRun : public QObject {
  Q_OBJECT

 public:
  ProgramRun(TerminalWindow& window, std::optional<std::string> screenshotFile);

  /// The status to exit with now. Until the program has ended it is that of a program killed by SIGHUP, in case the
  /// window is closed first.
  int exitStatus() const { return m_exitStatus; }

 private:
  TerminalController& terminal();
  TerminalSurface& surface();
  void programEnded(int status);
  void finish();

  TerminalWindow& m_window;
  std::optional<std::string> m_screenshotFile;
  int m_exitStatus;
};

}  // namespace zolt
