#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "history/HistoryBlock.h"
#include "vt/cells/CellTables.h"
#include "vt/cells/Style.h"

namespace zolt::vt {

/// A logical line of the scrollback. Where it was wrapped is not stored.
struct HistoryLine {
  struct Run {
    std::size_t length = 0;  ///< bytes
    Style style{};
    LinkTarget link{};
  };
  std::string text{};  ///< UTF-8, without its line end
  std::vector<Run> runs{};
  std::vector<HistoryMark> marks{};  ///< with offsets into `text`
  bool isEnded = true;               ///< false if the next line continues it
};

/// The line of a block whose text is [begin, end).
HistoryLine historyLine(const HistoryBlock& block, std::size_t begin, std::size_t end);

/// A style as blocks store it.
PackedStyle packedStyle(const Style& style);
/// The style that is stored so.
Style unpackedStyle(const PackedStyle& style);
/// A link target as blocks store it.
std::string packedLink(const LinkTarget& target);

}  // namespace zolt::vt
