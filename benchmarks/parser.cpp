// parser DISCARD FOLDER: how fast output becomes styled text, as a multiple of the discarding reader's rate on the same
// bytes. Decoding is part of it: a chunk is checked as UTF-8 and parsed, in chunks of 64 KiB that end at line ends.
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Measure.h"
#include "Samples.h"
#include "emulation/ANSIParser.h"
#include "text/GraphemeClusters.h"

namespace {

constexpr std::size_t kBytes = 100'000'000;
constexpr std::size_t kChunk = 64 * 1024;
constexpr int kRounds = 5;

// A place in `text` where nothing is split: after its last line, or before its last sequence.
std::size_t endOfChunk(std::string_view text) {
  const std::size_t lineEnd = text.rfind('\n');
  return lineEnd != std::string_view::npos ? lineEnd + 1 : text.rfind('\x1B');
}

double secondsToParse(const std::string& text) {
  std::size_t shown = 0;
  const double seconds = zolt::bench::secondsFor([&] {
    zolt::ANSIParser parser;
    for (std::string_view rest = text; !rest.empty();) {
      std::size_t size = std::min(kChunk, rest.size());
      if (size < rest.size()) size = endOfChunk(rest.substr(0, size));
      const std::string_view chunk = rest.substr(0, size);
      if (zolt::isValidUtf8(chunk)) shown += parser.parse(chunk).text().size();
      rest.remove_prefix(size);
    }
  });
  if (shown < text.size() / 64) std::fprintf(stderr, "the parser dropped what it should show\n");
  return seconds;
}

double secondsToDiscard(const std::string& discard, const std::string& file) {
  return zolt::bench::costOfProgram({discard, "cat", file}).wall - zolt::bench::costOfProgram({discard, "true"}).wall;
}

void measure(const std::string& what, const std::string& text, double limit, const std::string& discard,
             const std::string& folder) {
  const std::string file = folder + "/parser.log";
  zolt::bench::writeFile(file, text);
  // What the parser gets has passed a pseudo-terminal, which ends lines in CR LF.
  const std::string received = zolt::bench::withTerminalLineEnds(text);
  std::vector<double> ratios;
  std::vector<double> nanosecondsPerByte;
  for (int round = 0; round < kRounds; ++round) {
    const double seconds = secondsToParse(received);
    ratios.push_back(secondsToDiscard(discard, file) / seconds);
    nanosecondsPerByte.push_back(seconds * 1e9 / static_cast<double>(received.size()));
  }
  std::remove(file.c_str());
  zolt::bench::printRow("parser, " + what + " / discarding reader's rate", zolt::bench::median(ratios), "times", limit,
                        false);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.2f ns", zolt::bench::median(nanosecondsPerByte));
  zolt::bench::printFact("  the parser's time per byte", fact);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  measure("plain ASCII", zolt::bench::plainLog(kBytes), 10, argv[1], argv[2]);
  measure("SGR on every word", zolt::bench::colouredLog(kBytes), 4, argv[1], argv[2]);
  measure("a colour of its own for every word", zolt::bench::manyColoursLog(kBytes), 3, argv[1], argv[2]);
  measure("redraws in direct colours", zolt::bench::directColourRedraws(kBytes), 2, argv[1], argv[2]);
  measure("mixed UTF-8", zolt::bench::mixedUtf8Log(kBytes), 3, argv[1], argv[2]);
}
