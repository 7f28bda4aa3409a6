#pragma once

#include <string_view>
#include <vector>

#include "find/FindPattern.h"
#include "text/TextPosition.h"

namespace zolt {

/// The matches that FindScanner should find, by trying every place in every line: slow, but simple. The query must be
/// valid.
std::vector<TextRange> naiveFind(std::string_view text, std::string_view query, FindOptions options);

}  // namespace zolt
