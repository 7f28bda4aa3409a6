#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "history/HistoryText.h"
#include "vt/history/HistoryLine.h"
#include "vt/history/ScrollbackView.h"

namespace zolt::vt {

/// The text of a view of a scrollback, which may be replaced by a later view. Keeps the blocks that were read last. One
/// thread at a time, which need not be that of the scrollback.
class ScrollbackText : public HistoryText {
 public:
  explicit ScrollbackText(ScrollbackView view);

  /// The text is that of `view` from now on, a later one of the same scrollback. Tell whatever reads this text.
  void show(ScrollbackView view);
  const ScrollbackView& view() const { return m_view; }

  std::size_t firstBlock() const override { return m_view.sealed().firstBlock(); }
  std::size_t endBlock() const override { return stableEnd() + m_tail.size(); }
  std::size_t stableEnd() const override { return m_view.sealed().endBlock(); }
  const BlockSummary& summary(std::size_t index) const override;
  const std::vector<std::size_t>& lostBlocks() const override { return m_cache.lost(); }
  TextSnapshot snapshot(std::size_t first, std::size_t end) const override;

  /// The part of a line from `begin` to `end` (not included), with its styles, links and marks, one at `end` included.
  /// `isEnded` says whether the line end follows.
  HistoryLine part(TextPosition begin, TextPosition end) const;

 private:
  std::shared_ptr<const LineBlock> lineBlock(std::size_t index) const override;

  ScrollbackView m_view;
  std::vector<std::shared_ptr<const ScrollbackBlock>> m_tail;
  mutable BlockCache m_cache;
};

}  // namespace zolt::vt
