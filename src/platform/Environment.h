#pragma once

#include <map>
#include <string>

namespace zolt {

/// Environment variables by name.
using Environment = std::map<std::string, std::string>;

/// The current environment of this process. Main thread.
Environment processEnvironment();

/// Whether the user has execute permission for `path`, a file or a directory. False if it is missing or a dangling
/// link.
bool isExecutableFile(const std::string& path);

}  // namespace zolt
