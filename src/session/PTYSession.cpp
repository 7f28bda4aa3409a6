#include "session/PTYSession.h"

#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <mutex>
#include <utility>

#include "base/Diagnostics.h"
#include "platform/MainQueue.h"

namespace zolt {

namespace {

// How long a shell may run on after SIGTERM and the closing of its terminal before it is killed.
constexpr std::chrono::milliseconds kKillGrace{2000};

constexpr std::array<std::pair<const char*, const char*>, 4> kTerminalVariables{{
    {"TERM", "xterm-256color"},
    {"TERM_PROGRAM", "Zolt"},
    {"TERM_PROGRAM_VERSION", "1.0.0"},
    {"COLORTERM", "truecolor"},
}};

Environment withTerminalVariables(Environment environment) {
  for (const auto& [name, value] : kTerminalVariables) {
    environment[name] = value;
  }
  return environment;
}

void printWriteError(const std::string& reason) {
  printLine("Write error: " + reason);
}

}  // namespace

// Brings chunks from the reader's thread to the main thread, or to a tap.
class PTYSession::Delivery {
 public:
  void setTap(OutputHandler tap) {
    const std::lock_guard lock(m_mutex);
    m_tap = std::move(tap);
  }

  /// Gives a chunk that was just read to the tap; false if it has to go through the main queue: there is no tap, or
  /// earlier chunks are still on that way.
  bool tapped(const Bytes& chunk) {
    const std::lock_guard lock(m_mutex);
    if (!m_tap || m_queued > 0) {
      ++m_queued;
      return false;
    }
    m_tap(chunk);
    return true;
  }

  /// The same for a chunk that has come out of the main queue.
  bool tappedLate(const Bytes& chunk) {
    const std::lock_guard lock(m_mutex);
    --m_queued;
    if (m_tap) m_tap(chunk);
    return static_cast<bool>(m_tap);
  }

 private:
  std::mutex m_mutex;
  OutputHandler m_tap;
  std::size_t m_queued = 0;  // chunks in the main queue
};

PTYSession::PTYSession() : m_delivery(std::make_shared<Delivery>()) {}

PTYSession::~PTYSession() {
  terminate();
}

bool PTYSession::start(const Shell& shell) {
  auto terminal = openPseudoTerminal();
  if (!terminal) {
    printLine("Failed to open PTY");
    return false;
  }
  m_masterHandle = std::make_unique<FileHandle>(std::move(terminal.value().master));
  m_masterHandle->setWriteFailureHandler(
      [](const std::string& reason) { MainQueue::async([reason] { printWriteError(reason); }); });
  m_slaveHandle = std::move(terminal.value().slave);
  if (m_size != TerminalSize{}) setWindowSize(m_masterHandle->descriptor(), m_size);

  const int stream = m_slaveHandle.get();
  const auto process = std::make_shared<ChildProcess>(ChildProcess::Request{
      .executable = shell.executable,
      .arguments = shell.args.empty() ? std::vector<std::string>{"-l"} : shell.args,
      .environment = withTerminalVariables(environment),
      .workingDirectory = workingDirectory,
      .standardInput = stream,
      .standardOutput = stream,
      .standardError = stream,
      .terminal = ChildProcess::Terminal::Controlling,
  });
  const MainQueue::Owner self(this);
  process->setTerminationHandler([this, self, process] {
    MainQueue::async(self, [this, process] {
      setRunning(false);
      if (const ExitHandler handler = onExit) handler(process->terminationStatus());
    });
  });
  setupReadHandler();
  if (const auto launched = process->launch(); !launched) {
    printLine("Failed to start process: " + launched.reason());
    process->setTerminationHandler(nullptr);
    return false;
  }
  m_process = process;
  setRunning(true);
  return true;
}

void PTYSession::setupReadHandler() {
  if (!m_masterHandle) return;
  m_masterHandle->setReadabilityHandler(
      [this, self = MainQueue::Owner(this), delivery = m_delivery](FileHandle& handle) {
        Bytes chunk = handle.availableData();
        // End of file is ignored: only the exit of the process counts.
        if (chunk.empty() || delivery->tapped(chunk)) return;
        MainQueue::async(self, [this, delivery, chunk = std::move(chunk)] {
          if (delivery->tappedLate(chunk)) return;
          if (const OutputHandler handler = onOutput) handler(chunk);
        });
      });
}

void PTYSession::setOutputTap(OutputHandler tap) {
  m_delivery->setTap(std::move(tap));
}

void PTYSession::write(const Bytes& data) {
  write(data.view());
}

void PTYSession::write(std::string_view text) {
  if (!m_masterHandle) return;
  if (const auto written = m_masterHandle->write(text); !written) printWriteError(written.reason());
}

void PTYSession::resize(const TerminalSize& size) {
  m_size = size;
  if (m_masterHandle) setWindowSize(m_masterHandle->descriptor(), m_size);
}

void PTYSession::terminate() {
  if (m_process) {
    m_process->terminate();
    m_process->killAfter(kKillGrace);
  }
  cleanup();
}

void PTYSession::sendSignal(std::int32_t signal) {
  if (!m_masterHandle) return;
  const pid_t foreground = tcgetpgrp(m_masterHandle->descriptor());
  if (foreground > 0 && kill(-foreground, signal) == 0) return;
  if (m_process) m_process->sendSignal(signal);
}

ChildProcess::Reason PTYSession::terminationReason() const {
  return m_process ? m_process->terminationReason() : ChildProcess::Reason::Exit;
}

std::optional<pid_t> PTYSession::shellProcess() const {
  if (!m_isRunning) return std::nullopt;
  return m_process->pid();
}

std::optional<pid_t> PTYSession::foregroundProgram() const {
  if (!m_masterHandle || !m_isRunning) return std::nullopt;
  const pid_t foreground = tcgetpgrp(m_masterHandle->descriptor());
  // The shell leads its session, and with that a group of its own.
  if (foreground <= 0 || foreground == m_process->pid()) return std::nullopt;
  return foreground;
}

bool PTYSession::isDrained() const {
  return !m_masterHandle || m_masterHandle->isDrained();
}

void PTYSession::cleanup() {
  if (m_masterHandle) m_masterHandle->setReadabilityHandler(nullptr);
  m_masterHandle.reset();
  m_slaveHandle.reset();
  m_process.reset();
  setRunning(false);
}

void PTYSession::setRunning(bool running) {
  Q_EMIT objectWillChange();
  m_isRunning = running;
}

}  // namespace zolt
