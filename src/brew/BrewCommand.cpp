#include "brew/BrewCommand.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <mutex>

#include "platform/ChildProcess.h"
#include "platform/Descriptor.h"
#include "platform/Pipe.h"

namespace zolt {

namespace {

// A user's pipes may together hold 64 MiB by default (pipe(7), pipe-user-pages-soft); beyond that new ones hold next to
// nothing. The more commands run, the less each takes for itself, and all of them stay below that.
constexpr std::size_t kPipeShareBytes = 16 * 1024 * 1024;
constexpr std::size_t kUsualLargestPipeBytes = 1024 * 1024;
constexpr int kPollMs = 100;
constexpr std::chrono::milliseconds kGraceAtExit{200};
constexpr std::chrono::milliseconds kGraceAfterKill{1000};

using Process = std::shared_ptr<ChildProcess>;

// The commands that run, or have left something behind that still holds their pipe.
struct Running {
  std::mutex mutex;
  std::condition_variable changed;
  std::vector<Process> processes;
  bool isEnding = false;
  bool isOver = false;  // nobody waits for output any more

  // Lives as long as the process: workers may outlive main().
  static Running& shared() {
    static auto* running = new Running;
    return *running;
  }
};

// An exit that goes past the event loop's end, as when the display is gone.
void endAtExit() {
  static const int registered = std::atexit([] { endBrewCommands(kGraceAtExit); });
  (void)registered;
}

// False when it was not launched: it could not be, or the application is ending.
bool launch(const Process& process) {
  Running& running = Running::shared();
  endAtExit();
  const std::lock_guard lock(running.mutex);
  if (running.isEnding || !process->launch()) return false;
  running.processes.push_back(process);
  return true;
}

void forget(const Process& process) {
  Running& running = Running::shared();
  {
    const std::lock_guard lock(running.mutex);
    std::erase(running.processes, process);
  }
  process->release();
  running.changed.notify_all();
}

// What the system lets one pipe hold.
std::size_t largestPipeBytes() {
  static const std::size_t largest = [] {
    std::size_t bytes = 0;
    std::ifstream("/proc/sys/fs/pipe-max-size") >> bytes;
    return bytes > 0 ? bytes : kUsualLargestPipeBytes;
  }();
  return largest;
}

std::size_t pipeBytesNow() {
  Running& running = Running::shared();
  const std::lock_guard lock(running.mutex);
  return std::min(largestPipeBytes(), kPipeShareBytes / (running.processes.size() + 1));
}

bool isOver() {
  Running& running = Running::shared();
  const std::lock_guard lock(running.mutex);
  return running.isOver;
}

// To the end of file: that is when the last one that the command left behind has closed it, too.
QByteArray readToEnd(int descriptor) {
  QByteArray content;
  std::array<char, 64 * 1024> buffer;
  while (true) {
    pollfd waited{.fd = descriptor, .events = POLLIN, .revents = 0};
    if (poll(&waited, 1, kPollMs) == 0) {
      if (isOver()) return content;
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
  const Descriptor nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
  const auto process = std::make_shared<ChildProcess>(ChildProcess::Request{
      .executable = executable,
      .arguments = arguments,
      .environment = environment,
      .standardInput = nothing.get(),
      .standardOutput = pipe.value().writer.get(),
      .standardError = pipe.value().writer.get(),
      .terminal = ChildProcess::Terminal::Detached,
      .keepsGroup = true,
  });
  if (!launch(process)) return std::nullopt;
  pipe.value().writer.reset();
  process->waitUntilExit();
  QByteArray output = readToEnd(pipe.value().reader.get());
  forget(process);
  return output;
}

void interruptBrewCommands() {
  Running& running = Running::shared();
  const std::lock_guard lock(running.mutex);
  running.isEnding = true;
  for (const Process& process : running.processes) {
    process->sendSignalToGroup(SIGINT);
  }
}

void endBrewCommands(std::chrono::milliseconds grace) {
  Running& running = Running::shared();
  interruptBrewCommands();
  std::unique_lock lock(running.mutex);
  running.changed.wait_for(lock, grace, [&] { return running.processes.empty(); });
  // Under the lock: none of them gives its group up meanwhile.
  for (const Process& process : running.processes) {
    process->sendSignalToGroup(SIGKILL);
  }
  running.isOver = true;
  running.changed.wait_for(lock, kGraceAfterKill, [&] { return running.processes.empty(); });
}

}  // namespace zolt
