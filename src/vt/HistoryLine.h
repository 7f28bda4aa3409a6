#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "history/HistoryBlock.h"
#include "vt/CellTables.h"
#include "vt/Style.h"

namespace zolt::vt {

/// A line of the history, as wide as it is: how it was wrapped is not kept.
struct HistoryLine {
  struct Run {
    std::size_t length = 0;  ///< bytes
    Style style{};
    LinkTarget link{};
  };
  std::string text{};  ///< UTF-8 without a line end
  std::vector<Run> runs{};
  std::vector<HistoryMark> marks{};  ///< offsets into the text
  bool isEnded = true;               ///< else the next one goes on with it
};

/// The line of a block whose text lies from `begin` to `end` (not included).
HistoryLine historyLine(const HistoryBlock& block, std::size_t begin, std::size_t end);

/// A style as a block has it.
PackedStyle packedStyle(const Style& style);
/// A link's target in one text, as a block has it.
std::string packedLink(const LinkTarget& target);

}  // namespace zolt::vt
