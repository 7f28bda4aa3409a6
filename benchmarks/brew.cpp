// brew TOOL FOLDER: a refresh of the Homebrew manager with 50 + 50 details, as a multiple of the time that the same 103
// processes take when they are spawned by a bare loop with the same concurrency; and how long the main thread is held
// up.
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

using Commands = std::vector<std::vector<std::string>>;

// All at once, their output read when they have ended.
void runAll(const std::string& tool, Commands commands) {
  struct Child {
    pid_t pid;
    int reader;
  };
  std::vector<Child> children;
  for (std::vector<std::string>& command : commands) {
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
    children.push_back({.pid = pid, .reader = ends[0]});
  }
  for (const Child& child : children) {
    waitpid(child.pid, nullptr, 0);
    char buffer[4096];
    while (read(child.reader, buffer, sizeof buffer) > 0) {
    }
    close(child.reader);
  }
}

void bareLoop(const std::string& tool) {
  runAll(tool, {{"list", "--formula"}, {"list", "--cask"}, {"outdated", "--json"}});
  Commands details;
  for (int i = 0; i < kPackages; ++i) {
    details.push_back({"info", "--formula", "formula" + std::to_string(i)});
    details.push_back({"info", "--cask", "cask" + std::to_string(i)});
  }
  runAll(tool, details);
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
  zolt::bench::printRow("brew: longest hold-up of the main thread", heldUp.wallMs, "ms", 5, true);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.1f ms", heldUp.cpuMs);
  zolt::bench::printFact("  of which it worked itself", fact);
}
