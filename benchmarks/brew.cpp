// brew TOOL FOLDER: a refresh of the Homebrew manager with 50 + 50 details, as a multiple of the time that the same 103
// processes take when they are spawned by a bare loop with the same concurrency; and how long the main thread, and so a
// key, waits meanwhile: for details that cost nothing, and for details that keep a processor busy as the real ones do.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <vector>

#include "Measure.h"
#include "brew/BrewManager.h"

extern char** environ;

namespace {

constexpr int kPackages = 50;
constexpr int kPairs = 11;
constexpr int kBusyRefreshes = 5;

using Commands = std::vector<std::vector<std::string>>;

struct Child {
  pid_t pid;
  int reader;
};

Child start(const std::string& tool, std::vector<std::string>& command) {
  std::vector<char*> arguments{const_cast<char*>(tool.c_str())};
  for (std::string& word : command) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) std::exit(1);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
  pid_t pid = 0;
  if (posix_spawn(&pid, tool.c_str(), &actions, nullptr, arguments.data(), environ) != 0) std::exit(1);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  return {.pid = pid, .reader = ends[0]};
}

void finish(const Child& child) {
  char buffer[4096];
  while (read(child.reader, buffer, sizeof buffer) > 0) {
  }
  close(child.reader);
}

// At most `atOnce` beside each other, the output of each read when it has ended.
void runAll(const std::string& tool, Commands commands, std::size_t atOnce) {
  std::vector<Child> running;
  for (std::vector<std::string>& command : commands) {
    while (running.size() == atOnce) {
      const pid_t ended = waitpid(-1, nullptr, 0);
      const auto child = std::ranges::find(running, ended, &Child::pid);
      if (child == running.end()) continue;
      finish(*child);
      running.erase(child);
    }
    running.push_back(start(tool, command));
  }
  for (const Child& child : running) {
    waitpid(child.pid, nullptr, 0);
    finish(child);
  }
}

void bareLoop(const std::string& tool) {
  runAll(tool, {{"list", "--formula"}, {"list", "--cask"}, {"outdated", "--json"}}, 3);
  Commands details;
  for (int i = 0; i < kPackages; ++i) {
    details.push_back({"info", "--formula", "formula" + std::to_string(i)});
    details.push_back({"info", "--cask", "cask" + std::to_string(i)});
  }
  runAll(tool, details, static_cast<std::size_t>(zolt::BrewManager::detailsAtOnce()));
}

void writeNames(const std::string& file, const std::string& prefix) {
  std::ofstream out(file);
  for (int i = 0; i < kPackages; ++i) {
    out << prefix << i << '\n';
  }
}

// The longest time between two turns of the main loop, by the clock and by what the thread itself worked.
struct HeldUp {
  double wallMs = 0;
  double cpuMs = 0;
};

double threadCpuMs() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

void refresh(zolt::BrewManager& manager, HeldUp& heldUp) {
  QElapsedTimer sinceBeat;
  double cpuAtBeat = 0;
  QTimer beat;
  beat.setTimerType(Qt::PreciseTimer);
  QObject::connect(&beat, &QTimer::timeout, [&] {
    if (sinceBeat.isValid()) {
      heldUp.wallMs = std::max(heldUp.wallMs, static_cast<double>(sinceBeat.nsecsElapsed()) * 1e-6);
      heldUp.cpuMs = std::max(heldUp.cpuMs, threadCpuMs() - cpuAtBeat);
    }
    sinceBeat.start();
    cpuAtBeat = threadCpuMs();
  });
  beat.start(1);
  // Over when both lists were published and the check is complete: three statuses of an end.
  int ends = 0;
  QString last;
  QEventLoop loop;
  QObject watcher;
  QObject::connect(&manager, &zolt::BrewManager::objectWillChange, &watcher, [&] {
    QMetaObject::invokeMethod(&watcher, [&] {
      if (manager.status() == last) return;
      last = manager.status();
      if (last.startsWith(QStringLiteral("Loaded")) || last.startsWith(QStringLiteral("Outdated"))) ++ends;
      if (ends == 3) loop.quit();
    });
  });
  manager.refresh();
  loop.exec();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  QCoreApplication application(argc, argv);
  const std::string tool = argv[1];
  const std::string folder = argv[2];
  writeNames(folder + "/list-formula.txt", "formula");
  writeNames(folder + "/list-cask.txt", "cask");
  setenv("FAKEBREW_DATA", folder.c_str(), 1);
  zolt::WorkerQueue queue(128);
  zolt::BrewManager manager({tool}, queue);
  HeldUp ignored;
  refresh(manager, ignored);  // with the one of its making: warms the caches
  std::vector<double> ratios;
  HeldUp heldUp;
  for (int i = 0; i < kPairs; ++i) {
    const double bare = zolt::bench::secondsFor([&] { bareLoop(tool); });
    const double ours = zolt::bench::secondsFor([&] { refresh(manager, heldUp); });
    ratios.push_back(ours / bare);
  }
  zolt::bench::printRow("brew: refresh, 103 processes / bare spawn loop", zolt::bench::median(ratios), "times", 1.3,
                        true);
  zolt::bench::printRow("brew: longest stall of the main thread", heldUp.wallMs, "ms", 5, true);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.1f ms", heldUp.cpuMs);
  zolt::bench::printFact("  of which it worked itself", fact);
  setenv("FAKEBREW_MODE_info", "works", 1);
  std::vector<double> waits;
  for (int i = 0; i < kBusyRefreshes; ++i) {
    HeldUp busy;
    refresh(manager, busy);
    waits.push_back(busy.wallMs);
  }
  zolt::bench::printRow("brew: a key's longest wait while busy details load", zolt::bench::median(waits), "ms", 10,
                        true);
}
