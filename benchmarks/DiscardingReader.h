#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zolt::bench {

/// Runs a program on a pseudo-terminal and throws away all that it prints, as fast as the kernel gives it: the limit
/// that every terminal is measured against. Gives the number of bytes read. Ends this process when it cannot be run.
std::uint64_t runDiscarding(const std::vector<std::string>& command);

}  // namespace zolt::bench
