#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Result.h"
#include "platform/Environment.h"

namespace zolt {

/// One child process: configured, launched once, and waited for in the background.
///
/// The child gets its three standard streams and no other descriptor, an empty signal mask and default dispositions. It
/// is always reaped, even if this object is gone by then; a child that keeps its group is reaped after `release`. All
/// members may be called from any thread.
class ChildProcess {
 public:
  /// None: the child shares the caller's session. Controlling: it leads its own session, and its standard input is that
  /// session's terminal.
  enum class Terminal { None, Controlling };

  /// A process group that the child itself leads.
  static constexpr pid_t kOwnGroup = 0;

  struct Request {
    std::string executable;              ///< a path; PATH is not searched
    std::vector<std::string> arguments;  ///< without the program's own name
    Environment environment;
    std::string workingDirectory{};  ///< this process's if empty
    int standardInput = -1;          ///< descriptors that the caller keeps owning
    int standardOutput = -1;
    int standardError = -1;
    Terminal terminal = Terminal::None;
    /// The process group to join; the caller's if absent. Ignored for a session leader, which leads its own group.
    std::optional<pid_t> group{};
    /// Keeps the ID of the process group that the child leads from being reused until `release`, even after the child
    /// has ended, so that processes that it left behind can still be signalled.
    bool keepsGroup = false;
  };

  enum class Reason { Exit, Signal };

  /// Called on a background thread, once, after the child has ended.
  using TerminationHandler = std::function<void()>;

  explicit ChildProcess(Request request);

  /// Set before `launch`.
  void setTerminationHandler(TerminationHandler handler);
  /// Starts the child; a failure carries the system's text. Call once.
  Result<void> launch();

  /// 0 before a successful launch.
  pid_t pid() const;
  bool isRunning() const;
  /// The exit status, or the number of the signal that killed it; 0 while it runs.
  int terminationStatus() const;
  Reason terminationReason() const;

  /// Sends SIGTERM; does nothing if the child is not running.
  void terminate();
  /// Sends a signal to the child; does nothing if it is not running.
  void sendSignal(int signal);
  /// Sends a signal to the process group that the child leads, or to the child alone if it leads none. Does nothing
  /// once the child has ended, unless it keeps its group.
  void sendSignalToGroup(int signal);
  /// Blocks until the child has ended. Returns at once if it was never launched.
  void waitUntilExit();
  /// As above, for up to `longest`; returns false if the child is still running then.
  bool waitUntilExit(std::chrono::milliseconds longest);
  /// Gives up the kept group; the child is reaped as soon as it has ended.
  void release();
  /// Kills the child, and the process group that it leads, if it is still running after `grace`. Needs the main loop,
  /// or `endRemaining`.
  void killAfter(std::chrono::milliseconds grace);

  /// Waits up to `grace` for the children that `killAfter` was called for and kills those that remain. Call it last
  /// before the program exits.
  static void endRemaining(std::chrono::milliseconds grace);

 private:
  struct State;
  static std::vector<std::weak_ptr<State>>& remaining();

  std::shared_ptr<State> m_state;
};

}  // namespace zolt
