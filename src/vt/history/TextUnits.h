#pragma once

#include <cstddef>
#include <string_view>

namespace zolt::vt {

/// The text of one cell: a character and those without width that follow it, or a cluster.
struct TextUnit {
  std::size_t size = 0;  ///< bytes
  int width = 1;         ///< columns: 1 or 2
};

/// The unit that starts at `offset` < text.size() in valid UTF-8, joined as Screen joins printed characters: with
/// `clusters` as grapheme clusters (UAX #29), otherwise by the width of characters alone.
TextUnit unitAt(std::string_view text, std::size_t offset, bool clusters);

}  // namespace zolt::vt
