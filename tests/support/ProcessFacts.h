#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace zolt::test {

/// Whether a process with this number exists, a zombie included.
bool processExists(pid_t pid);
/// Whether a process with this number exists and has not ended; one that nobody has reaped yet has.
bool processRuns(pid_t pid);
/// Children of this process, of any state, by /proc.
std::vector<pid_t> childProcesses();
/// Children of the process `parent`.
std::vector<pid_t> childProcesses(pid_t parent);
/// The name of the program that a process runs, at most 15 characters of it; empty when there is no such process.
std::string programName(pid_t pid);
/// Children of this process that have ended and were not reaped.
std::vector<pid_t> zombies();
/// The number of descriptors that this process has open.
std::size_t openDescriptors();
/// The whole content of a file; empty when it cannot be read.
std::string fileContent(const std::string& path);

}  // namespace zolt::test
