#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Descriptor.h"

namespace zolt {

/// A client's connection to a local socket. Everything ends at the deadline at the latest. Any thread.
class LocalConnection {
 public:
  using Deadline = std::chrono::steady_clock::time_point;

  enum class Outcome {
    Connected,
    NobodyListens,  ///< there is no such socket, or whoever listened is gone
    Failed,         ///< the path is too long, or the listener took no connection in time
  };

  explicit LocalConnection(Deadline deadline) : m_deadline(deadline) {}

  Outcome connect(const std::string& path);
  /// Sends all of `text`; false if the other side is gone or the deadline passes.
  bool send(std::string_view text);
  /// The next line with its newline; none if the other side closes before it, it is longer than `limitBytes`, or the
  /// deadline passes.
  std::optional<std::string> readLine(std::size_t limitBytes);

 private:
  bool isReady(short events) const;

  Descriptor m_socket;
  Deadline m_deadline;
};

/// The user whose process is at the other side of a connected local socket; none if the system does not say.
std::optional<uid_t> peerUser(int socket);

/// Whether the other side of a connected socket is gone altogether: one that has only said all it has to say is not.
bool hasPeerLeft(int socket);

}  // namespace zolt
