#include "session/ShellIntegration.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace zolt {

namespace {

using Texts = std::span<const std::string_view>;

#ifdef __APPLE__
constexpr bool kSystemBashIgnoresEnv = true;
#else
constexpr bool kSystemBashIgnoresEnv = false;
#endif

// A variable whose value the script finds under another name, and puts back.
void lend(Environment& environment, const std::string& name, const std::string& value) {
  environment.erase("ZOLT_" + name);
  if (const auto own = environment.find(name); own != environment.end()) environment["ZOLT_" + name] = own->second;
  environment[name] = value;
}

// Only in POSIX mode does bash, login shell or not, read a file of our choice instead of the user's. Long options stand
// before short ones.
void startBash(ShellStart& start, const std::string& folder) {
  if (start.args.empty()) start.args = {"-l"};
  start.args.insert(start.args.begin(), "--posix");
  lend(start.environment, "ENV", folder + "/zolt.bash");
}

void startZsh(ShellStart& start, const std::string& folder) {
  lend(start.environment, "ZDOTDIR", folder);
}

void startFish(ShellStart& start, const std::string& folder) {
  const auto own = start.environment.find("XDG_DATA_DIRS");
  // Without the variable fish looks in its own folder only, and does so in any case.
  const std::string others = own == start.environment.end() ? "" : ":" + own->second;
  lend(start.environment, "XDG_DATA_DIRS", folder + others);
}

struct Method {
  std::string_view shell;
  Texts args;                      // those with which the shell still is an ordinary one
  Texts variables;                 // those with which it is not
  std::string_view specialInPath;  // characters that the shell would not take literally in the folder's name
  void (*apply)(ShellStart& start, const std::string& folder);
};

constexpr std::string_view kBashArgs[] = {"-l", "--login", "-i", "-il", "-li"};
constexpr std::string_view kZshArgs[] = {"-l", "--login", "-i", "-il", "-li"};
constexpr std::string_view kFishArgs[] = {"-l", "--login", "-i", "--interactive", "-il", "-li"};
constexpr std::string_view kBashVariables[] = {"POSIXLY_CORRECT", "SHELLOPTS"};

// clang-format off
constexpr Method kMethods[] = {
    {"bash", kBashArgs, kBashVariables, "$`\\\"", startBash},
    {"zsh",  kZshArgs,  {},             "",       startZsh},
    {"fish", kFishArgs, {},             ":",      startFish},
};
// clang-format on

bool contains(Texts texts, std::string_view text) {
  return std::ranges::find(texts, text) != texts.end();
}

// "zsh", "zsh-5.9" and "zsh5" are all zsh; "zshenv" is not.
bool isNamed(std::string_view fileName, std::string_view shell) {
  return fileName.starts_with(shell) &&
         fileName.find_first_not_of("-.0123456789", shell.size()) == std::string_view::npos;
}

const Method* methodFor(const std::string& executable) {
  const std::string_view fileName = std::string_view(executable).substr(executable.rfind('/') + 1);
  const auto* const method =
      std::ranges::find_if(kMethods, [&](const Method& each) { return isNamed(fileName, each.shell); });
  return method == std::end(kMethods) ? nullptr : method;
}

bool allows(const Method& method, const ShellStart& start, const std::string& folder) {
  return std::ranges::all_of(start.args, [&](const std::string& arg) { return contains(method.args, arg); }) &&
         std::ranges::none_of(start.environment,
                              [&](const auto& each) { return contains(method.variables, each.first); }) &&
         folder.find_first_of(method.specialInPath) == std::string::npos;
}

}  // namespace

ShellStart integratedStart(const Shell& shell, const Environment& environment, const std::string& folder) {
  ShellStart start{.args = shell.args, .environment = environment};
  const Method* const method = methodFor(shell.executable);
  if (folder.empty() || method == nullptr || !allows(*method, start, folder)) return start;
  if (kSystemBashIgnoresEnv && shell.executable == "/bin/bash") return start;
  method->apply(start, folder);
  return start;
}

}  // namespace zolt
