// vt DISCARD FOLDER: how fast the full emulation's parser and screen process a program's output, history included, as
// a multiple of the discarding reader's rate on the same bytes; how the cost of scrolling depends on the size of the
// region; and the memory that the history takes.
#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "Measure.h"
#include "Samples.h"
#include "vt/Terminal.h"

namespace {

constexpr std::size_t kBytes = 100'000'000;
constexpr std::size_t kChunk = 64 * 1024;
constexpr int kRounds = 5;
constexpr int kRows = 25;
constexpr int kColumns = 80;

double secondsToFeed(std::string_view text) {
  zolt::vt::Terminal terminal({.rows = kRows, .columns = kColumns});
  const double seconds = zolt::bench::secondsFor([&] {
    for (std::string_view rest = text; !rest.empty(); rest.remove_prefix(std::min(kChunk, rest.size()))) {
      terminal.feed(rest.substr(0, kChunk));
    }
  });
  if (terminal.screen().cursor().row == 0) std::fprintf(stderr, "the terminal shows nothing\n");
  return seconds;
}

double secondsToDiscard(const std::string& discard, const std::string& file) {
  return zolt::bench::costOfProgram({discard, "cat", file}).wall - zolt::bench::costOfProgram({discard, "true"}).wall;
}

void measureRate(const std::string& what, const std::string& text, double limit, const std::string& discard,
                 const std::string& folder) {
  const std::string file = folder + "/vt.log";
  zolt::bench::writeFile(file, text);
  // A terminal reads from a pseudo-terminal, which ends lines in CR LF.
  const std::string received = zolt::bench::withTerminalLineEnds(text);
  std::vector<double> ratios;
  for (int round = 0; round < kRounds; ++round) {
    ratios.push_back(secondsToDiscard(discard, file) / secondsToFeed(received));
  }
  std::remove(file.c_str());
  zolt::bench::printRow("emulation, " + what + " / discarding reader's rate", zolt::bench::median(ratios), "times",
                        limit, false);
}

// The cost of a line that scrolls a region of `rows` rows, on a screen with one row more above and below it.
double secondsToScroll(int rows) {
  constexpr int kLines = 400'000;
  zolt::vt::Terminal terminal({.rows = rows + 2, .columns = kColumns});
  terminal.feed("\033[2;" + std::to_string(rows + 1) + "r\033[" + std::to_string(rows + 1) + ";1H");
  std::string lines;
  for (int i = 0; i < 1000; ++i) {
    lines += "the same words on every line\r\n";
  }
  for (int i = 0; i < rows; i += 1000) {
    terminal.feed(lines);
  }
  return zolt::bench::cpuSecondsFor([&] {
    for (int i = 0; i < kLines / 1000; ++i) {
      terminal.feed(lines);
    }
  });
}

void measureScrolling() {
  std::vector<double> ratios;
  for (int round = 0; round < kRounds; ++round) {
    ratios.push_back(secondsToScroll(1000) / secondsToScroll(20));
  }
  // Not 1: a thousand rows do not fit the innermost cache.
  zolt::bench::printRow("emulation, a line in a region of 1000 rows / of 20", zolt::bench::median(ratios), "times", 2,
                        true);
}

void measureHistory() {
  zolt::vt::Terminal terminal({.rows = kRows, .columns = kColumns});
  std::string text = zolt::bench::endlessLine(100'000 * kColumns);
  std::string lines;
  for (std::size_t at = 0; at < text.size(); at += kColumns) {
    lines += text.substr(at, kColumns) + "\r\n";
  }
  terminal.feed(lines);
  terminal.screen().scrollback().waitForCompression();
  zolt::bench::printRow("emulation, 100,000 lines of 80 characters of history",
                        static_cast<double>(terminal.screen().scrollback().memoryBytes()) / (1 << 20), "MiB", 6, true);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  measureRate("plain log", zolt::bench::plainLog(kBytes), 5, argv[1], argv[2]);
  measureRate("one endless line", zolt::bench::endlessLine(kBytes), 5, argv[1], argv[2]);
  measureRate("SGR on every word", zolt::bench::colouredLog(kBytes), 3, argv[1], argv[2]);
  measureRate("mixed UTF-8", zolt::bench::mixedUtf8Log(kBytes), 2.5, argv[1], argv[2]);
  measureRate("redraws, colours per place", zolt::bench::redraws(kBytes), 2, argv[1], argv[2]);
  measureScrolling();
  measureHistory();
}
