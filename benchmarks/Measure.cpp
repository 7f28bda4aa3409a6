#include "Measure.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

extern char** environ;

namespace zolt::bench {

namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

double median(std::vector<double> values) {
  std::ranges::sort(values);
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double secondsFor(const std::function<void()>& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double cpuSecondsFor(const std::function<void()>& action) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
  };
  const double start = now();
  action();
  return now() - start;
}

Cost costOfProgram(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  Cost cost;
  int status = 0;
  rusage usage{};
  cost.wall = secondsFor([&] {
    pid_t pid = 0;
    if (posix_spawnp(&pid, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) {
      std::perror(arguments[0]);
      std::exit(1);
    }
    wait4(pid, &status, 0, &usage);
  });
  posix_spawn_file_actions_destroy(&actions);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    std::fprintf(stderr, "%s failed\n", arguments[0]);
    std::exit(1);
  }
  cost.cpu = seconds(usage.ru_utime) + seconds(usage.ru_stime);
  return cost;
}

Cost costBeyondStart(const std::vector<std::string>& terminal, const std::vector<std::string>& command) {
  std::vector<std::string> work = terminal;
  work.insert(work.end(), command.begin(), command.end());
  std::vector<std::string> nothing = terminal;
  nothing.emplace_back("true");
  const Cost all = costOfProgram(work);
  const Cost start = costOfProgram(nothing);
  return {.wall = all.wall - start.wall, .cpu = all.cpu - start.cpu};
}

void printRow(const std::string& what, double value, const std::string& unit, double limit, bool smallerIsBetter) {
  const bool reached = smallerIsBetter ? value <= limit : value >= limit;
  std::printf("| %-58s | %10.3f %-12s | %s %-8g | %-6s |\n", what.c_str(), value, unit.c_str(),
              smallerIsBetter ? "at most" : "at least", limit, reached ? "yes" : "NO");
  std::fflush(stdout);
}

void printFact(const std::string& what, const std::string& value) {
  std::printf("| %-58s | %-23s | %-16s | %-6s |\n", what.c_str(), value.c_str(), "", "");
  std::fflush(stdout);
}

}  // namespace zolt::bench
