#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <string>
#include <system_error>

#include "Commands.h"
#include "TerminalJson.h"
#include "platform/ChildProcess.h"
#include "platform/PseudoTerminal.h"

namespace zolt::inspect {

namespace {

vt::Milliseconds now() {
  return std::chrono::duration_cast<vt::Milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

// The path of a program, as a shell would find it, or empty.
std::string pathOf(const std::string& program) {
  if (program.find('/') != std::string::npos) return program;
  const char* const path = std::getenv("PATH");
  std::string_view rest = path == nullptr ? "/usr/bin:/bin" : path;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    const std::string candidate = std::string(rest.substr(0, end)) + '/' + program;
    if (access(candidate.c_str(), X_OK) == 0) return candidate;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return {};
}

// What is waiting to be written to the program. For a program that queries and never reads, the rest is dropped.
class Outbox {
 public:
  static constexpr std::size_t maxWaiting = std::size_t{1} << 20;

  void add(std::string_view bytes) {
    if (m_bytes.size() < maxWaiting) m_bytes += bytes;
  }
  bool empty() const { return m_bytes.empty(); }
  std::size_t size() const { return m_bytes.size(); }
  void writeTo(int descriptor) {
    const ssize_t written = write(descriptor, m_bytes.data(), m_bytes.size());
    if (written > 0) m_bytes.erase(0, static_cast<std::size_t>(written));
  }

 private:
  std::string m_bytes;
};

// Feeds a terminal with the program's output, and the program with the terminal's replies and this process's input,
// until the other end is closed.
class Loop {
 public:
  Loop(vt::Terminal& terminal, int master, int input) : m_terminal(terminal), m_master(master), m_input(input) {}

  Result<void> run() {
    while (true) {
      const short masterEvents = static_cast<short>(POLLIN | (m_outbox.empty() ? 0 : POLLOUT));
      // Stop writing to a program that has closed its input.
      const bool takesInput = m_input >= 0 && m_outbox.size() < Outbox::maxWaiting;
      std::array<pollfd, 2> polled{pollfd{.fd = m_master, .events = masterEvents, .revents = 0},
                                   pollfd{.fd = takesInput ? m_input : -1, .events = POLLIN, .revents = 0}};
      if (poll(polled.data(), polled.size(), -1) < 0 && errno != EINTR) {
        return Failure{"cannot wait for the program: " + std::generic_category().message(errno)};
      }
      if ((polled[0].revents & POLLOUT) != 0) m_outbox.writeTo(m_master);
      if ((polled[0].revents & (POLLIN | POLLHUP | POLLERR)) != 0 && !readOutput()) return {};
      if ((polled[1].revents & (POLLIN | POLLHUP | POLLERR)) != 0) readInput();
    }
  }

  const std::string& replies() const { return m_replies; }

 private:
  // False at the end, which Linux reports as an error (EIO).
  bool readOutput() {
    const ssize_t got = read(m_master, m_buffer.data(), m_buffer.size());
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) return true;
    if (got <= 0) return false;
    m_terminal.feed({m_buffer.data(), static_cast<std::size_t>(got)}, now());
    const std::string replies = m_terminal.takeReplies();
    m_outbox.add(replies);
    m_replies += replies;
    return true;
  }

  void readInput() {
    const ssize_t got = read(m_input, m_buffer.data(), m_buffer.size());
    if (got > 0) {
      m_outbox.add({m_buffer.data(), static_cast<std::size_t>(got)});
    } else if (got == 0 || (errno != EINTR && errno != EAGAIN)) {
      m_input = -1;
    }
  }

  vt::Terminal& m_terminal;
  int m_master;
  int m_input;
  Outbox m_outbox;
  std::string m_replies;
  std::array<char, 65536> m_buffer{};
};

}  // namespace

Result<int> host(const Request& request, std::ostream& out) {
  const auto size = gridSize(request, "host");
  if (!size) return Failure{size.reason()};
  if (request.program.empty()) return Failure{"host needs a program behind --"};
  const std::string path = pathOf(request.program.front());
  if (path.empty()) return Failure{"no such program: " + request.program.front()};
  auto pair = openPseudoTerminal();
  if (!pair) return Failure{pair.reason()};
  const int slave = pair.value().slave.get();
  setWindowSize(pair.value().master.get(), size.value());

  Environment environment = processEnvironment();
  environment["TERM"] = "xterm-256color";
  environment["COLORTERM"] = "truecolor";
  ChildProcess child({.executable = path,
                      .arguments = {request.program.begin() + 1, request.program.end()},
                      .environment = environment,
                      .standardInput = slave,
                      .standardOutput = slave,
                      .standardError = slave,
                      .terminal = ChildProcess::Terminal::Controlling});
  if (const auto launched = child.launch(); !launched) return Failure{launched.reason()};
  // Only the program may hold this end, so that the other one is closed when it exits.
  pair.value().slave.reset();

  vt::TerminalSettings settings;
  settings.version = ZOLT_VERSION;
  settings.allowRectangleChecksums = request.rectangleChecksums;
  vt::Terminal terminal(size.value(), settings);
  // Never block on writing: the program may be writing itself, or have exited.
  const int master = pair.value().master.get();
  fcntl(master, F_SETFL, fcntl(master, F_GETFL) | O_NONBLOCK);
  Loop loop(terminal, master, request.input);
  if (const auto done = loop.run(); !done) return Failure{done.reason()};
  child.waitUntilExit();
  printTerminal(terminal, loop.replies(), request.full, out);
  const int status = child.terminationStatus();
  return child.terminationReason() == ChildProcess::Reason::Exit ? status : 128 + status;
}

}  // namespace zolt::inspect
