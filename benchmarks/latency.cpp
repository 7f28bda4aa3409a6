// latency log|emulation|peer GLYPHWINDOW FOLDER NAME TERMINAL...: from a key event in the X server to the changed pixel
// on its screen, in a terminal (the command that runs a program in it) and in the smallest Qt program that shows a key,
// all on screen at once and typed into in turn. Each key follows a pause of
// random length, so that frame timers have stopped or are hit at every phase.
#include <sys/prctl.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "Measure.h"
#include "Process.h"
#include "StartTime.h"
#include "XDisplay.h"

namespace {

using zolt::bench::Area;
using zolt::bench::XDisplay;
using namespace std::chrono_literals;

// The windows are stacked vertically and do not overlap.
constexpr int kWindowWidth = 1280;
constexpr int kWindowHeight = 250;

constexpr int kWarmingRounds = 5;
constexpr int kRounds = 120;  // with the warm-up rounds and the first two keys, fewer than a row has columns
constexpr double kKeyPatience = 1;
constexpr auto kPause = 100ms;
constexpr auto kLongestJitter = 50ms;
constexpr auto kKeyHeld = 5ms;
// Between two reads of the pixels, so that the X server and the program have the processors to themselves.
constexpr auto kPollInterval = 40us;
constexpr auto kStill = 300ms;
constexpr char kKeys[] = {'x', 'o'};

enum class Glyph { Stays, MovesOn };

struct Program {
  std::string name;
  std::vector<std::string> command;
  Glyph glyph;
  pid_t pid = 0;
  xcb_window_t window = XCB_WINDOW_NONE;
  Area area{};   // of the window
  Area first{};  // of the first glyph
  int step = 0;  // to the next one, in pixels
  int typed = 0;
  std::vector<double> milliseconds{};
  int reads = 0;  // of the pixels, over all those milliseconds
};

// Waits until nothing in `area` has changed for a while, and returns the picture.
std::vector<std::uint32_t> stillPicture(XDisplay& display, const Area& area) {
  std::vector<std::uint32_t> picture = display.pixels(area);
  for (auto since = std::chrono::steady_clock::now(); std::chrono::steady_clock::now() - since < kStill;) {
    std::this_thread::sleep_for(10ms);
    std::vector<std::uint32_t> later = display.pixels(area);
    if (later != picture) since = std::chrono::steady_clock::now();
    picture = std::move(later);
  }
  return picture;
}

struct Change {
  double milliseconds = 0;
  int reads = 0;
};

// Types a key and waits until the pixels of `watched` change.
Change typeAndWatch(XDisplay& display, Program& program, const Area& watched) {
  const xcb_keycode_t key = display.keyFor(kKeys[program.typed % 2]);
  const std::vector<std::uint32_t> before = display.pixels(watched);
  display.requireFocus(program.window);
  const double pressed = zolt::bench::now();
  display.press(key);
  double seen = pressed;
  int reads = 0;
  for (bool changed = false; !changed;) {
    std::this_thread::sleep_for(kPollInterval);
    changed = display.pixels(watched) != before;
    seen = zolt::bench::now();
    ++reads;
    if (!changed && seen - pressed > kKeyPatience) {
      std::fprintf(stderr, "%s: key %d changed no pixel within %g s\n", program.name.c_str(), program.typed + 1,
                   kKeyPatience);
      std::exit(1);
    }
  }
  ++program.typed;
  std::this_thread::sleep_for(kKeyHeld);
  display.release(key);
  return {.milliseconds = (seen - pressed) * 1e3, .reads = reads};
}

// Types the first keys, to learn where glyphs appear.
void findGlyphs(XDisplay& display, Program& program) {
  const auto glyphOfNextKey = [&] {
    const std::vector<std::uint32_t> before = stillPicture(display, program.area);
    typeAndWatch(display, program, program.area);
    return zolt::bench::differenceOf(before, stillPicture(display, program.area), program.area);
  };
  display.focus(program.window);
  program.first = glyphOfNextKey();
  if (program.glyph == Glyph::MovesOn) program.step = glyphOfNextKey().x - program.first.x;
  const bool moves = program.step > 0;
  if (program.first.width > kWindowHeight || moves != (program.glyph == Glyph::MovesOn)) {
    std::fprintf(stderr, "%s: the key did not change a glyph's pixels\n", program.name.c_str());
    std::exit(1);
  }
}

Area nextGlyph(const Program& program) {
  Area area = program.first;
  area.x += program.step * program.typed;
  return area;
}

void typeInto(XDisplay& display, Program& program, std::chrono::microseconds jitter, bool counts) {
  display.focus(program.window);
  std::this_thread::sleep_for(kPause + jitter);
  const Change change = typeAndWatch(display, program, nextGlyph(program));
  if (!counts) return;
  program.milliseconds.push_back(change.milliseconds);
  program.reads += change.reads;
}

double percentile95(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() * 95 / 100];
}

