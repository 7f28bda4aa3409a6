#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "base/TerminalSize.h"

namespace zolt::inspect {

/// A command's arguments and options.
struct Request {
  std::vector<std::string> arguments;     ///< without the command's name and its options
  int input = 0;                          ///< a descriptor
  std::optional<std::size_t> chunkBytes;  ///< if absent, all of the input is one chunk
  bool full = false;                      ///< includes styles, links, marks and the scrollback
  bool rectangleChecksums = false;        ///< allows DECRQCRA
  std::vector<std::string> program;       ///< the words after "--"
};

/// Bits for the options that a command accepts.
enum Option : unsigned { kNoOption = 0, kChunk = 1, kFull = 2, kRectangleChecksums = 4, kProgram = 8 };

struct Command {
  const char* name;
  const char* arguments;
  const char* help;
  unsigned options;  ///< of Option
  /// Prints one JSON value per line and returns the exit status. A failure's reason is one line for the user.
  Result<int> (*run)(const Request& request, std::ostream& out);
};

const std::vector<Command>& commands();

/// Calls `take` with each chunk of the input.
Result<void> forEachChunk(const Request& request, const std::function<void(std::string_view)>& take);

/// Parses the two arguments ROWS and COLUMNS of `command`.
Result<TerminalSize> gridSize(const Request& request, const std::string& command);

/// The full emulation's commands.
Result<int> vt(const Request& request, std::ostream& out);
Result<int> host(const Request& request, std::ostream& out);

}  // namespace zolt::inspect
