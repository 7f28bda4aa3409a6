#pragma once

#include <cstdint>

namespace zolt {

/// What a terminal's grid has to know of a character.
struct CharacterProperties {
  std::uint8_t width = 1;       ///< columns: 0 for what joins the character before, 2 for East Asian Wide and emoji
  bool isPlain = true;          ///< UAX #29 has no rule for it: a cluster ends before and after (GB999)
  bool isPictographic = false;  ///< Extended_Pictographic
};

/// Of `scalar`, at most U+10FFFF: width by Unicode's East Asian Width (UAX #11) and general category; what is ambiguous
/// is narrow. Any thread.
CharacterProperties characterProperties(char32_t scalar);

/// Whether a cluster that begins with `first` and took one column takes two once `added` has joined it: flags, keycaps,
/// and characters that a variation selector turns into emoji.
bool widensCluster(char32_t first, char32_t added);

}  // namespace zolt
