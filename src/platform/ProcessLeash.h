#pragma once

#include <sys/types.h>

#include <memory>

#include "base/Result.h"
#include "platform/ChildProcess.h"
#include "platform/Pipe.h"

namespace zolt {

/// A process group that does not outlive this process, whatever ends it: SIGKILL, a crash and a fatal precondition
/// included.
///
/// The group's leader is a small shell that reads from a pipe which only this process can write to. The kernel closes
/// the pipe when the process ends; the leader then interrupts the group and, a second later, kills it. The leader never
/// leaves the group, so the group ID is not reused. A child that starts its own session (setsid) leaves the group and
/// is not killed. Not thread-safe.
class ProcessLeash {
 public:
  ProcessLeash() = default;
  /// As `letGo`.
  ~ProcessLeash();
  ProcessLeash(const ProcessLeash&) = delete;
  ProcessLeash& operator=(const ProcessLeash&) = delete;

  /// The group to launch children into; launches its leader if there is none.
  Result<pid_t> group();
  /// Ends the group as the end of this process would: interrupts it, then kills it. Returns at once.
  void letGo();
  /// Kills the group without interrupting it first.
  void kill();

 private:
  std::unique_ptr<ChildProcess> m_leader;
  Pipe m_life;
};

}  // namespace zolt
