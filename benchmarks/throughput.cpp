// throughput log|emulation|peer DISCARD FOLDER NAME TERMINAL...: the time a terminal (the command that runs a program
// in it) takes to show a program's output, as a multiple of the time of a reader that throws it away. Both are whole
// processes, run in turn; the time of running `true` is subtracted from each.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Measure.h"
#include "Samples.h"

namespace {

using zolt::bench::Cost;
using zolt::bench::median;
using zolt::bench::printFact;
using zolt::bench::printRow;

struct Text {
  std::string_view what;
  std::string (*make)(std::size_t bytes);
  double limit = 0;  // of the ratio; 0: none
};

struct Set {
  std::string_view name;
  std::size_t megabytes = 0;
  int pairs = 0;
  double processorLimit = 0;  // seconds per 100 MB; 0: none
  std::span<const Text> texts;
};

constexpr Text kLogTexts[] = {
    {"of plain log", zolt::bench::plainLog, 1.1},
    {"with SGR on every word", zolt::bench::colouredLog, 1.25},
    {"with a colour of its own for every word", zolt::bench::manyColoursLog, 1.25},
    {"of redraws in direct colours", zolt::bench::directColourRedraws, 1.25},
    {"of mixed UTF-8", zolt::bench::mixedUtf8Log, 1.25},
};

constexpr Text kEmulationTexts[] = {
    {"of plain log", zolt::bench::plainLog, 1.1},
    {"with SGR on every word", zolt::bench::colouredLog, 1.1},
    {"with one of 256 colours on every word", zolt::bench::paletteLog, 1.1},
    {"with a direct colour on every word", zolt::bench::directColourLog, 1.1},
    {"of mixed UTF-8", zolt::bench::mixedUtf8Log, 1.1},
    {"in one line", zolt::bench::endlessLine, 1.1},
    {"of redraws, colours per place", zolt::bench::redraws, 1.1},
};

constexpr Text kPeerTexts[] = {
    {"of plain log", zolt::bench::plainLog},
    {"with SGR on every word", zolt::bench::colouredLog},
    {"with a direct colour on every word", zolt::bench::directColourLog},
    {"of mixed UTF-8", zolt::bench::mixedUtf8Log},
    {"in one line", zolt::bench::endlessLine},
    {"of redraws, colours per place", zolt::bench::redraws},
};

constexpr Set kSets[] = {
    {.name = "log", .megabytes = 200, .pairs = 7, .texts = kLogTexts},
    {.name = "emulation", .megabytes = 100, .pairs = 7, .processorLimit = 0.8, .texts = kEmulationTexts},
    {.name = "peer", .megabytes = 20, .pairs = 3, .texts = kPeerTexts},
};

struct Terminals {
  std::string name;
  std::vector<std::string> terminal;
  std::vector<std::string> discard;
};

struct Pair {
  Cost terminal;
  Cost discard;
};

Pair runPair(const Terminals& terminals, const std::string& file) {
  return {.terminal = zolt::bench::costBeyondStart(terminals.terminal, {"cat", file}),
          .discard = zolt::bench::costBeyondStart(terminals.discard, {"cat", file})};
}

std::string withUnit(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

// A row if there is a limit, else a fact.
void tell(const std::string& what, double value, const char* unit, double limit) {
  if (limit > 0) {
    printRow(what, value, unit, limit, true);
  } else {
    printFact(what, withUnit("%.3f ", value) + unit);
  }
}

void measure(const Terminals& terminals, const Set& set, const Text& text, const std::string& folder) {
  const std::string file = folder + "/throughput.log";
  const std::string bytes = text.make(set.megabytes * 1'000'000);
  zolt::bench::writeFile(file, bytes);
  const auto size = static_cast<double>(bytes.size());
  std::vector<double> ratios;
  std::vector<double> cpu;
  std::vector<double> rate;
  std::vector<double> nanosecondsPerByte;
  runPair(terminals, file);  // warm-up
  for (int i = 0; i < set.pairs; ++i) {
    const Pair pair = runPair(terminals, file);
    ratios.push_back(pair.terminal.wall / pair.discard.wall);
    cpu.push_back((pair.terminal.cpu - pair.discard.cpu) / (size / 1e8));
    nanosecondsPerByte.push_back(pair.terminal.wall * 1e9 / size);
    rate.push_back(size / 1e6 / pair.discard.wall);
  }
  std::remove(file.c_str());
  tell(terminals.name + ", " + std::to_string(set.megabytes) + " MB " + std::string(text.what) + " / discarding reader",
       median(ratios), "times", text.limit);
  tell("  processor time beyond the reader's, per 100 MB", median(cpu), "s", set.processorLimit);
  printFact("  the discarding reader's rate", withUnit("%.0f MB/s", median(rate)));
  printFact("  the terminal's time per byte", withUnit("%.1f ns", median(nanosecondsPerByte)));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 6) return 2;
  const auto* set = std::ranges::find(kSets, argv[1], &Set::name);
  if (set == std::end(kSets)) return 2;
  const Terminals terminals{
      .name = argv[4], .terminal = std::vector<std::string>(argv + 5, argv + argc), .discard = {argv[2]}};
  for (const Text& text : set->texts) {
    measure(terminals, *set, text, argv[3]);
  }
}
