#include "app/NewShell.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/Environment.h"

namespace zolt {

NewShell newShell(const std::string& path, const ShellManager& catalogue) {
  if (path.empty()) return {.shell = catalogue.defaultShell()};
  std::error_code ignored;
  // A folder can be "executed" too.
  const bool isProgram = std::filesystem::is_regular_file(path, ignored) && isExecutableFile(path);
  if (!isProgram) return {.shell = catalogue.defaultShell(), .isRefused = true};
  const auto& known = catalogue.availableShells();
  const auto found = std::ranges::find(known, path, &Shell::executable);
  if (found != known.end()) return {.shell = *found};
  return {
      .shell = {
          .name = std::filesystem::path(path).filename().string(), .executable = path, .args = {}, .icon = "terminal"}};
}

}  // namespace zolt
