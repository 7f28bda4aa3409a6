#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "base/Result.h"

namespace zolt::inspect {

/// What a command is given: its words, and how to read its input.
struct Request {
  std::vector<std::string> arguments;     ///< without the command's name and the options
  int input = 0;                          ///< a descriptor
  std::optional<std::size_t> chunkBytes;  ///< none: all of the input is one chunk
};

/// One of the program's commands.
struct Command {
  const char* name;
  const char* arguments;
  const char* help;
  bool readsInput;
  /// Prints one JSON value a line; a failure is one line for the user.
  Result<void> (*run)(const Request& request, std::ostream& out);
};

const std::vector<Command>& commands();

}  // namespace zolt::inspect
