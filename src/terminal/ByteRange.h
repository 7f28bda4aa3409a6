#pragma once

#include <cstddef>

namespace zolt {

/// A range of a text in bytes; `end` is not included.
struct ByteRange {
  std::size_t begin = 0;
  std::size_t end = 0;

  constexpr bool empty() const { return begin >= end; }
  friend constexpr bool operator==(const ByteRange&, const ByteRange&) = default;
};

}  // namespace zolt
