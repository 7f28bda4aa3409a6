#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "base/Result.h"

namespace zolt::inspect {

/// What a command is given: its words, the bytes of standard input, and the size of the chunks that these are read in.
struct Request {
  std::vector<std::string> arguments;  ///< without the command's name and the options
  std::string input;
  std::optional<std::size_t> chunkBytes;  ///< none: all of it is one chunk
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
