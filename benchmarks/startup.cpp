// startup SHELL WINDOW FOLDER NAME ZOLT...: from exec to the first byte of Zolt's shell, as a multiple of the time from
// exec to the first paint of the smallest program that opens a window. The two are run in turn. NAME begins the row.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "Measure.h"
#include "Process.h"

namespace {

constexpr int kPairs = 31;

}  // namespace

int main(int argc, char** argv) {
  if (argc < 6) return 2;
  const std::string folder = argv[3];
  const std::string name = argv[4];
  const std::vector<std::string> command(argv + 5, argv + argc);
  const std::string pipe = folder + "/startup.pipe";
  mkfifo(pipe.c_str(), 0600);
  setenv("SHELL", argv[1], 1);
  setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
  setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
  std::vector<double> ratios;
  std::vector<double> zolt;
  std::vector<double> window;
  for (int i = -2; i < kPairs; ++i) {
    const double one = zolt::bench::secondsUntilTold(command, pipe);
    const double other = zolt::bench::secondsUntilTold({argv[2]}, pipe);
    if (i < 0) continue;  // warm-up
    ratios.push_back(one / other);
    zolt.push_back(one * 1e3);
    window.push_back(other * 1e3);
  }
  unlink(pipe.c_str());
  zolt::bench::printRow(name + "exec to the shell's first byte / an empty window's paint", zolt::bench::median(ratios),
                        "times", 1.25, true);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.0f and %.0f ms", zolt::bench::median(zolt), zolt::bench::median(window));
  zolt::bench::printFact("  the two times in this run", fact);
}
