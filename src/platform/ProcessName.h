#pragma once

#include <sys/types.h>

#include <string>

namespace zolt {

/// The name of a running process, as a user knows it: its program's file name, without a path. Empty if the process is
/// gone or does not say. Any thread.
std::string processName(pid_t process);

}  // namespace zolt
