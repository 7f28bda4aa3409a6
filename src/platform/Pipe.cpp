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

std::size_t enlargePipe(const Pipe& pipe, std::size_t wantedBytes) {
#ifdef F_SETPIPE_SZ
  const int now = fcntl(pipe.writer.get(), F_GETPIPE_SZ);
  for (std::size_t bytes = wantedBytes; now > 0 && bytes > static_cast<std::size_t>(now); bytes /= 2) {
    const int held = fcntl(pipe.writer.get(), F_SETPIPE_SZ, static_cast<int>(bytes));
    if (held > 0) return static_cast<std::size_t>(held);
  }
  return now > 0 ? static_cast<std::size_t>(now) : 0;
#else
  static_cast<void>(pipe);
  static_cast<void>(wantedBytes);
  return 0;
#endif
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
