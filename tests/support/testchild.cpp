// A child process for tests. Usage: testchild MODE [ARG...]
//
//   echo TEXT...          prints its arguments, one a line
//   environment           prints its environment, a null byte after each variable: values may have several lines
//   descriptors           prints the numbers of its open descriptors, one a line
//   exit STATUS           ends with that status
//   crash                 is killed by SIGSEGV
//   flood BYTES           writes that many bytes, lines of 79 characters; 0 for ever
//   cat                   copies its input to its output, in raw mode when it is a terminal
//   deaf                  ignores SIGHUP, SIGTERM and SIGINT, prints "deaf" and waits
//   wait                  prints "waiting" and waits
//   sleeper               as wait, without reading anything; the terminal's input fills up
//   raw                   prints its arguments as bytes, "\xHH" and the usual escapes decoded, no output processing
//   hex                   raw mode; prints "ready", then each byte that it reads as two digits
//   size                  prints "ROWSxCOLS", again at each change of the terminal's size
//   terminal              prints "session" if it leads one, "terminal" if it has a controlling terminal
//   signals               prints "blocked N" and "ignored N" for each signal that is, then "end"
//   streams               prints "blocking" or "non-blocking" for each of its standard streams
#include <dirent.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

extern char** environ;

namespace {

using Arguments = std::vector<std::string>;

void makeRaw(int descriptor) {
  termios attributes{};
  if (tcgetattr(descriptor, &attributes) != 0) return;
  cfmakeraw(&attributes);
  tcsetattr(descriptor, TCSANOW, &attributes);
}

void writeAll(const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t written = write(STDOUT_FILENO, data, size);
    if (written <= 0) std::exit(3);
    data += written;
    size -= static_cast<std::size_t>(written);
  }
}

void say(const char* text) {
  std::puts(text);
  std::fflush(stdout);
}

[[noreturn]] void waitForever() {
  while (true) {
    pause();
  }
}

int echo(const Arguments& arguments) {
  for (const std::string& argument : arguments) {
    std::puts(argument.c_str());
  }
  return 0;
}

int environment(const Arguments&) {
  for (char** entry = environ; *entry != nullptr; ++entry) {
    std::fputs(*entry, stdout);
    std::putchar('\0');
  }
  return 0;
}

int descriptors(const Arguments&) {
  DIR* folder = opendir("/proc/self/fd");
  if (folder == nullptr) return 1;
  while (const dirent* entry = readdir(folder)) {
    const int number = std::atoi(entry->d_name);
    if (entry->d_name[0] != '.' && number != dirfd(folder)) std::printf("%d\n", number);
  }
  closedir(folder);
  return 0;
}

int exitWith(const Arguments& arguments) {
  return std::atoi(arguments.at(0).c_str());
}

int crash(const Arguments&) {
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
  std::signal(SIGSEGV, SIG_DFL);
  std::raise(SIGSEGV);
  return 0;
}

int flood(const Arguments& arguments) {
  const long long wanted = std::atoll(arguments.at(0).c_str());
  std::string lines;
  while (lines.size() < 64 * 1024) {
    lines += std::string(79, static_cast<char>('a' + lines.size() / 80 % 26)) + "\n";
  }
  for (long long written = 0; wanted == 0 || written < wanted;) {
    const std::size_t size =
        wanted == 0 ? lines.size() : std::min<long long>(static_cast<long long>(lines.size()), wanted - written);
    writeAll(lines.data(), size);
    written += static_cast<long long>(size);
  }
  return 0;
}

int cat(const Arguments&) {
  makeRaw(STDIN_FILENO);
  say("ready");
  char buffer[4096];
  ssize_t got = 0;
  while ((got = read(STDIN_FILENO, buffer, sizeof buffer)) > 0) {
    writeAll(buffer, static_cast<std::size_t>(got));
  }
  return 0;
}

int deaf(const Arguments&) {
  std::signal(SIGHUP, SIG_IGN);
  std::signal(SIGTERM, SIG_IGN);
  std::signal(SIGINT, SIG_IGN);
  say("deaf");
  waitForever();
}

int wait(const Arguments&) {
  say("waiting");
  waitForever();
}

int sleeper(const Arguments&) {
  makeRaw(STDIN_FILENO);
  say("sleeping");
  waitForever();
}

int raw(const Arguments& arguments) {
  makeRaw(STDOUT_FILENO);
  for (const std::string& argument : arguments) {
    std::string bytes;
    for (std::size_t i = 0; i < argument.size(); ++i) {
      if (argument[i] != '\\' || i + 1 == argument.size()) {
        bytes += argument[i];
        continue;
      }
      const char kind = argument[++i];
      if (kind == 'x') {
        bytes += static_cast<char>(std::stoi(argument.substr(i + 1, 2), nullptr, 16));
        i += 2;
      } else {
        bytes += kind == 'n' ? '\n' : kind == 'r' ? '\r' : kind == 't' ? '\t' : kind == 'e' ? '\x1B' : kind;
      }
    }
    writeAll(bytes.data(), bytes.size());
  }
  return 0;
}

void printSize(int) {
  winsize size{};
  ioctl(STDOUT_FILENO, TIOCGWINSZ, &size);
  char text[64];
  const int length = std::snprintf(text, sizeof text, "%dx%d\n", size.ws_row, size.ws_col);
  writeAll(text, static_cast<std::size_t>(length));
}

int size(const Arguments&) {
  std::signal(SIGWINCH, printSize);
  printSize(0);
  waitForever();
}

int terminal(const Arguments&) {
  if (getsid(0) == getpid()) std::puts("session");
  if (open("/dev/tty", O_RDWR) >= 0) std::puts("terminal");
  return 0;
}

int hex(const Arguments&) {
  makeRaw(STDIN_FILENO);
  say("ready");
  unsigned char byte = 0;
  while (read(STDIN_FILENO, &byte, 1) == 1) {
    char text[8];
    const int length = std::snprintf(text, sizeof text, " %02X", byte);
    writeAll(text, static_cast<std::size_t>(length));
  }
  return 0;
}

int signals(const Arguments&) {
  sigset_t blocked;
  sigprocmask(SIG_BLOCK, nullptr, &blocked);
  for (int number = 1; number < NSIG; ++number) {
    struct sigaction action {};
    if (sigismember(&blocked, number) == 1) std::printf("blocked %d\n", number);
    if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) std::printf("ignored %d\n", number);
  }
  std::puts("end");
  return 0;
}

int streams(const Arguments&) {
  for (int stream = 0; stream <= 2; ++stream) {
    std::puts((fcntl(stream, F_GETFL) & O_NONBLOCK) != 0 ? "non-blocking" : "blocking");
  }
  return 0;
}

struct Mode {
  const char* name;
  int (*run)(const Arguments&);
};

constexpr Mode kModes[] = {
    {"echo", echo},
    {"environment", environment},
    {"descriptors", descriptors},
    {"exit", exitWith},
    {"crash", crash},
    {"flood", flood},
    {"cat", cat},
    {"deaf", deaf},
    {"wait", wait},
    {"sleeper", sleeper},
    {"raw", raw},
    {"hex", hex},
    {"size", size},
    {"terminal", terminal},
    {"signals", signals},
    {"streams", streams},
};

}  // namespace

int main(int argc, char** argv) {
  for (const Mode& mode : kModes) {
    if (argc > 1 && std::strcmp(argv[1], mode.name) == 0) return mode.run({argv + 2, argv + argc});
  }
  std::fprintf(stderr, "testchild: unknown mode\n");
  return 2;
}
