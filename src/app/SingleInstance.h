#pragma once

#include <QLocalServer>
#include <QObject>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Descriptor.h"

namespace zolt {

/// What a second start asks of the running instance.
struct OpenRequest {
  std::string workingDirectory;
  std::string activationToken;  ///< the desktop's leave to come to the front; empty without

  std::string encoded() const;
  /// Nothing if `text` is not a valid request.
  static std::optional<OpenRequest> decoded(std::string_view text);
};

/// The one instance of a user and a display: whoever holds a lock file in the runtime folder, and serves a local socket
/// beside it. The lock ends with its process, however that ends.
class SingleInstance {
 public:
  enum class Outcome {
    First,      ///< this process is the instance; `serve` next
    Forwarded,  ///< another one is, and has done what was asked
    Unshared,   ///< there is no place for the lock, or the instance does not answer: go on alone
  };

  /// Names of the files for the display that the environment names, in `runtimeFolder`.
  explicit SingleInstance(const std::string& runtimeFolder);
  /// Removes the socket and the lock file if this process holds the lock.
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  /// XDG_RUNTIME_DIR, or a folder of mode 0700 of the user's own in its stead; empty when there is neither.
  static std::string defaultRuntimeFolder();

  /// Becomes the instance or asks the one there is. Waits for its answer, 5 s at most. Needs no application object.
  Outcome claim(const OpenRequest& request);

  /// Calls `open` on the main thread for each request of another start. After an outcome of First; false, and the lock
  /// is given up, when there can be no socket.
  bool serve(std::function<void(const OpenRequest& request)> open);

  bool isFirst() const { return static_cast<bool>(m_lock); }
  const std::string& socketPath() const { return m_socketPath; }

 private:
  enum class Lock { Taken, Held, Impossible };
  Lock takeLock();
  bool forward(const OpenRequest& request) const;

  std::string m_lockPath;
  std::string m_socketPath;
  Descriptor m_lock;
  std::unique_ptr<QLocalServer> m_server;
};

}  // namespace zolt
