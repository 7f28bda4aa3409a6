#pragma once

#include <functional>

namespace zolt {

/// Calls `test` once for each vector instruction set that the scans were compiled for and this processor has, the
/// portable one included, while that one is in use; a failure names it.
void withEveryInstructionSet(const std::function<void()>& test);

}  // namespace zolt
