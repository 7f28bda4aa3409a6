// storage: appending ten million lines of 80 characters to a text storage.
#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "Measure.h"
#include "history/TextStorage.h"

namespace {

constexpr std::uint64_t kLines = 10'000'000;
constexpr std::uint64_t kLinesAtOnce = 1'000;

}  // namespace

int main() {
  zolt::TextStorage storage;
  std::mt19937 random(7);
  std::vector<double> perMillion;
  for (std::uint64_t line = 0; line < kLines;) {
    double seconds = 0;
    for (std::uint64_t end = line + kLines / 10; line < end; line += kLinesAtOnce) {
      std::string text;
      for (std::uint64_t i = 0; i < kLinesAtOnce; ++i) {
        text.append(40 + random() % 80, 'x');
        text += '\n';
      }
      const zolt::AttributedString string(text, zolt::TextAttributes{});
      seconds += zolt::bench::cpuSecondsFor([&] { storage.append(string); });
    }
    perMillion.push_back(seconds);
  }
  const std::vector<double> early(perMillion.begin(), perMillion.begin() + 5);
  const std::vector<double> late(perMillion.end() - 5, perMillion.end());
  zolt::bench::printRow("storage: appending, last five million lines / first five",
                        std::ranges::min(late) / std::ranges::min(early), "times", 1.25, true);
}
