// startup ZOLT SHELL WINDOW FOLDER: from exec to the first byte of Zolt's shell, as a multiple of the time from exec to
// the first paint of the smallest program that opens a window. The two are run in turn.
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "Measure.h"
#include "StartTime.h"

extern char** environ;

namespace {

constexpr int kPairs = 31;

// Seconds from the program's exec to the time that it or its child reports.
double timeOf(std::vector<std::string> command, const std::string& pipe) {
  std::vector<char*> arguments;
  for (std::string& word : command) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  pid_t pid = 0;
  const double start = zolt::bench::now();
  if (posix_spawn(&pid, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) std::exit(1);
  const int reader = open(pipe.c_str(), O_RDONLY);
  double told = 0;
  if (read(reader, &told, sizeof told) != sizeof told) std::exit(1);
  close(reader);
  kill(pid, SIGTERM);
  waitpid(pid, nullptr, 0);
  return told - start;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) return 2;
  const std::string folder = argv[4];
  const std::string pipe = folder + "/startup.pipe";
  mkfifo(pipe.c_str(), 0600);
  setenv("ZOLT_BENCH_PIPE", pipe.c_str(), 1);
  setenv("SHELL", argv[2], 1);
  setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
  setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
  std::vector<double> ratios;
  std::vector<double> zolt;
  std::vector<double> window;
  for (int i = -2; i < kPairs; ++i) {
    const double one = timeOf({argv[1]}, pipe);
    const double other = timeOf({argv[3]}, pipe);
    if (i < 0) continue;  // warm-up
    ratios.push_back(one / other);
    zolt.push_back(one * 1e3);
    window.push_back(other * 1e3);
  }
  unlink(pipe.c_str());
  zolt::bench::printRow("exec to the shell's first byte / an empty window's paint", zolt::bench::median(ratios),
                        "times", 1.25, true);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.0f and %.0f ms", zolt::bench::median(zolt), zolt::bench::median(window));
  zolt::bench::printFact("  the two times in this run", fact);
}
