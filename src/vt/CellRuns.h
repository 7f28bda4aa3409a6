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
/// written to `text`, which has room for `count`; what was behind them there may be lost.
inline std::size_t gatherAscii(const Cell* cells, std::size_t count, std::uint64_t look, char* text) {
  // Most runs between two changes are a word.
  constexpr std::size_t kFew = 8;
  const std::size_t few = count < kFew ? count : kFew;
  for (std::size_t i = 0; i < few; ++i) {
    const std::uint64_t character = cells[i].bits() ^ look;
    if (character - 1 >= 0x7F) return i;
    text[i] = static_cast<char>(character);
  }
  if (few == count) return count;
  return few + detail::gatherLongAscii(cells + few, count - few, look, text + few);
}

}  // namespace zolt::vt
