#include "base/Diagnostics.h"

#include <limits.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>
#include <string>

namespace zolt {

namespace {

// POSIX promises that a pipe takes this much in one piece or not at all.
constexpr std::size_t kPieceBytes = PIPE_BUF;

bool hasRoom(int stream) {
  pollfd waited{.fd = stream, .events = POLLOUT, .revents = 0};
  return poll(&waited, 1, 0) == 1 && (waited.revents & POLLOUT) != 0;
}

// The streams are inherited: O_NONBLOCK would change them for everyone else who has them. So the stream is asked first;
// one with room takes a piece without blocking. (Another process could fill the same pipe between the two calls. A
// thread with a queue would be safe from that too, but would lose its lines in a crash and need to be waited for at the
// end.)
void writeWithoutWaiting(int stream, std::string_view text) {
  static std::mutex oneAtATime;  // two threads must not both count on the same room
  const std::lock_guard lock(oneAtATime);
  while (!text.empty() && hasRoom(stream)) {
    const ssize_t written = write(stream, text.data(), text.size() < kPieceBytes ? text.size() : kPieceBytes);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

void print(int stream, std::string_view line) {
  std::string whole(line);
  whole += '\n';
  writeWithoutWaiting(stream, whole);
}

}  // namespace

void printLine(std::string_view line) {
  print(STDOUT_FILENO, line);
}

void printErrorLine(std::string_view line) {
  print(STDERR_FILENO, line);
}

}  // namespace zolt
