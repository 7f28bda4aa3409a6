// throughput ZOLT DISCARD FOLDER: the time Zolt takes to show a program's output, as a multiple of the time of a reader
// that throws it away. Both are whole processes, run in turn; the time of running `true` is subtracted from each.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "Measure.h"
#include "Samples.h"

namespace {

using zolt::bench::Cost;

constexpr std::size_t kBytes = 200'000'000;
constexpr int kPairs = 7;

struct Pair {
  Cost zolt;
  Cost discard;
};

Pair runPair(const std::string& zolt, const std::string& discard, const std::string& file) {
  return {.zolt = zolt::bench::costBeyondStart({zolt, "-e"}, {"cat", file}),
          .discard = zolt::bench::costBeyondStart({discard}, {"cat", file})};
}

void measure(const std::string& what, const std::string& text, double limit, char** argv) {
  const std::string file = std::string(argv[3]) + "/throughput.log";
  zolt::bench::writeFile(file, text);
  std::vector<double> ratios;
  std::vector<double> cpu;
  std::vector<double> rate;
  std::vector<double> nanosecondsPerByte;
  runPair(argv[1], argv[2], file);  // warm-up
  for (int i = 0; i < kPairs; ++i) {
    const Pair pair = runPair(argv[1], argv[2], file);
    ratios.push_back(pair.zolt.wall / pair.discard.wall);
    cpu.push_back((pair.zolt.cpu - pair.discard.cpu) / (static_cast<double>(text.size()) / 1e8));
    nanosecondsPerByte.push_back(pair.zolt.wall * 1e9 / static_cast<double>(text.size()));
    rate.push_back(static_cast<double>(text.size()) / 1e6 / pair.discard.wall);
  }
  std::remove(file.c_str());
  zolt::bench::printRow("zolt -e cat, 200 MB " + what + " / discarding reader", zolt::bench::median(ratios), "times",
                        limit, true);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.3f s", zolt::bench::median(cpu));
  zolt::bench::printFact("  processor time beyond the reader's, per 100 MB", fact);
  std::snprintf(fact, sizeof fact, "%.0f MB/s", zolt::bench::median(rate));
  zolt::bench::printFact("  the discarding reader's rate", fact);
  std::snprintf(fact, sizeof fact, "%.1f ns", zolt::bench::median(nanosecondsPerByte));
  zolt::bench::printFact("  Zolt's time per byte", fact);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  measure("of plain log", zolt::bench::plainLog(kBytes), 1.1, argv);
  measure("with SGR on every word", zolt::bench::colouredLog(kBytes), 1.25, argv);
  measure("with a colour of its own for every word", zolt::bench::manyColoursLog(kBytes), 1.25, argv);
  measure("of redraws in direct colours", zolt::bench::directColourRedraws(kBytes), 1.25, argv);
  measure("of mixed UTF-8", zolt::bench::mixedUtf8Log(kBytes), 1.25, argv);
}
