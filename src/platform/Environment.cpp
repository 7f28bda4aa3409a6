#include "platform/Environment.h"

#include <unistd.h>

#include <cstring>
#include <string_view>

extern char** environ;

namespace zolt {

Environment processEnvironment() {
  Environment environment;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string_view text(*entry);
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) continue;
    environment.emplace(text.substr(0, equals), text.substr(equals + 1));
  }
  return environment;
}

bool isExecutableFile(const std::string& path) {
  return access(path.c_str(), X_OK) == 0;
}

}  // namespace zolt
