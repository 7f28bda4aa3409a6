// screen: a million lines through the character grid.
#include <algorithm>
#include <string>
#include <vector>

#include "Measure.h"
#include "emulation/TerminalScreenBuffer.h"

int main() {
  constexpr int kLines = 1'000'000;
  constexpr int kParts = 10;
  zolt::TerminalScreenBuffer buffer;
  buffer.resize(24, 80);
  std::vector<double> seconds;
  for (int part = 0; part < kParts; ++part) {
    seconds.push_back(zolt::bench::cpuSecondsFor([&] {
      for (int line = 0; line < kLines / kParts; ++line) {
        buffer.parseAndRender("a line that scrolls\n");
      }
    }));
  }
  // The first part fills the scrollback; from then on every line also drops one.
  const std::vector<double> early(seconds.begin() + 1, seconds.begin() + 5);
  const std::vector<double> late(seconds.end() - 4, seconds.end());
  zolt::bench::printRow("grid, a million scrolled lines: last / first 400,000",
                        std::ranges::min(late) / std::ranges::min(early), "times", 1.25, true);
}
