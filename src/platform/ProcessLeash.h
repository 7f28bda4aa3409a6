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
/// the pipe with the process; the leader then interrupts the group and, a second later, kills it. It never leaves the
/// group, so the group's number cannot come to belong to anybody else. Not thread-safe.
class ProcessLeash {
 public:
  ProcessLeash() = default;
  /// As `letGo`.
  ~ProcessLeash();
  ProcessLeash(const ProcessLeash&) = delete;
  ProcessLeash& operator=(const ProcessLeash&) = delete;

  /// The group to launch children into; its leader is launched when there is none.
  Result<pid_t> group();
  /// Ends the group as the end of this process would. Returns at once.
  void letGo();
  /// Kills the group, without an interrupt before.
  void kill();

 private:
  std::unique_ptr<ChildProcess> m_leader;
  Pipe m_life;
};

}  // namespace zolt
