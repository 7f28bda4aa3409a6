#include "platform/TerminationSignals.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

#include "platform/Pipe.h"

namespace zolt {

namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

// The only thing the signal handler uses: the write end of a pipe.
volatile sig_atomic_t wakeWriter = -1;
Pipe wakePipe;

void note(int signal) {
  const int before = errno;
  const char byte = 1;
  [[maybe_unused]] const ssize_t written = write(wakeWriter, &byte, 1);
  std::signal(signal, SIG_DFL);
  errno = before;
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> end) {
  auto pipe = makePipe();
  if (!pipe) return;
  wakePipe = std::move(pipe.value());
  wakeWriter = wakePipe.writer.get();
  m_notifier = std::make_unique<QSocketNotifier>(wakePipe.reader.get(), QSocketNotifier::Read);
  QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [end = std::move(end)] {
    char byte = 0;
    if (read(wakePipe.reader.get(), &byte, 1) == 1) end();
  });
  for (const int signal : kSignals) {
    struct sigaction action {};
    // Signals that were ignored at start-up (nohup) stay ignored.
    if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
  }
}

TerminationSignals::~TerminationSignals() {
  for (const int signal : kSignals) {
    struct sigaction action {};
    if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == note) std::signal(signal, SIG_DFL);
  }
  m_notifier.reset();
  wakeWriter = -1;
  wakePipe = {};
}

void TerminationSignals::ignoreFromNow() {
  for (const int signal : kSignals) {
    std::signal(signal, SIG_IGN);
  }
}

}  // namespace zolt
