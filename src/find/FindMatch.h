#pragma once

#include <cstddef>
#include <cstdint>

namespace zolt {

/// A match in a text, from `begin` to `end` (not included), in bytes from the start of the whole text. Never empty.
struct FindMatch {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;

  bool operator==(const FindMatch&) const = default;
};

/// The same in offsets into a string.
struct FindRange {
  std::size_t begin = 0;
  std::size_t end = 0;
};

}  // namespace zolt
