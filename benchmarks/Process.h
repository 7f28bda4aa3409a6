#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zolt::bench {

/// Another program while it runs. On any failure these print a line that says why, and exit.

/// Starts a program and does not wait for it.
pid_t startProgram(std::vector<std::string> command);
/// Sends SIGTERM, and waits until the program is gone.
void endProgram(pid_t pid);
/// Waits until the program has used no processor time for a second: all output is then shown and stored.
void waitUntilIdle(pid_t pid);
/// The resident memory now, and the highest so far, in MiB.
double residentNow(pid_t pid);
double residentPeak(pid_t pid);
/// The size in bytes of the files that the program has open and that no folder lists any more: a history's.
std::uint64_t unlinkedFileBytes(pid_t pid);

/// The seconds from the start of a program to the time that it or its child writes to the pipe ZOLT_BENCH_PIPE. The
/// program is ended then.
double secondsUntilTold(const std::vector<std::string>& command, const std::string& pipe);

}  // namespace zolt::bench
