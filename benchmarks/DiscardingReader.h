#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zolt::bench {

/// Runs a program on a pseudo-terminal and throws its output away as fast as the kernel delivers it: the limit for any
/// terminal. Returns the number of bytes read. Exits if the program cannot be run.
std::uint64_t runDiscarding(const std::vector<std::string>& command);

}  // namespace zolt::bench
