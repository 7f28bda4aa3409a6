#include "platform/ProcessLeash.h"

#include <fcntl.h>

#include <csignal>

#include "platform/Environment.h"

namespace zolt {

namespace {

constexpr const char* kLeader = "trap '' INT TERM HUP; read -r _; kill -INT 0; sleep 1; kill -KILL 0";

}  // namespace

ProcessLeash::~ProcessLeash() {
  letGo();
}

Result<pid_t> ProcessLeash::group() {
  if (m_leader && m_leader->isRunning()) return m_leader->pid();
  auto life = makePipe();
  if (!life) return Failure{life.reason()};
  // Not this process's own streams: their reader waits for end of file.
  const Descriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
  auto leader = std::make_unique<ChildProcess>(ChildProcess::Request{
      .executable = "/bin/sh",
      .arguments = {"-c", kLeader},
      .environment = processEnvironment(),
      .workingDirectory = "/",
      .standardInput = life.value().reader.get(),
      .standardOutput = nowhere.get(),
      .standardError = nowhere.get(),
      .group = ChildProcess::kOwnGroup,
  });
  if (const auto launched = leader->launch(); !launched) return Failure{launched.reason()};
  m_leader = std::move(leader);
  m_life = {.reader = {}, .writer = std::move(life.value().writer)};
  return m_leader->pid();
}

void ProcessLeash::letGo() {
  m_life = {};
  m_leader.reset();
}

void ProcessLeash::kill() {
  if (m_leader) m_leader->sendSignalToGroup(SIGKILL);
  letGo();
}

}  // namespace zolt
