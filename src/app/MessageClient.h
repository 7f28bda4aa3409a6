#pragma once

#include <string>
#include <vector>

namespace zolt {

/// `zolt msg` with these arguments: sends a message to the running instance and prints its answer on standard output.
/// Needs no application object. Returns the exit status: 0 if it was carried out, 1 if it was refused, 2 for wrong
/// usage, 3 if no instance runs.
int runMessage(const std::vector<std::string>& arguments);

}  // namespace zolt
