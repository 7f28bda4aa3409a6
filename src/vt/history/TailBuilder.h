#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "vt/cells/CellTables.h"
#include "vt/history/HistoryLine.h"
#include "vt/history/ScrollbackView.h"

namespace zolt::vt {

/// Makes lines that are not in the scrollback, such as those on the screen, follow it in a view. One thread at a time.
class TailBuilder {
 public:
  /// The first line added continues the last one of `view` if that has not ended. With `clusters`, a cell of the lines
  /// holds a grapheme cluster.
  TailBuilder(ScrollbackView view, bool clusters);

  /// Appends a line, or a part of one that is not ended. The runs cover its text; marks are in order.
  void add(const HistoryLine& line);
  /// The view with those lines, after which nothing may be added.
  ScrollbackView finish();

 private:
  void startBlock(const BlockStart& start);
  void closeBlock();
  std::uint16_t styleNumber(const Style& style);
  std::uint32_t linkNumber(const LinkTarget& link);

  ScrollbackView m_view;
  std::vector<ScrollbackView::TailBlock> m_tail;
  bool m_clusters;
  BlockStart m_start;
  std::shared_ptr<HistoryBlock> m_block;
  std::unordered_map<Style, std::uint16_t, StyleHash> m_styles;
  std::unordered_map<LinkTarget, std::uint32_t, LinkHash> m_links;
};

}  // namespace zolt::vt
