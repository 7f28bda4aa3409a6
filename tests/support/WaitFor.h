#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <utility>

namespace zolt::test {

/// How long tests wait for something to happen, generous enough for a busy machine and a sanitizer. Only a failing test
/// waits this long.
inline constexpr std::chrono::milliseconds kPatience = std::chrono::seconds(100);

/// Runs the event loop until `condition` holds; false if it does not within `limit`.
bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit = kPatience);

/// Runs the event loop for `duration`.
void runLoopFor(std::chrono::milliseconds duration);

/// Everything that `action` writes to standard output, at the level of the descriptor, so children's output is
/// included.
std::string capturedOutput(const std::function<void()>& action);

}  // namespace zolt::test
