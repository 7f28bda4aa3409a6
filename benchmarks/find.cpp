// find FOLDER: searching a log in memory, in blocks as the history keeps them, and in a history that has compressed
// them, against grep -c on the same text as a file. Both count matches; grep counts lines, so the patterns occur at
// most once per line.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "Measure.h"
#include "Samples.h"
#include "find/FindScanner.h"
#include "find/LogSearch.h"
#include "history/TextStorage.h"

namespace {

constexpr std::size_t kBytes = 256 << 20;
constexpr std::size_t kBlock = 64 << 10;
constexpr std::size_t kBytesBetweenRare = 1 << 20;
constexpr int kRounds = 7;

struct Search {
  const char* what;
  const char* query;
  zolt::FindOptions options;
  const char* grepOptions;
  double limit = 0;  // 0: none
};

constexpr Search kSearches[] = {
    {"rare string", "kernel panic", {.matchCase = true}, "-F", 1.3},
    {"string that begins like frequent ones", "status=204", {.matchCase = true}, "-F", 1.3},
    {"string in every line", " INFO ", {.matchCase = true}, "-F", 1.3},
    {"rare string, any case", "kernel panic", {}, "-i -F"},
    {"string in every line, any case", " info ", {}, "-i -F"},
    {"rare expression", "kernel (panic|oops)", {.matchCase = true, .regularExpression = true}, "-E"},
    {"expression in every line", "^2026-[0-9]+-21 12:[0-9]+", {.matchCase = true, .regularExpression = true}, "-E"},
};

std::string logWithRareLines() {
  std::string text = zolt::bench::plainLog(kBytes);
  for (std::size_t at = 0; at < text.size(); at += kBytesBetweenRare) {
    const std::size_t lineEnd = text.find('\n', at);
    constexpr std::string_view kRare[] = {"kernel panic", "status=204"};
    const std::string_view rare = kRare[at / kBytesBetweenRare % 2];
    text.replace(lineEnd - rare.size(), rare.size(), rare);
  }
  return text;
}

// Through a pipe, because with /dev/null as output grep stops at the first match; in the C locale, its fastest.
std::size_t grepCount(const Search& search, const std::string& file) {
  const std::string command =
      std::string("LC_ALL=C grep -c ") + search.grepOptions + " -- '" + search.query + "' '" + file + "'";
  std::FILE* output = popen(command.c_str(), "r");
  std::size_t count = 0;
  if (output == nullptr || std::fscanf(output, "%zu", &count) != 1) {
    std::fprintf(stderr, "grep could not be run\n");
    std::exit(1);
  }
  pclose(output);
  return count;
}

std::size_t scannerCount(const Search& search, std::string_view text) {
  const auto pattern = zolt::FindPattern::compile(search.query, search.options);
  if (!pattern) {
    std::fprintf(stderr, "%s\n", pattern.reason().c_str());
    std::exit(1);
  }
  zolt::FindScanner scanner(pattern.value());
  std::vector<zolt::TextRange> matches;
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); at += kBlock) {
    scanner.feed(text.substr(at, kBlock), matches);
    count += matches.size();
    matches.clear();
  }
  scanner.finish(matches);
  return count + matches.size();
}

// Searches every segment of a history, on this many threads.
std::size_t historyCount(const Search& search, const zolt::TextSnapshot& history, std::size_t threads) {
  const auto pattern = zolt::FindPattern::compile(search.query, search.options);
  const std::size_t segments = (history.endBlock() - 1) / zolt::kSegmentBlocks + 1;
  std::atomic<std::size_t> next = 0;
  std::atomic<std::size_t> count = 0;
  const auto work = [&] {
    zolt::FindInterrupt never;
    for (std::size_t segment = next++; segment < segments; segment = next++) {
      count += zolt::findInSegment(pattern.value(), history, segment, never).size();
    }
  };
  std::vector<std::thread> others;
  for (std::size_t i = 1; i < threads; ++i) {
    others.emplace_back(work);
  }
  work();
  for (std::thread& other : others) {
    other.join();
  }
  return count;
}

// As many as a find bar uses.
std::size_t findBarThreads() {
  return std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
}

void tell(const std::string& what, double ratio, double limit) {
  if (limit > 0) {
    zolt::bench::printRow(what, ratio, "times", limit, true);
  } else {
    char value[32];
    std::snprintf(value, sizeof value, "%10.3f times", ratio);
    zolt::bench::printFact(what, value);
  }
}

void measure(const Search& search, const std::string& text, const zolt::TextStorage& history, const std::string& file) {
  std::vector<double> ratios;
  std::vector<double> historyRatios;
  std::vector<double> findBarRatios;
  const zolt::TextSnapshot snapshot = history.snapshot(0, history.blockCount());
  std::size_t theirs = 0;
  const auto expect = [&](std::size_t ours) {
    if (ours == theirs) return;
    std::fprintf(stderr, "%s: %zu matches, but grep found %zu\n", search.what, ours, theirs);
    std::exit(1);
  };
  for (int round = 0; round < kRounds; ++round) {
    const double grep = zolt::bench::secondsFor([&] { theirs = grepCount(search, file); });
    std::size_t ours = 0;
    ratios.push_back(zolt::bench::secondsFor([&] { ours = scannerCount(search, text); }) / grep);
    expect(ours);
    historyRatios.push_back(zolt::bench::secondsFor([&] { ours = historyCount(search, snapshot, 1); }) / grep);
    expect(ours);
    findBarRatios.push_back(zolt::bench::secondsFor([&] { ours = historyCount(search, snapshot, findBarThreads()); }) /
                            grep);
    expect(ours);
  }
  const std::string against = std::string(" / grep -c ") + search.grepOptions;
  tell(std::string("find, ") + search.what + against, zolt::bench::median(ratios), search.limit);
  tell("  the same in compressed blocks, on one thread", zolt::bench::median(historyRatios), search.limit);
  tell("  the same, on as many threads as a find bar has", zolt::bench::median(findBarRatios), search.limit);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::string file = std::string(argv[1]) + "/find.log";
  const std::string text = logWithRareLines();
  zolt::bench::writeFile(file, text);
  zolt::TextStorage history;
  history.append(zolt::AttributedString(text, zolt::TextAttributes{}));
  history.waitUntilIdle();
  for (const Search& search : kSearches) {
    measure(search, text, history, file);
  }
  std::remove(file.c_str());
}
