#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"

namespace zolt::inspect {

/// What a command is given: its words, and how to read its input.
struct Request {
  std::vector<std::string> arguments;     ///< without the command's name and the options
  int input = 0;                          ///< a descriptor
  std::optional<std::size_t> chunkBytes;  ///< none: all of the input is one chunk
  bool full = false;                      ///< styles, links, marks and scrollback, too
  bool rectangleChecksums = false;        ///< the program may ask for them
  std::vector<std::string> program;       ///< what stands behind "--"
};

/// The options that a command takes.
enum Option : unsigned { kNoOption = 0, kChunk = 1, kFull = 2, kRectangleChecksums = 4, kProgram = 8 };

/// One of the program's commands.
struct Command {
  const char* name;
  const char* arguments;
  const char* help;
  unsigned options;  ///< of Option
  /// Prints one JSON value a line, and gives the exit status; a failure is one line for the user.
  Result<int> (*run)(const Request& request, std::ostream& out);
};

const std::vector<Command>& commands();

/// Calls `take` with each chunk of the input.
Result<void> forEachChunk(const Request& request, const std::function<void(std::string_view)>& take);

/// Rows and columns from the two words that a command was given; a failure names `command`.
struct GridSize {
  int rows = 0;
  int columns = 0;
};
Result<GridSize> gridSize(const Request& request, const std::string& command);

/// The full emulation's commands.
Result<int> vt(const Request& request, std::ostream& out);
Result<int> host(const Request& request, std::ostream& out);

}  // namespace zolt::inspect
