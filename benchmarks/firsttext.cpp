// firsttext SHELL WINDOW FOLDER NAME TERMINAL...: from exec to the first text on the X server's screen, as a multiple
// of the time from exec to the first paint of the smallest program that opens a window. The two are run in turn; SHELL,
// which TERMINAL runs, fills the screen with text. NAME begins the row.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "Measure.h"
#include "Process.h"
#include "StartTime.h"
#include "XDisplay.h"

namespace {

using namespace std::chrono_literals;
using zolt::bench::XDisplay;

constexpr int kPairs = 21;
constexpr double kPatience = 10;
constexpr auto kPollInterval = 200us;
// Within the text of a window of 900 by 600 pixels, whether it is in the corner of the screen or in its middle.
constexpr zolt::bench::Area kText{.x = 600, .y = 300, .width = 40, .height = 40};

// Neither an empty screen nor an empty window has two colours.
bool showsText(XDisplay& display) {
  const std::vector<std::uint32_t> pixels = display.pixels(kText);
  return std::ranges::any_of(pixels, [&](std::uint32_t pixel) { return pixel != pixels.front(); });
}

double secondsUntilText(XDisplay& display, const std::vector<std::string>& command) {
  while (showsText(display)) {
    std::this_thread::sleep_for(10ms);  // the last window is going
  }
  const double start = zolt::bench::now();
  const pid_t pid = zolt::bench::startProgram(command);
  while (!showsText(display)) {
    if (zolt::bench::now() - start > kPatience) {
      std::fprintf(stderr, "%s shows no text\n", command.front().c_str());
      std::exit(1);
    }
    std::this_thread::sleep_for(kPollInterval);
  }
  const double seconds = zolt::bench::now() - start;
  zolt::bench::endProgram(pid);
  return seconds;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 6) return 2;
  const std::string folder = argv[3];
  const std::string pipe = folder + "/firsttext.pipe";
  const std::vector<std::string> command(argv + 5, argv + argc);
  mkfifo(pipe.c_str(), 0600);
  setenv("SHELL", argv[1], 1);
  setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
  setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
  XDisplay display;
  std::vector<double> ratios;
  std::vector<double> text;
  std::vector<double> window;
  for (int i = -2; i < kPairs; ++i) {
    const double one = secondsUntilText(display, command);
    const double other = zolt::bench::secondsUntilTold({argv[2]}, pipe);
    if (i < 0) continue;  // warm-up
    ratios.push_back(one / other);
    text.push_back(one * 1e3);
    window.push_back(other * 1e3);
  }
  unlink(pipe.c_str());
  zolt::bench::printRow(std::string(argv[4]) + "exec to the first text on screen / an empty window's paint",
                        zolt::bench::median(ratios), "times", 1.6, true);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.0f and %.0f ms", zolt::bench::median(text), zolt::bench::median(window));
  zolt::bench::printFact("  the two times in this run", fact);
}
