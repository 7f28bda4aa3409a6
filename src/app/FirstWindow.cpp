#include "app/FirstWindow.h"

#include <QApplication>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>

#include "platform/MainQueue.h"

namespace zolt {

namespace {

constexpr QSize kWindowSize(900, 600);
constexpr int kSignalStatusBase = 128;
constexpr int kLaunchFailedStatus = 127;
constexpr std::chrono::milliseconds kDrainPoll{1};
// What the program left in the terminal is read in no time; a process that it left behind may go on printing for ever.
constexpr std::chrono::seconds kDrainLimit{5};

}  // namespace

Shell shellForProgram(const std::vector<std::string>& program) {
  // sh finds the program and becomes it: its status, signals and error message are the ones people know.
  std::vector<std::string> args{"-c", "exec \"$0\" \"$@\""};
  args.insert(args.end(), program.begin(), program.end());
  return Shell{.name = program.front(), .executable = "/bin/sh", .args = std::move(args), .icon = "terminal"};
}

WindowSize terminalSizeOfNewWindow() {
  const QScreen* screen = QApplication::primaryScreen();
  const GridSize size = TextCanvas::gridSizeFor(kWindowSize, screen == nullptr ? 1 : screen->devicePixelRatio());
  return {.rows = size.rows, .cols = size.columns, .pixelWidth = size.pixelWidth, .pixelHeight = size.pixelHeight};
}

std::unique_ptr<ContentView> makeTerminalWindow(std::unique_ptr<TerminalController> terminal) {
  auto window = std::make_unique<ContentView>(std::move(terminal));
  window->setWindowTitle(QStringLiteral("Zolt"));
  window->resize(kWindowSize);
  if (const QScreen* screen = QApplication::primaryScreen()) {
    QRect frame = window->geometry();
    const QRect available = screen->availableGeometry();
    frame.moveCenter(available.center());
    frame.moveTopLeft({std::max(frame.left(), available.left()), std::max(frame.top(), available.top())});
    window->setGeometry(frame);
  }
  return window;
}

ProgramRun::ProgramRun(ContentView& window, std::optional<std::string> screenshotFile)
    : m_window(window), m_screenshotFile(std::move(screenshotFile)), m_exitStatus(kSignalStatusBase + SIGHUP) {
  TerminalController& terminal = window.terminal();
  connect(&terminal, &TerminalController::shellEnded, this, &ProgramRun::programEnded);
  if (!terminal.ptySession().isRunning()) {
    MainQueue::async(MainQueue::Owner(this), [this] { programEnded(kLaunchFailedStatus); });
  }
}

void ProgramRun::programEnded(int status) {
  const bool killed = m_window.terminal().ptySession().terminationReason() == ChildProcess::Reason::Signal;
  m_exitStatus = killed ? kSignalStatusBase + status : status;
  m_drainDeadline = std::chrono::steady_clock::now() + kDrainLimit;
  finishWhenDrained();
}

void ProgramRun::finishWhenDrained() {
  const bool late = std::chrono::steady_clock::now() >= m_drainDeadline;
  if (!late && !m_window.terminal().ptySession().isDrained()) {
    MainQueue::after(MainQueue::Owner(this), kDrainPoll, [this] { finishWhenDrained(); });
    return;
  }
  // The last chunk may have two turns of the main queue before it: its delivery, and its being appended.
  MainQueue::async(MainQueue::Owner(this), [this] { MainQueue::async(MainQueue::Owner(this), [this] { finish(); }); });
}

void ProgramRun::finish() {
  m_window.textView().makeFrameNow();
  if (m_screenshotFile) {
    const QString file = QString::fromStdString(*m_screenshotFile);
    if (!m_window.grab().save(file, "PNG")) {
      std::fprintf(stderr, "zolt: cannot write %s\n", m_screenshotFile->c_str());
      m_exitStatus = EXIT_FAILURE;
    }
  }
  QApplication::exit(m_exitStatus);
}

}  // namespace zolt
