#pragma once

#include <QByteArray>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "platform/Environment.h"

namespace zolt {

/// Runs one command of Homebrew's tool to its end and returns all of its output, both streams in one; nothing when it
/// could not be launched. Blocks; on a worker thread.
///
/// It is waited for first and read afterwards, deliberately: the pipe holds as much as it can, and a command that
/// prints more waits until it is ended. The command leads a session without a terminal and reads from nowhere, so that
/// a question for a password fails instead of waiting for ever.
std::optional<QByteArray> outputOfBrewCommand(const std::string& executable, const std::vector<std::string>& arguments,
                                              const Environment& environment);

/// Interrupts every command that runs, each with everyone in its process group, as Control-C would: the tool then
/// cleans up and gives up its locks. No further one is launched. Main thread, when the application ends.
void interruptBrewCommands();

/// Interrupts as above, waits up to `grace` for commands and all that they left behind on their pipes, and kills the
/// process groups that remain. Happens by itself, with a short grace, where the process exits without. Main thread.
void endBrewCommands(std::chrono::milliseconds grace);

}  // namespace zolt
