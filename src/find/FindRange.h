#pragma once

#include <cstddef>

namespace zolt {

/// A match by its offsets into a string; `end` is not included. One in a whole text is a TextRange.
struct FindRange {
  std::size_t begin = 0;
  std::size_t end = 0;
};

}  // namespace zolt
