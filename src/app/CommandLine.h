#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/Display.h"
#include "base/Result.h"

namespace zolt {

/// What the user asked for on the command line.
struct CommandLine {
  enum class Action { Run, ShowHelp, ShowVersion, SendMessage };

  Action action = Action::Run;
  std::optional<std::string> workingDirectory;
  std::optional<std::string> screenshotFile;
  bool newInstance = false;          ///< even if an instance is running
  bool isService = false;            ///< no window before somebody asks for one
  std::optional<Display> display;    ///< for this run; otherwise as the user's settings say
  std::vector<std::string> message;  ///< the arguments after "msg", if that is the first one
  std::vector<std::string> program;  ///< from -e, with its arguments; empty without -e

  /// Parses the arguments, without the program's own name. A failure's reason is one line, fit to show the user.
  static Result<CommandLine> parse(const std::vector<std::string>& arguments);
  static std::string helpText();
  static std::string versionText();
};

}  // namespace zolt
