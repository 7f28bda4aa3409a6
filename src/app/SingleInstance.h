#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/Display.h"
#include "app/RequestServer.h"
#include "messages/Message.h"
#include "platform/Descriptor.h"

namespace zolt {

/// What a second start asks of the running instance.
struct OpenRequest {
  std::string workingDirectory;
  std::string activationToken;  ///< the desktop's permission to take the focus (XDG Activation); empty if there is none
  std::optional<Display> display{};  ///< otherwise as the running instance chooses

  std::string encoded() const;
  /// Nothing if `text` is not a valid request.
  static std::optional<OpenRequest> decoded(std::string_view text);
};

/// One instance per user and display: the process that holds the lock file in the runtime folder and listens on the
/// socket beside it. The kernel releases the lock when the process ends, however it ends.
class SingleInstance {
 public:
  enum class Outcome {
    First,      ///< this process is the instance; `serve` next
    Forwarded,  ///< another process is, and has carried out the request
    Unshared,   ///< no folder for the lock, or no answer from the instance: run separately
  };

  /// Uses lock and socket files in `runtimeFolder`, named after the display in the environment.
  explicit SingleInstance(const std::string& runtimeFolder);
  /// Removes the socket and the lock file if this process holds the lock.
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  /// XDG_RUNTIME_DIR, or else a folder of mode 0700 that the user owns; empty if there is neither.
  static std::string defaultRuntimeFolder();

  /// Becomes the instance, or sends the request to the running one and waits at most 5 s for its answer. Needs no
  /// application object.
  Outcome claim(const OpenRequest& request);

  /// Carries out a script's message and returns the answer, a line with its newline.
  using AnswerMessage = std::function<std::string(const Message& message)>;

  /// Calls `open` on the main thread for each request of a second start, and `answerMessage` for each message. Call
  /// after `First`. Returns false and releases the lock if the socket cannot be created.
  bool serve(std::function<void(const OpenRequest& request)> open, AnswerMessage answerMessage);

  bool isFirst() const { return static_cast<bool>(m_lock); }
  const std::string& socketPath() const { return m_socketPath; }

 private:
  enum class Lock { Taken, Held, Impossible };
  Lock takeLock();
  bool forward(const OpenRequest& request) const;

  std::string m_lockPath;
  std::string m_socketPath;
  Descriptor m_lock;
  std::unique_ptr<RequestServer> m_server;
};

}  // namespace zolt
