#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "history/BlockSequence.h"
#include "history/HistoryBlock.h"
#include "vt/history/ScrollbackBlock.h"

namespace zolt::vt {

/// The scrollback at one moment, and perhaps lines that follow it (TailBuilder). Nothing changes it: what is trimmed
/// later stays readable, but blocks may be lost. May outlive the scrollback. Making and copying one costs little. Any
/// thread; to read its text, show it in a ScrollbackText.
class ScrollbackView {
 public:
  /// A block that was not sealed yet.
  struct TailBlock {
    std::shared_ptr<const HistoryBlock> content;
    BlockStart start;
  };

  /// `tail`, of at least one block, follows `sealed`. The other numbers are those below.
  ScrollbackView(SealedBlocks sealed, std::vector<TailBlock> tail, TextPosition begin, TextPosition end,
                 std::uint64_t firstLine, std::uint64_t endLine)
      : m_sealed(std::move(sealed)),
        m_tail(std::move(tail)),
        m_begin(begin),
        m_end(end),
        m_firstLine(firstLine),
        m_endLine(endLine) {}

  TextPosition begin() const { return m_begin; }
  TextPosition end() const { return m_end; }
  /// The numbers of the first line, of which a part may be trimmed, and of the one after the last.
  std::uint64_t firstLine() const { return m_firstLine; }
  std::uint64_t endLine() const { return m_endLine; }

  /// Calls `take` with every block from the oldest on, as it is stored for another session (Scrollback::adopt).
  void forEachStored(const std::function<void(StoredBlock block)>& take) const;

  const SealedBlocks& sealed() const { return m_sealed; }
  const std::vector<TailBlock>& tail() const { return m_tail; }

 private:
  SealedBlocks m_sealed;
  std::vector<TailBlock> m_tail;
  TextPosition m_begin;
  TextPosition m_end;
  std::uint64_t m_firstLine;
  std::uint64_t m_endLine;
};

}  // namespace zolt::vt
