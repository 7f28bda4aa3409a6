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

/// A pipe whose ends are closed in every child.
Result<Pipe> makePipe();

/// Makes a pipe hold `wantedBytes`, or the most below that which the system allows. Returns what it holds, in bytes; 0
/// where that cannot be known.
std::size_t enlargePipe(const Pipe& pipe, std::size_t wantedBytes);

/// Marks a descriptor as closed in every child that executes a program.
void setCloseOnExec(int descriptor);

/// From now on a write to a pipe or socket whose reader has gone fails with an error; by default it would end this
/// process (SIGPIPE). Children get the default back. Any thread, any number of times.
void ignoreBrokenPipes();

/// The system's text for an error number ("No such file or directory").
std::string errorText(int number);

}  // namespace zolt
