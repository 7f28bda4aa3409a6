#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "vt/cells/Cell.h"

namespace zolt::vt {

namespace detail {
void spreadLongAscii(std::string_view text, std::uint64_t attributes, Cell* cells);
std::size_t gatherLongAscii(const Cell* cells, std::size_t count, std::uint64_t attributes, char* text);
}  // namespace detail

/// Writes `text`, printable ASCII, to `cells`, all with the same attributes.
inline void spreadAscii(std::string_view text, std::uint64_t attributes, Cell* cells) {
  if (text.size() >= 16) return detail::spreadLongAscii(text, attributes, cells);
  for (std::size_t i = 0; i < text.size(); ++i) {
    cells[i] = Cell(attributes | static_cast<unsigned char>(text[i]));
  }
}

/// The inverse: copies the longest prefix of `cells` that is ASCII with these attributes to `text`, and returns its
/// length. `text` has room for `count` bytes, all of which may be overwritten.
inline std::size_t gatherAscii(const Cell* cells, std::size_t count, std::uint64_t attributes, char* text) {
  // Most runs are a word long.
  constexpr std::size_t kFew = 8;
  const std::size_t few = count < kFew ? count : kFew;
  for (std::size_t i = 0; i < few; ++i) {
    const std::uint64_t character = cells[i].bits() ^ attributes;
    if (character - 1 >= 0x7F) return i;
    text[i] = static_cast<char>(character);
  }
  if (few == count) return count;
  return few + detail::gatherLongAscii(cells + few, count - few, attributes, text + few);
}

}  // namespace zolt::vt
