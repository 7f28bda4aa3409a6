#pragma once

#include <cstddef>
#include <cstdint>

namespace zolt {

/// One byte of a needle. Text matches it if (text | fold) == value.
struct NeedleByte {
  std::size_t offset = 0;  ///< from the needle's start
  std::uint8_t value = 0;
  std::uint8_t fold = 0;  ///< 0x20 for an ASCII letter in either case, with `value` in lower case; otherwise 0
};

/// Two bytes of a needle; the same byte twice if it has only one.
struct NeedlePair {
  NeedleByte first, second;
};

/// The first offset below `starts` at which a needle matches in both bytes of the pair; `starts` if there is none. Uses
/// the widest vectors of the machine. Reads nothing past the pair's bytes at the last offset.
std::size_t firstPair(const char* text, std::size_t starts, const NeedlePair& pair);

}  // namespace zolt