double microsecondsPerRead(XDisplay& display, const Area& area) {
  std::vector<double> reads;
  for (int i = 0; i < 1000; ++i) {
    reads.push_back(zolt::bench::secondsFor([&] { display.pixels(area); }) * 1e6);
  }
  return zolt::bench::median(reads);
}

void tell(const Program& program) {
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.2f ms, 95%%: %.2f ms", zolt::bench::median(program.milliseconds),
                percentile95(program.milliseconds));
  zolt::bench::printFact("  " + program.name, fact);
}

// What a key is compared with, and at most how much it may take; 0: no limit.
struct Comparison {
  std::string_view name;
  bool withCell = false;  // with the program that draws only the glyph's cell
  double limit = 0;
};

constexpr Comparison kComparisons[] = {{.name = "log", .limit = 1.1},
                                       {.name = "emulation", .withCell = true, .limit = 1.2},
                                       {.name = "peer", .withCell = true}};

void tellRatio(const std::string& what, double ratio, double limit) {
  if (limit > 0) {
    zolt::bench::printRow(what, ratio, "times", limit, true);
    return;
  }
  char fact[64];
  std::snprintf(fact, sizeof fact, "%10.3f times", ratio);
  zolt::bench::printFact(what, fact);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 6) return 2;
  const auto* comparison = std::ranges::find(kComparisons, argv[1], &Comparison::name);
  if (comparison == std::end(kComparisons)) return 2;
  const std::string glyphWindow = argv[2];
  const std::string name = argv[4];
  for (const char* variable : {"XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME"}) {
    setenv(variable, argv[3], 1);
  }
  setenv("QT_QPA_PLATFORM", "xcb", 1);
  prctl(PR_SET_TIMERSLACK, 1);  // otherwise 40 microseconds become 90

  const auto inTerminal = [&](const std::vector<std::string>& program) {
    std::vector<std::string> command(argv + 5, argv + argc);
    command.insert(command.end(), program.begin(), program.end());
    return command;
  };
  std::vector<Program> programs{
      {.name = name + ", the terminal echoes", .command = inTerminal({"cat"}), .glyph = Glyph::MovesOn},
      {.name = name + ", the program echoes",
       .command = inTerminal({"sh", "-c", "stty -icanon -echo && exec cat"}),
       .glyph = Glyph::MovesOn},
      {.name = "minimal Qt program", .command = {glyphWindow}, .glyph = Glyph::Stays},
      {.name = "minimal Qt program, only the glyph's cell", .command = {glyphWindow, "cell"}, .glyph = Glyph::Stays}};
  const Program& terminalEchoes = programs[0];
  const Program& programEchoes = programs[1];
  const Program& minimal = programs[comparison->withCell ? 3 : 2];
  const Program& minimalCell = programs[3];

  XDisplay display;
  for (std::size_t i = 0; i < programs.size(); ++i) {
    Program& program = programs[i];
    program.area = {.x = 0, .y = static_cast<int>(i) * kWindowHeight, .width = kWindowWidth, .height = kWindowHeight};
    program.pid = zolt::bench::startProgram(program.command);
    program.window = display.waitForWindow(program.pid);
    display.place(program.window, program.area);
    findGlyphs(display, program);
  }

  std::mt19937 random(static_cast<unsigned>(zolt::bench::now() * 1e6));
  std::uniform_int_distribution<int> jitter(0, std::chrono::microseconds(kLongestJitter).count());
  std::vector<std::size_t> order{0, 1, 2, 3};
  for (int round = -kWarmingRounds; round < kRounds; ++round) {
    std::ranges::shuffle(order, random);
    for (const std::size_t i : order) {
      typeInto(display, programs[i], std::chrono::microseconds(jitter(random)), round >= 0);
    }
  }
  const double readTime = microsecondsPerRead(display, nextGlyph(terminalEchoes));
  for (const Program& program : programs) {
    zolt::bench::endProgram(program.pid);
  }

  const auto ratio = [](const Program& one, const Program& other) {
    return zolt::bench::median(one.milliseconds) / zolt::bench::median(other.milliseconds);
  };
  tellRatio(name + ", key to picture / minimal Qt program" + (comparison->withCell ? ", only the glyph's cell" : ""),
            ratio(terminalEchoes, minimal), comparison->limit);
  tellRatio("  the same, where the program echoes", ratio(programEchoes, minimal), 0);
  if (!comparison->withCell) {
    tellRatio("  against one that draws only the glyph's cell", ratio(terminalEchoes, minimalCell), 0);
  }
  for (const Program& program : programs) {
    tell(program);
  }
  double milliseconds = 0;
  int reads = 0;
  for (const Program& program : programs) {
    milliseconds += std::reduce(program.milliseconds.begin(), program.milliseconds.end());
    reads += program.reads;
  }
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.0f us, every %.0f us", readTime, milliseconds * 1e3 / reads);
  zolt::bench::printFact("  one read of the pixels, and how often", fact);
}
