#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "vt/Cell.h"

namespace zolt::vt {

namespace detail {
void spreadLongAscii(std::string_view text, std::uint64_t look, Cell* cells);
std::size_t gatherLongAscii(const Cell* cells, std::size_t count, std::uint64_t look, char* text);
}  // namespace detail

/// Writes `text`, printable ASCII, to as many narrow cells of one look.
inline void spreadAscii(std::string_view text, std::uint64_t look, Cell* cells) {
  if (text.size() >= 16) return detail::spreadLongAscii(text, look, cells);
  for (std::size_t i = 0; i < text.size(); ++i) {
    cells[i] = Cell(look | static_cast<unsigned char>(text[i]));
  }
}

/// The other way: how many of `count` cells, from the first on, are narrow ASCII characters of this look. They are
/// written to `text`, which has room for `count`.
inline std::size_t gatherAscii(const Cell* cells, std::size_t count, std::uint64_t look, char* text) {
  if (count >= 16) return detail::gatherLongAscii(cells, count, look, text);
  std::size_t i = 0;
  for (; i < count; ++i) {
    const std::uint64_t character = cells[i].bits() ^ look;
    if (character - 1 >= 0x7F) break;
    text[i] = static_cast<char>(character);
  }
  return i;
}

}  // namespace zolt::vt
