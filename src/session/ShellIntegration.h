#pragma once

#include <string>
#include <vector>

#include "platform/Environment.h"
#include "session/Shell.h"

namespace zolt {

/// What a shell is started with.
struct ShellStart {
  std::vector<std::string> args;  ///< as in `Shell`: empty stands for "-l"
  Environment environment;

  friend bool operator==(const ShellStart&, const ShellStart&) = default;
};

/// How to start `shell`, which is to inherit `environment`, so that it marks its prompts, commands and their output
/// (OSC 133: A, B, C with the command line as "cmdline_url", D with the status) and reports its working directory (OSC
/// 7). `folder` is what `installShellIntegration` returned. The shell reads the user's files as it always does, and
/// undoes what is changed here before it reads the first of them.
///
/// bash, zsh and fish are told by the name of the executable, also with a version ("bash-5.2"). Everything else is
/// returned unchanged: other shells, these with arguments that do more than ask for a login or an interactive shell, an
/// environment or a folder that rules it out, and an empty folder. So are two that need special mention:
/// - Nushell marks its prompts and reports its folder by itself, unless the user's configuration says otherwise.
/// - macOS's own /bin/bash does not read the file that ENV names in POSIX mode; bash from elsewhere does.
///
/// Bash before 4.4 has no place to mark the start of the output; fish 3 has none behind its prompt, so it sends no B.
ShellStart integratedStart(const Shell& shell, const Environment& environment, const std::string& folder);

/// Writes the shells' scripts to a folder within `parent`, for example `cacheFolder()`, and returns its path; empty if
/// that fails, or `parent` is empty. The folder is named after the scripts' content, so that versions of Zolt do not
/// disturb one another, and readable only by the user. Files that are there with the right content are left alone;
/// others are replaced, each at once. That takes no time worth mentioning: call it for each start of a shell, as who
/// cleans caches may have removed the folder, and a shell whose script is missing does not read the user's files. Any
/// thread.
std::string installShellIntegration(const std::string& parent);

}  // namespace zolt
