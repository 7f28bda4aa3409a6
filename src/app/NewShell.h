#pragma once

#include <string>

#include "session/ShellManager.h"

namespace zolt {

/// The shell that a new window runs.
struct NewShell {
  Shell shell;
  bool isRefused = false;  ///< the user's choice cannot be run: this is the catalogue's default
};

/// The shell for the path that the user has set, which is that of an executable file; empty: the catalogue's default.
NewShell newShell(const std::string& path, const ShellManager& catalogue);

}  // namespace zolt
