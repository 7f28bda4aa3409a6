// storage: the text storage and its rows at ten million lines of 80 characters.
#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "Measure.h"
#include "history/RowIndex.h"
#include "history/TextStorage.h"

namespace {

constexpr std::uint64_t kLines = 10'000'000;
constexpr std::uint64_t kLinesAtOnce = 1'000;
constexpr int kRowsInView = 40;

std::size_t residentBytes() {
  std::FILE* file = std::fopen("/proc/self/statm", "r");
  long total = 0;
  long resident = 0;
  if (file == nullptr || std::fscanf(file, "%ld %ld", &total, &resident) != 2) return 0;
  std::fclose(file);
  return static_cast<std::size_t>(resident) * 4096;
}

double worst(const std::vector<double>& seconds) {
  return 1000 * *std::ranges::max_element(seconds);
}

void look(const zolt::TextStorage& storage, zolt::RowIndex& index, zolt::RowNumber first) {
  for (int row = 0; row < kRowsInView; ++row) {
    const auto located = index.locate(first + row);
    std::size_t bytes = 0;
    storage.forEachRun(
        located.begin, located.end,
        [&](zolt::TextPosition, std::string_view text, const zolt::TextAttributes&) { bytes += text.size(); });
    if (bytes > 200) std::fprintf(stderr, "a row is too long\n");
  }
}

// Memory that a virtual machine has never touched costs its host a fault a page: touched and given back beforehand.
void touchMemory(std::size_t bytes) {
  std::vector<char> memory(bytes);
  for (std::size_t i = 0; i < bytes; i += 4096) {
    memory[i] = 1;
  }
  if (memory[bytes / 2 / 4096 * 4096] != 1) std::fprintf(stderr, "memory was not touched\n");
}

}  // namespace

int main() {
  touchMemory(1'500'000'000);
  const std::size_t before = residentBytes();
  zolt::TextStorage storage;
  // Lengths vary, so that wrapping has something to count: 80 characters on average.
  std::mt19937 random(7);
  std::uint64_t characters = 0;
  std::vector<double> perMillion;
  for (std::uint64_t line = 0; line < kLines;) {
    double seconds = 0;
    for (std::uint64_t end = line + kLines / 10; line < end; line += kLinesAtOnce) {
      std::string text;
      for (std::uint64_t i = 0; i < kLinesAtOnce; ++i) {
        text.append(40 + random() % 80, 'x');
        text += '\n';
      }
      characters += text.size();
      const zolt::AttributedString string(text, zolt::TextAttributes{});
      seconds += zolt::bench::cpuSecondsFor([&] { storage.append(string); });
    }
    perMillion.push_back(seconds);
  }
  const double memory = static_cast<double>(residentBytes() - before) / static_cast<double>(characters);
  zolt::bench::printRow("storage, 10 million lines of 80: memory a character", memory, "bytes", 1.3, true);
  const std::vector<double> early(perMillion.begin(), perMillion.begin() + 5);
  const std::vector<double> late(perMillion.end() - 5, perMillion.end());
  zolt::bench::printRow("storage: appending, last five million lines / first five",
                        std::ranges::min(late) / std::ranges::min(early), "times", 1.25, true);

  zolt::RowIndex index(storage, 109);
  std::vector<double> jumps;
  for (int i = 0; i < 500; ++i) {
    const auto line = random() % kLines;
    jumps.push_back(zolt::bench::secondsFor([&] { look(storage, index, index.rowAt(storage.lineStart(line))); }));
  }
  zolt::bench::printRow("storage: slowest of 500 jumps to a line, with its 40 rows", worst(jumps), "ms", 16, true);
  std::vector<double> resizes;
  for (int columns = 20; columns < 220; columns += 7) {
    const auto anchor = storage.lineStart(random() % kLines);
    resizes.push_back(zolt::bench::secondsFor([&] {
      index.setColumns(columns);
      look(storage, index, index.rowAt(anchor));
      look(storage, index, index.rowCount() - kRowsInView);
    }));
  }
  zolt::bench::printRow("storage: slowest of 29 resizes, with the rows in view", worst(resizes), "ms", 16, true);
}
