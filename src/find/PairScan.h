#pragma once

#include <cstddef>
#include <cstdint>

namespace zolt {

/// One byte of a needle, and how text is compared with it: (text | fold) == value.
struct NeedleByte {
  std::size_t offset = 0;  ///< from the needle's start
  std::uint8_t value = 0;
  std::uint8_t fold =
      0;  ///< 0x20 for an ASCII letter in either case (`value` is the small one then), 0 for the byte itself
};

/// Two bytes of a needle, the same one twice for a needle of one byte.
struct NeedlePair {
  NeedleByte first, second;
};

/// The first of the starts `text` + 0 to `text` + `starts` (not included) where both bytes of the pair stand; `starts`
/// when there is none. Reads from `text` on up to the pair's bytes of the last start, nothing after them. At the
/// machine's widest vectors.
std::size_t firstPair(const char* text, std::size_t starts, const NeedlePair& pair);

}  // namespace zolt
