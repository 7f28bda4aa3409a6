#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <utility>

namespace zolt::test {

/// Runs the event loop until `condition` holds; false when it does not within `limit`.
bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit = std::chrono::seconds(20));

/// Runs the event loop for `duration`.
void runLoopFor(std::chrono::milliseconds duration);

/// Everything that `action` writes to standard output (the descriptor itself, so children count too).
std::string capturedOutput(const std::function<void()>& action);

}  // namespace zolt::test
