#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zolt {

/// How many hints can have a label.
inline constexpr std::size_t kMaxHintLabels = 26 * 26;

/// Labels for `count` hints, at most kMaxHintLabels: one or two lower-case letters each, none of which begins another.
/// In the order of how easily they are typed: short ones first, of the home row first. As many as possible have one
/// letter. Pure, any thread.
std::vector<std::string> hintLabels(std::size_t count);

}  // namespace zolt
