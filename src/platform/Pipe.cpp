#include "platform/Pipe.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace zolt {

Result<Pipe> makePipe() {
  int ends[2] = {-1, -1};
#ifdef __linux__
  if (pipe2(ends, O_CLOEXEC) != 0) return Failure{errorText(errno)};
#else
  if (pipe(ends) != 0) return Failure{errorText(errno)};
  setCloseOnExec(ends[0]);
  setCloseOnExec(ends[1]);
#endif
  return Pipe{.reader = Descriptor(ends[0]), .writer = Descriptor(ends[1])};
}

void setCloseOnExec(int descriptor) {
  fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

void ignoreBrokenPipes() {
  static const auto previous = std::signal(SIGPIPE, SIG_IGN);
  static_cast<void>(previous);
}

std::string errorText(int number) {
  return std::generic_category().message(number);
}

}  // namespace zolt
