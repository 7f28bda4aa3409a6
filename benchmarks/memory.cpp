// memory ZOLT DISCARD FOLDER: a gigabyte of log through Zolt: the time as a multiple of the discarding reader's, the
// resident memory once all is shown, and the bytes per character of the history, in memory and in its file.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "Measure.h"
#include "Process.h"
#include "Samples.h"
#include "history/TextStorage.h"

namespace {

constexpr std::size_t kBytes = 1'000'000'000;
constexpr std::size_t kChunk = 64 * 1024;
constexpr int kPairs = 3;
constexpr double kMiB = 1 << 20;

[[noreturn]] void fail(const char* reason) {
  std::fprintf(stderr, "memory: %s\n", reason);
  std::exit(1);
}

void measureTime(const std::string& zolt, const std::string& discard, const std::string& file) {
  std::vector<double> ratios;
  std::vector<double> cpu;
  for (int i = 0; i < kPairs; ++i) {
    const zolt::bench::Cost one = zolt::bench::costBeyondStart({zolt, "-e"}, {"cat", file});
    const zolt::bench::Cost other = zolt::bench::costBeyondStart({discard}, {"cat", file});
    ratios.push_back(one.wall / other.wall);
    cpu.push_back((one.cpu - other.cpu) / (static_cast<double>(kBytes) / 1e8));
  }
  zolt::bench::printRow("zolt -e cat, 1 GB of plain log / discarding reader", zolt::bench::median(ratios), "times", 1.1,
                        true);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.3f s", zolt::bench::median(cpu));
  zolt::bench::printFact("  processor time beyond the reader's, per 100 MB", fact);
}

// Runs Zolt with a program that prints the file and then waits for a line before it exits.
void measureResident(const std::string& what, const std::string& zolt, const std::string& prepare,
                     const std::string& file, const std::string& folder) {
  const std::string printed = folder + "/memory.printed";
  const std::string end = folder + "/memory.end";
  mkfifo(printed.c_str(), 0600);
  mkfifo(end.c_str(), 0600);
  std::string script = prepare + "cat \"$0\" && echo >\"$1\" && read line <\"$2\"";
  const pid_t pid = zolt::bench::startProgram({zolt, "-e", "sh", "-c", script, file, printed, end});
  std::string line;
  std::getline(std::ifstream(printed), line);  // waits for the program to open it
  zolt::bench::waitUntilIdle(pid);
  const double resident = zolt::bench::residentNow(pid);
  const double peak = zolt::bench::residentPeak(pid);
  std::ofstream(end) << '\n';
  int status = 0;
  if (waitpid(pid, &status, 0) != pid || status != 0) fail("the program in Zolt failed");
  unlink(printed.c_str());
  unlink(end.c_str());
  zolt::bench::printRow("resident after 1 GB of plain log, " + what, resident, "MiB", 150, true);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%10.1f MiB", peak);
  zolt::bench::printFact("  peak", fact);
}

// Appends `sample` repeatedly, `total` bytes in all, to a history with a window's settings.
void measureHistory(const std::string& what, std::string_view sample, std::size_t total, double limit,
                    const std::string& folder) {
  zolt::TextStorage storage({.folder = folder});
  for (std::size_t at = 0; storage.size() < total; at = (at + kChunk) % sample.size()) {
    storage.append(zolt::AttributedString(sample.substr(at, kChunk), zolt::TextAttributes{}));
  }
  storage.waitUntilIdle();
  const zolt::BlockStore::Usage usage = storage.usage();
  if (usage.droppedBlocks != 0) fail("history was given up: the disk is full");
  const double bytes = static_cast<double>(usage.memoryBytes) + static_cast<double>(usage.fileBytes);
  zolt::bench::printRow("history of 1 GB of " + what + ": bytes a character",
                        bytes / static_cast<double>(storage.size()), "bytes", limit, true);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.1f and %.1f MiB", static_cast<double>(usage.memoryBytes) / kMiB,
                static_cast<double>(usage.fileBytes) / kMiB);
  zolt::bench::printFact("  in memory and in the file", fact);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const std::string folder = argv[3];
  setenv("XDG_CONFIG_HOME", argv[3], 1);
  setenv("XDG_CACHE_HOME", argv[3], 1);
  const std::string file = folder + "/memory.log";
  const std::string text = zolt::bench::plainLog(kBytes);
  zolt::bench::writeFile(file, text);
  measureTime(argv[1], argv[2], file);
  // A pseudo-terminal ends lines in CR LF, which the log display drops; with -onlcr the lines stay.
  measureResident("as one line", argv[1], "", file, folder);
  measureResident("in lines", argv[1], "stty -onlcr && ", file, folder);
  std::remove(file.c_str());
  measureHistory("plain log", text, text.size(), 0.35, folder);
  std::string yes;
  while (yes.size() < kChunk) {
    yes += "y\n";
  }
  measureHistory("`yes`", yes, kBytes, 0.01, folder);
}
