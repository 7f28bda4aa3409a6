#pragma once

#include <string_view>
#include <vector>

#include "find/FindMatch.h"
#include "find/FindPattern.h"

namespace zolt {

/// The matches that FindScanner should find, by trying every place in every line: slow, but simple. The query must be
/// valid.
std::vector<FindMatch> naiveFind(std::string_view text, std::string_view query, FindOptions options);

}  // namespace zolt
