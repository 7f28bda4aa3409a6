#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace zolt::test {

/// Whether a process with this PID exists, even as a zombie.
bool processExists(pid_t pid);
/// Whether a process with this PID is running; a zombie is not.
bool processRuns(pid_t pid);
/// Children of this process in any state, read from /proc.
std::vector<pid_t> childProcesses();
/// Children of the process `parent`.
std::vector<pid_t> childProcesses(pid_t parent);
/// The name of a process's program, truncated to 15 characters; empty if there is no such process.
std::string programName(pid_t pid);
/// Children of this process that have ended and have not been reaped.
std::vector<pid_t> zombies();
/// The number of descriptors that this process has open.
std::size_t openDescriptors();
/// The content of a file; empty if it cannot be read.
std::string fileContent(const std::string& path);

}  // namespace zolt::test
