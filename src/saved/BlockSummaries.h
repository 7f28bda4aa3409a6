#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "history/LineBlock.h"

namespace zolt {

/// The summaries of blocks that follow each other, as bytes.
std::string encodedSummaries(const std::vector<BlockSummary>& summaries);
/// Nothing if `bytes` are no such summaries, or the blocks would not follow each other without gaps.
std::optional<std::vector<BlockSummary>> decodedSummaries(std::string_view bytes);

}  // namespace zolt
