#pragma once

#include "base/Result.h"
#include "platform/Descriptor.h"

namespace zolt {

struct Pipe {
  Descriptor reader;
  Descriptor writer;
};

/// A pipe whose ends are closed in every child.
Result<Pipe> makePipe();

/// Marks a descriptor as closed in every child that executes a program.
void setCloseOnExec(int descriptor);

/// From now on a write to a pipe or socket whose reader has gone fails with an error; by default it would end this
/// process (SIGPIPE). Children get the default back. Any thread, any number of times.
void ignoreBrokenPipes();

/// The system's text for an error number ("No such file or directory").
std::string errorText(int number);

}  // namespace zolt
