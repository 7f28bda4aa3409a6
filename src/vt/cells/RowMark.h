#pragma once

#include <cstdint>

#include "history/HistoryBlock.h"

namespace zolt::vt {

/// A shell integration mark (OSC 133), before the character in `column`.
struct RowMark {
  int column = 0;
  HistoryMarkKind kind = HistoryMarkKind::PromptStart;
  std::int32_t exitStatus = 0;

  friend bool operator==(const RowMark&, const RowMark&) = default;
};

}  // namespace zolt::vt
