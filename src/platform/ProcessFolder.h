#pragma once

#include <sys/types.h>

#include <string>

namespace zolt {

/// The folder in which a running process works, as an absolute path. Empty if the process is gone or is not ours to
/// ask, and if the folder is no longer there. Any thread.
std::string processFolder(pid_t process);

/// Whether a process of this user could work in the folder. Any thread.
bool canEnter(const std::string& folder);

}  // namespace zolt
