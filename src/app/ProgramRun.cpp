#include "app/ProgramRun.h"

#include <QApplication>
#include <csignal>
#include <filesystem>

#include "app/WhenDrained.h"
#include "base/Diagnostics.h"
#include "platform/MainQueue.h"

namespace zolt {

namespace {

constexpr int kSignalStatusBase = 128;
constexpr int kLaunchFailedStatus = 127;

// The program's display name: the last component of its path.
std::string nameOf(const std::string& program) {
  const std::string name = std::filesystem::path(program).filename().string();
  return name.empty() ? program : name;
}

}  // namespace

Shell shellForProgram(const std::vector<std::string>& program) {
  // sh looks the program up and execs it, so that status, signals and error messages are the familiar ones.
  std::vector<std::string> args{"-c", "exec \"$0\" \"$@\""};
  args.insert(args.end(), program.begin(), program.end());
  return Shell{.name = nameOf(program.front()), .executable = "/bin/sh", .args = std::move(args), .icon = "terminal"};
}

ProgramRun::ProgramRun(TerminalWindow& window, std::optional<std::string> screenshotFile)
    : m_window(window), m_screenshotFile(std::move(screenshotFile)), m_exitStatus(kSignalStatusBase + SIGHUP) {
  connect(&terminal(), &TerminalController::shellEnded, this, &ProgramRun::programEnded);
  if (!terminal().ptySession().isRunning()) {
    MainQueue::async(MainQueue::Owner(this), [this] { programEnded(kLaunchFailedStatus); });
  }
}

TerminalController& ProgramRun::terminal() {
  return m_window.contentViewController().rootView().terminal();
}

TerminalSurface& ProgramRun::surface() {
  return m_window.contentViewController().rootView().surface();
}

void ProgramRun::programEnded(int status) {
  const bool killed = terminal().ptySession().terminationReason() == ChildProcess::Reason::Signal;
  m_exitStatus = killed ? kSignalStatusBase + status : status;
  const MainQueue::Owner self(this);
  whenDrained(self, terminal().ptySession(), [this, self] {
    surface().whenShown([this, self] {
      if (self) finish();
    });
  });
}

void ProgramRun::finish() {
  if (m_screenshotFile) {
    const QString file = QString::fromStdString(*m_screenshotFile);
    if (!m_window.grab().save(file, "PNG")) {
      printErrorLine("zolt: cannot write " + *m_screenshotFile);
      m_exitStatus = EXIT_FAILURE;
    }
  }
  QApplication::exit(m_exitStatus);
}

}  // namespace zolt
