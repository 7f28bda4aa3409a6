#pragma once

#include <QByteArray>
#include <optional>
#include <string>
#include <vector>

#include "platform/Environment.h"

namespace zolt {

/// Runs one command of Homebrew's tool to its end and returns all of its output, both streams in one; nothing when it
/// could not be launched. Blocks; on a worker thread.
///
/// It is waited for first and read afterwards, deliberately: the pipe is made as large as it may be, and a command that
/// prints more waits until it is ended. The command has no terminal and reads from nowhere, so that a question for a
/// password fails instead of waiting for ever.
///
/// A command that only reads never outlives this process, whatever ends that. One that changes what is installed is
/// never killed: `endBrewCommands` interrupts it, and it finishes by itself where this process is killed.
std::optional<QByteArray> outputOfBrewCommand(const std::string& executable, const std::vector<std::string>& arguments,
                                              const Environment& environment);

/// Ends the commands that only read, and interrupts each of the others with its process group, once, as Control-C
/// would: the tool then cleans up after itself and gives up its locks, for as long as that takes. No further command is
/// launched. Returns at once. Main thread, when the application ends; happens by itself where it just exits.
void endBrewCommands();

}  // namespace zolt
