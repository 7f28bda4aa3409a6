#pragma once

#include <QByteArray>
#include <optional>
#include <string>
#include <vector>

#include "platform/Environment.h"

namespace zolt {

/// Runs one `brew` command to completion and returns its output, stdout and stderr merged; nothing if it could not be
/// launched. Blocks; call on a worker thread.
///
/// It is waited for first and read afterwards, deliberately: the pipe is made as large as the system allows, and a
/// command that prints more blocks until it is killed. The command has no terminal and no input, so that a password
/// prompt fails instead of waiting for ever.
///
/// A command that only reads does not outlive this process, whatever ends that. One that changes what is installed is
/// never killed: `endBrewCommands` interrupts it; if this process is killed instead, it runs to completion.
std::optional<QByteArray> outputOfBrewCommand(const std::string& executable, const std::vector<std::string>& arguments,
                                              const Environment& environment);

/// Ends the commands that only read, and interrupts each of the others with its process group, once, as Control-C
/// would: brew then cleans up and releases its locks, for as long as that takes. No further command is launched.
/// Returns at once. Main thread, when the application quits; also runs from exit().
void endBrewCommands();

}  // namespace zolt
