// emulationmemory FOLDER TERMINAL...: what the full emulation keeps in memory and in its file: idle, and after a
// million lines of 80 characters in a history without limit. TERMINAL is the command that runs a program in it.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "Measure.h"
#include "Process.h"
#include "Samples.h"

namespace {

constexpr double kMiB = 1 << 20;
constexpr std::size_t kLines = 1'000'000;
constexpr std::size_t kColumns = 80;

struct Use {
  double resident = 0;  // MiB
  double file = 0;      // MiB
};

// Runs a script with the argument `file` in the terminal, and looks at the terminal once it is idle.
Use useAfter(std::vector<std::string> terminal, const std::string& script, const std::string& file,
             const std::string& folder) {
  const std::string done = folder + "/memory.done";
  mkfifo(done.c_str(), 0600);
  for (const std::string& word :
       {std::string("sh"), std::string("-c"), script + "echo >\"$1\"; read line", file, done}) {
    terminal.push_back(word);
  }
  const pid_t pid = zolt::bench::startProgram(terminal);
  std::string line;
  std::getline(std::ifstream(done), line);  // waits for the program to open it
  zolt::bench::waitUntilIdle(pid);
  const Use use{.resident = zolt::bench::residentNow(pid),
                .file = static_cast<double>(zolt::bench::unlinkedFileBytes(pid)) / kMiB};
  zolt::bench::endProgram(pid);
  unlink(done.c_str());
  return use;
}

// The first columns of as many lines of a log, each longer than that.
std::string lines() {
  const std::string text = zolt::bench::plainLog(kLines * kColumns * 3 / 2);
  std::string result;
  result.reserve(kLines * (kColumns + 1));
  for (std::size_t at = 0, line = 0; line < kLines; ++line) {
    result.append(text, at, kColumns) += '\n';
    at = text.find('\n', at) + 1;
  }
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const std::string folder = argv[1];
  const std::vector<std::string> terminal(argv + 2, argv + argc);
  setenv("XDG_CACHE_HOME", argv[1], 1);
  const std::string file = folder + "/memory.log";
  zolt::bench::writeFile(file, lines());
  const Use idle = useAfter(terminal, "", file, folder);
  const Use full = useAfter(terminal, "cat \"$0\"; ", file, folder);
  std::remove(file.c_str());
  zolt::bench::printRow("full emulation, resident when idle", idle.resident, "MiB", 45, true);
  zolt::bench::printRow("full emulation, a line of 80 characters, of a million",
                        (full.resident - idle.resident + full.file - idle.file) * kMiB / kLines, "bytes", 15, true);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.1f and %.1f MiB", full.resident - idle.resident, full.file - idle.file);
  zolt::bench::printFact("  in memory and in the file", fact);
}
