#include "brew/BrewCommand.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <memory>
#include <mutex>

#include "platform/ChildProcess.h"
#include "platform/Pipe.h"

namespace zolt {

namespace {

// A user's pipes may together hold 64 MiB by default (pipe(7), pipe-user-pages-soft); beyond that new ones hold next to
// nothing. The more commands run, the less each takes for itself, and all of them stay below that.
constexpr std::size_t kLargestPipeBytes = 1024 * 1024;
constexpr std::size_t kPipeShareBytes = 16 * 1024 * 1024;
constexpr int kPollMs = 100;
constexpr std::chrono::milliseconds kInterruptGrace{2000};

// The commands that run.
struct Running {
  std::mutex mutex;
  std::vector<std::shared_ptr<ChildProcess>> processes;
  bool isEnding = false;

  // Lives as long as the process: workers may outlive main().
  static Running& shared() {
    static auto* running = new Running;
    return *running;
  }
};

// False when it was not launched: it could not be, or the application is ending.
bool launch(const std::shared_ptr<ChildProcess>& process) {
  Running& running = Running::shared();
  const std::lock_guard lock(running.mutex);
  if (running.isEnding || !process->launch()) return false;
  running.processes.push_back(process);
  return true;
}

void forget(const std::shared_ptr<ChildProcess>& process) {
  Running& running = Running::shared();
  const std::lock_guard lock(running.mutex);
  std::erase(running.processes, process);
}

std::size_t pipeBytesNow() {
  Running& running = Running::shared();
  const std::lock_guard lock(running.mutex);
  return std::min(kLargestPipeBytes, kPipeShareBytes / (running.processes.size() + 1));
}

bool isEnding() {
  Running& running = Running::shared();
  const std::lock_guard lock(running.mutex);
  return running.isEnding;
}

// To the end of file: that is when the last one that the command left behind has closed it, too.
QByteArray readToEnd(int descriptor) {
  QByteArray content;
  std::array<char, 64 * 1024> buffer;
  while (true) {
    pollfd waited{.fd = descriptor, .events = POLLIN, .revents = 0};
    if (poll(&waited, 1, kPollMs) == 0) {
      if (isEnding()) return content;
      continue;
    }
    const ssize_t got = read(descriptor, buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return content;
    content.append(buffer.data(), got);
  }
}

}  // namespace

std::optional<QByteArray> outputOfBrewCommand(const std::string& executable, const std::vector<std::string>& arguments,
                                              const Environment& environment) {
  auto pipe = makePipe();
  if (!pipe) return std::nullopt;
  enlargePipe(pipe.value(), pipeBytesNow());
  const auto process = std::make_shared<ChildProcess>(ChildProcess::Request{
      .executable = executable,
      .arguments = arguments,
      .environment = environment,
      .standardInput = -1,
      .standardOutput = pipe.value().writer.get(),
      .standardError = pipe.value().writer.get(),
      .terminal = ChildProcess::Terminal::Detached,
  });
  if (!launch(process)) return std::nullopt;
  pipe.value().writer.reset();
  process->waitUntilExit();
  forget(process);
  return readToEnd(pipe.value().reader.get());
}

void interruptBrewCommands() {
  Running& running = Running::shared();
  const std::lock_guard lock(running.mutex);
  running.isEnding = true;
  for (const auto& process : running.processes) {
    process->sendSignalToGroup(SIGINT);
    process->killAfter(kInterruptGrace);
  }
}

}  // namespace zolt
