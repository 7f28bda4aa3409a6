#pragma once

#include <functional>

namespace zolt {

/// Calls `test` once with each of the vector instruction sets that the scans were compiled for and this processor
/// supports, the portable one included. A failure names the set.
void withEveryInstructionSet(const std::function<void()>& test);

}  // namespace zolt
