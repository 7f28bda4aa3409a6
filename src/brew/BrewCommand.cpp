#include "brew/BrewCommand.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/ChildProcess.h"
#include "platform/ControllingTerminal.h"
#include "platform/Descriptor.h"
#include "platform/Pipe.h"
#include "platform/ProcessLeash.h"

namespace zolt {

namespace {

// A user's pipes may together hold 64 MiB by default (pipe(7), pipe-user-pages-soft); beyond that, new pipes get a page
// or two. The more commands run, the smaller their pipes, so that all of them stay below the limit.
constexpr std::size_t kPipeShareBytes = 16 * 1024 * 1024;
constexpr std::size_t kUsualMaxPipeBytes = 1024 * 1024;

// The commands that change what is installed; all others only read.
constexpr std::array kWritingCommands{"install", "upgrade"};

bool isWriting(const std::vector<std::string>& arguments) {
  return !arguments.empty() && std::ranges::find(kWritingCommands, arguments.front()) != kWritingCommands.end();
}

using Process = std::shared_ptr<ChildProcess>;

// Commands that are running, or whose leftover processes still hold their pipe.
struct Running {
  std::mutex mutex;
  std::size_t readingCount = 0;
  ProcessLeash readingGroup;
  std::vector<Process> writing;
  bool isEnding = false;

  // Never destroyed: workers may outlive main().
  static Running& shared() {
    static auto* running = new Running;
    return *running;
  }
};

// Once per process, before its first command.
void prepareProcess() {
  static const int prepared = [] {
    leaveControllingTerminal();
    return std::atexit(endBrewCommands);
  }();
  static_cast<void>(prepared);
}

// The system's maximum pipe size.
std::size_t maxPipeBytes() {
  static const std::size_t bytes = [] {
    std::size_t allowed = 0;
    std::ifstream("/proc/sys/fs/pipe-max-size") >> allowed;
    return allowed > 0 ? allowed : kUsualMaxPipeBytes;
  }();
  return bytes;
}

std::size_t pipeBytesNow() {
  Running& running = Running::shared();
  const std::lock_guard lock(running.mutex);
  return std::min(maxPipeBytes(), kPipeShareBytes / (running.readingCount + running.writing.size() + 1));
}

// Reads to end of file: then every process that the command left behind has closed the pipe too.
QByteArray readToEnd(int descriptor) {
  QByteArray content;
  std::array<char, 64 * 1024> buffer;
  while (true) {
    const ssize_t got = read(descriptor, buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return content;
    content.append(buffer.data(), got);
  }
}

// A child that holds the read end of a command's pipe and drains it once this process is gone, so that neither a broken
// nor a full pipe stops an installation half-way. Its own life pipe, which closes with this object, tells it when.
class PipeHeir {
 public:
  explicit PipeHeir(const Pipe& inherited) {
    auto life = makePipe();
    if (!life) return;
    ChildProcess heir({
        .executable = "/bin/sh",
        .arguments = {"-c", "trap '' INT TERM HUP; read -r _; exec cat <&1 >/dev/null 2>&1"},
        .environment = processEnvironment(),
        .workingDirectory = "/",
        .standardInput = life.value().reader.get(),
        .standardOutput = inherited.reader.get(),
        .standardError = inherited.reader.get(),
        .group = ChildProcess::kOwnGroup,
    });
    if (heir.launch()) m_life = std::move(life.value().writer);
  }

 private:
  Descriptor m_life;
};

// A command that only reads ends with this process, whatever ends that.
std::optional<QByteArray> outputOfReading(ChildProcess::Request request, Pipe& pipe) {
  Running& running = Running::shared();
  std::optional<ChildProcess> process;
  {
    const std::lock_guard lock(running.mutex);
    if (running.isEnding) return std::nullopt;
    const auto group = running.readingGroup.group();
    if (!group) return std::nullopt;
    request.group = group.value();
    process.emplace(std::move(request));
    if (!process->launch()) return std::nullopt;
    ++running.readingCount;
  }
  pipe.writer.reset();
  process->waitUntilExit();
  QByteArray output = readToEnd(pipe.reader.get());
  const std::lock_guard lock(running.mutex);
  --running.readingCount;
  return output;
}

// A command that writes is interrupted on an orderly quit; if Zolt is killed, it runs to completion.
std::optional<QByteArray> outputOfWriting(ChildProcess::Request request, Pipe& pipe) {
  Running& running = Running::shared();
  request.group = ChildProcess::kOwnGroup;
  request.keepsGroup = true;
  const auto process = std::make_shared<ChildProcess>(std::move(request));
  const PipeHeir heir(pipe);
  {
    const std::lock_guard lock(running.mutex);
    if (running.isEnding || !process->launch()) return std::nullopt;
    running.writing.push_back(process);
  }
  pipe.writer.reset();
  process->waitUntilExit();
  QByteArray output = readToEnd(pipe.reader.get());
  const std::lock_guard lock(running.mutex);
  std::erase(running.writing, process);
  process->release();
  return output;
}

}  // namespace

std::optional<QByteArray> outputOfBrewCommand(const std::string& executable, const std::vector<std::string>& arguments,
                                              const Environment& environment) {
  prepareProcess();
  auto pipe = makePipe();
  if (!pipe) return std::nullopt;
  enlargePipe(pipe.value(), pipeBytesNow());
  const Descriptor nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
  ChildProcess::Request request{
      .executable = executable,
      .arguments = arguments,
      .environment = environment,
      .standardInput = nothing.get(),
      .standardOutput = pipe.value().writer.get(),
      .standardError = pipe.value().writer.get(),
  };
  return isWriting(arguments) ? outputOfWriting(std::move(request), pipe.value())
                              : outputOfReading(std::move(request), pipe.value());
}

void endBrewCommands() {
  Running& running = Running::shared();
  const std::lock_guard lock(running.mutex);
  // A second interrupt would stop brew in the middle of its clean-up.
  if (std::exchange(running.isEnding, true)) return;
  for (const Process& process : running.writing) {
    process->sendSignalToGroup(SIGINT);
    // A job stopped by SIGTTIN must be continued to receive the signal.
    process->sendSignalToGroup(SIGCONT);
  }
  if (running.readingCount > 0) {
    running.readingGroup.letGo();
  } else {
    running.readingGroup.kill();
  }
}

}  // namespace zolt
