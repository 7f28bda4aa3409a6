#pragma once

#include <map>
#include <string>

namespace zolt {

/// Environment variables by name.
using Environment = std::map<std::string, std::string>;

/// The variables that this process was started with and has set since. Main thread.
Environment processEnvironment();

/// Whether `path` names something that the user may execute: a file, or a directory with execute permission. False when
/// it is missing and for a dangling link.
bool isExecutableFile(const std::string& path);

}  // namespace zolt
