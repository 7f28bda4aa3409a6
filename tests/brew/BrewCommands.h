#pragma once

#include <vector>

#include "support/ProcessFacts.h"

namespace zolt::test {

/// The children of this process that run brew, without the shells that guard them.
inline std::vector<pid_t> brewCommands() {
  std::vector<pid_t> commands = childProcesses();
  std::erase_if(commands, [](pid_t pid) { return programName(pid) == "sh"; });
  return commands;
}

}  // namespace zolt::test
