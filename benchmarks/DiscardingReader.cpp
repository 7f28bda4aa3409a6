#include "DiscardingReader.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace zolt::bench {

std::uint64_t runDiscarding(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  int master = -1;
  const pid_t pid = forkpty(&master, nullptr, nullptr, nullptr);
  if (pid < 0) {
    std::perror("forkpty");
    std::exit(1);
  }
  if (pid == 0) {
    execvp(arguments[0], arguments.data());
    _exit(127);
  }
  static char buffer[256 * 1024];
  std::uint64_t total = 0;
  while (true) {
    const ssize_t got = read(master, buffer, sizeof buffer);
    if (got > 0) {
      total += static_cast<std::uint64_t>(got);
    } else if (got == 0 || errno != EINTR) {
      break;  // EIO: the last process on the terminal is gone
    }
  }
  int status = 0;
  waitpid(pid, &status, 0);
  close(master);
  return total;
}

}  // namespace zolt::bench
