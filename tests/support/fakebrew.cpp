// A fake brew for tests and pictures: prints the files of a folder. Configured by the environment:
//
//   FAKEBREW_DATA          the folder: COMMAND-FLAG.txt ("list-formula.txt", "outdated-json.txt", "search.txt"), and
//                          info/NAME.txt; a package without a file has a made-up description and version
//   FAKEBREW_LOG           a file to which each call appends its arguments: one line, each argument in brackets
//   FAKEBREW_MODE          normal, or: slow (half a second first), floods (8 MiB), bytes (invalid UTF-8), fails (a
//                          message on the error stream, status 1), warns (a warning on the error stream between the
//                          lines), silent (nothing), hangs (waits, with a child process), deaf (as hangs, but ignores
//                          the signals that ask it to end), finishes (waits for the folder's file "go", logs "goes on",
//                          floods, and logs "finished"), works (keeps a processor busy for 20 ms first), unwinds (waits
//                          for an interrupt, finishes then, and logs each interrupt)
//   FAKEBREW_MODE_COMMAND  a mode for one command ("FAKEBREW_MODE_search")
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Arguments = std::vector<std::string>;

std::string variable(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value == nullptr ? "" : value;
}

void print(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

std::ifstream dataFile(const std::string& name) {
  return std::ifstream(variable("FAKEBREW_DATA") + "/" + name, std::ios::binary);
}

// False if there is no such file.
bool printFile(const std::string& name) {
  std::ifstream file = dataFile(name);
  if (!file) return false;
  print({std::istreambuf_iterator<char>(file), {}});
  return true;
}

void note(const Arguments& arguments) {
  const std::string path = variable("FAKEBREW_LOG");
  if (path.empty()) return;
  std::string line;
  for (const std::string& argument : arguments) {
    line.append("[").append(argument).append("]");
  }
  line += "\n";
  // In one write, since many of these run at once.
  const int log = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  if (log < 0 || write(log, line.data(), line.size()) != static_cast<ssize_t>(line.size())) std::exit(3);
  close(log);
}

std::string withoutDashes(const std::string& flag) {
  const std::size_t begin = flag.find_first_not_of('-');
  return begin == std::string::npos ? "" : flag.substr(begin);
}

std::string fileOf(const Arguments& arguments) {
  const std::string& command = arguments.front();
  if (command == "info") return "info/" + arguments.back() + ".txt";
  std::string flag;
  if (command != "search" && arguments.size() > 1) flag.append("-").append(withoutDashes(arguments[1]));
  return command + flag + ".txt";
}

void answer(const Arguments& arguments) {
  if (printFile(fileOf(arguments)) || arguments.front() != "info") return;
  const std::string& name = arguments.back();
  print("==> " + name + ": stable 1.2.3 (bottled)\nDesc: What " + name + " is for\nhttps://example.org/" + name +
        "\nInstalled\nInstalled (on request) 1.2.3\n");
}

void slow(const Arguments& arguments) {
  usleep(500'000);
  answer(arguments);
}

void works(const Arguments& arguments) {
  while (std::clock() < CLOCKS_PER_SEC / 50) {
  }
  answer(arguments);
}

void floods(const Arguments&) {
  for (int i = 0; i < 8192; ++i) {
    print(std::string(1023, 'x') + "\n");
  }
}

void bytes(const Arguments&) {
  print("caf\xE9\nfoo\n");
}

void fails(const Arguments&) {
  std::fputs("Error: No available formula with that name.\n", stderr);
  std::exit(1);
}

void warns(const Arguments& arguments) {
  std::ifstream file = dataFile(fileOf(arguments));
  bool isFirst = true;
  for (std::string line; std::getline(file, line); isFirst = false) {
    if (!isFirst) std::fputs("Warning: Some taps are old.\n", stderr);
    print(line + "\n");
  }
}

void silent(const Arguments&) {}

void hangs(const Arguments&) {
  if (fork() == 0) execlp("sleep", "sleep", "3600", nullptr);
  while (true) {
    pause();
  }
}

void finishes(const Arguments& arguments) {
  while (!dataFile("go")) {
    usleep(10'000);
  }
  note({"goes on"});
  floods(arguments);
  note({"finished"});
}

void unwinds(const Arguments& arguments) {
  std::signal(SIGINT, [](int) { note({"interrupted"}); });
  // Blocked until it is waited for: it may come between the two.
  sigset_t interrupt;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  sigset_t before;
  sigprocmask(SIG_BLOCK, &interrupt, &before);
  note({"ready"});
  sigsuspend(&before);
  sigprocmask(SIG_SETMASK, &before, nullptr);
  finishes(arguments);
}

void deaf(const Arguments& arguments) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    std::signal(signal, SIG_IGN);
  }
  hangs(arguments);
}

struct Mode {
  const char* name;
  void (*run)(const Arguments& arguments);
};

constexpr Mode kModes[] = {{"", answer},        {"normal", answer}, {"slow", slow},   {"works", works},
                           {"floods", floods},  {"bytes", bytes},   {"fails", fails}, {"warns", warns},
                           {"silent", silent},  {"hangs", hangs},   {"deaf", deaf},   {"finishes", finishes},
                           {"unwinds", unwinds}};

}  // namespace

int main(int argc, char** argv) {
  const Arguments arguments(argv + 1, argv + argc);
  if (arguments.empty()) return 2;
  note(arguments);
  std::string wanted = variable("FAKEBREW_MODE_" + arguments.front());
  if (wanted.empty()) wanted = variable("FAKEBREW_MODE");
  for (const Mode& mode : kModes) {
    if (wanted != mode.name) continue;
    mode.run(arguments);
    return 0;
  }
  std::fprintf(stderr, "fakebrew: unknown mode\n");
  return 2;
}
