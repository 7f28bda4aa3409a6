#include "Process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "StartTime.h"

extern char** environ;

namespace zolt::bench {

namespace {

constexpr auto kIdle = std::chrono::seconds(1);
constexpr double kPatience = 120;
constexpr double kKibInMib = 1024;

[[noreturn]] void fail(const char* reason) {
  std::fprintf(stderr, "%s\n", reason);
  std::exit(1);
}

// A value of /proc/PID/status, converted from kB to MiB.
double mebibytes(pid_t pid, const std::string& key) {
  std::ifstream status("/proc/" + std::to_string(pid) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(key + ":")) return std::stod(line.substr(key.size() + 1)) / kKibInMib;
  }
  fail("cannot read a process's memory use");
}

// User and system time of all threads of a process, in clock ticks: fields 14 and 15 of its stat, which follow the
// name in parentheses.
long cpuTicks(pid_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
  std::string line;
  std::getline(file, line);
  long user = 0;
  long system = 0;
  const std::size_t name = line.rfind(')');
  if (name == std::string::npos ||
      std::sscanf(line.c_str() + name, ") %*c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %ld %ld", &user, &system) != 2) {
    fail("cannot read a process's processor time");
  }
  return user + system;
}

}  // namespace

pid_t startProgram(std::vector<std::string> command) {
  std::vector<char*> arguments;
  for (std::string& word : command) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  pid_t pid = 0;
  if (posix_spawnp(&pid, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) {
    std::perror(arguments[0]);
    std::exit(1);
  }
  return pid;
}

void endProgram(pid_t pid) {
  kill(pid, SIGTERM);
  waitpid(pid, nullptr, 0);
}

void waitUntilIdle(pid_t pid) {
  const double deadline = now() + kPatience;
  for (long before = -1, ticks = cpuTicks(pid); ticks != before;) {
    if (now() > deadline) fail("the program does not become idle");
    std::this_thread::sleep_for(kIdle);
    before = ticks;
    ticks = cpuTicks(pid);
  }
}

double residentNow(pid_t pid) {
  return mebibytes(pid, "VmRSS");
}

double residentPeak(pid_t pid) {
  return mebibytes(pid, "VmHWM");
}

std::uint64_t unlinkedFileBytes(pid_t pid) {
  constexpr std::string_view kUnlinked = " (deleted)";
  std::uint64_t bytes = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/fd")) {
    std::error_code gone;
    const std::string target = std::filesystem::read_symlink(entry.path(), gone).string();
    // Not memory that is shared with the X server.
    if (gone || !target.ends_with(kUnlinked) || target.starts_with("/memfd") || target.starts_with("/dev/shm"))
      continue;
    const std::uintmax_t size = std::filesystem::file_size(entry.path(), gone);
    if (!gone) bytes += size;
  }
  return bytes;
}

double secondsUntilTold(const std::vector<std::string>& command, const std::string& pipe) {
  setenv("ZOLT_BENCH_PIPE", pipe.c_str(), 1);
  const double start = now();
  const pid_t pid = startProgram(command);
  const int reader = open(pipe.c_str(), O_RDONLY);
  double told = 0;
  if (read(reader, &told, sizeof told) != sizeof told) fail("a program has not told its time");
  close(reader);
  endProgram(pid);
  unsetenv("ZOLT_BENCH_PIPE");
  return told - start;
}

}  // namespace zolt::bench
