#pragma once

#include <string_view>
#include <vector>

#include "find/FindMatch.h"
#include "find/FindPattern.h"

namespace zolt {

/// What is to be found, by trying every place of every line: slow, and too plain to be wrong. The query is one that
/// FindPattern takes.
std::vector<FindMatch> naiveFind(std::string_view text, std::string_view query, FindOptions options);

}  // namespace zolt
