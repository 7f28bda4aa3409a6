#pragma once

#include <cstddef>
#include <string>

#include "base/Result.h"
#include "platform/Descriptor.h"

namespace zolt {

struct Pipe {
  Descriptor reader;
  Descriptor writer;
};

/// A pipe with close-on-exec set on both ends.
Result<Pipe> makePipe();

/// Sets a pipe's capacity to `wantedBytes`, or to as much as the system allows. Returns the capacity in bytes, or 0 if
/// it is unknown.
std::size_t enlargePipe(const Pipe& pipe, std::size_t wantedBytes);

/// Marks a descriptor as closed in every child that executes a program.
void setCloseOnExec(int descriptor);

/// From now on a write to a pipe or socket whose reader has gone fails with an error; by default SIGPIPE would end
/// this process. Children get the default disposition. Any thread, any number of times.
void ignoreBrokenPipes();

/// The system's text for an error number ("No such file or directory").
std::string errorText(int number);

}  // namespace zolt
