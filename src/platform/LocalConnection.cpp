#include "platform/LocalConnection.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <thread>

#include "platform/Pipe.h"

namespace zolt {

namespace {

using Clock = std::chrono::steady_clock;

// The listener's queue is full: there is no event for its having room again.
constexpr std::chrono::milliseconds kRetry{5};

}  // namespace

bool LocalConnection::isReady(short events) const {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now());
  pollfd waited{.fd = m_socket.get(), .events = events, .revents = 0};
  return left.count() > 0 && poll(&waited, 1, static_cast<int>(left.count())) == 1;
}

LocalConnection::Outcome LocalConnection::connect(const std::string& path) {
  if (path.empty()) return Outcome::NobodyListens;  // it would name a socket without a file
  sockaddr_un address{};
  if (path.size() >= sizeof address.sun_path) return Outcome::Failed;
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.c_str(), path.size());
  m_socket = Descriptor(socket(AF_UNIX, SOCK_STREAM, 0));
  if (!m_socket) return Outcome::Failed;
  setCloseOnExec(m_socket.get());
  fcntl(m_socket.get(), F_SETFL, O_NONBLOCK);
  while (::connect(m_socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    if (errno == ENOENT || errno == ECONNREFUSED) return Outcome::NobodyListens;
    const bool mayRetry = errno == EAGAIN || errno == EINTR;
    if (!mayRetry || Clock::now() >= m_deadline) return Outcome::Failed;
    std::this_thread::sleep_for(kRetry);
  }
  return Outcome::Connected;
}

bool LocalConnection::send(std::string_view text) {
  while (!text.empty()) {
    if (!isReady(POLLOUT)) return false;
    const ssize_t sent = write(m_socket.get(), text.data(), text.size());
    if (sent < 0) return false;
    text.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

std::optional<std::string> LocalConnection::readLine(std::size_t limitBytes) {
  std::string line;
  std::array<char, 4096> buffer{};
  while (line.size() <= limitBytes && isReady(POLLIN)) {
    const ssize_t got = read(m_socket.get(), buffer.data(), buffer.size());
    if (got <= 0) return std::nullopt;
    const std::string_view piece(buffer.data(), static_cast<std::size_t>(got));
    const std::size_t end = piece.find('\n');
    line.append(piece.substr(0, end == std::string_view::npos ? end : end + 1));
    if (end != std::string_view::npos && line.size() <= limitBytes) return line;
  }
  return std::nullopt;
}

std::optional<uid_t> peerUser(int socket) {
#ifdef __linux__
  ucred peer{};
  socklen_t size = sizeof peer;
  if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) return std::nullopt;
  return peer.uid;
#else
  uid_t user = 0;
  gid_t group = 0;
  if (getpeereid(socket, &user, &group) != 0) return std::nullopt;
  return user;
#endif
}

bool hasPeerLeft(int socket) {
  pollfd asked{.fd = socket, .events = 0, .revents = 0};
  return poll(&asked, 1, 0) == 1 && (asked.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

}  // namespace zolt
