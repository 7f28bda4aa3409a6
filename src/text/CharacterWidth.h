#pragma once

#include <cstdint>

namespace zolt {

/// What a terminal's grid has to know of a character.
struct CharacterProperties {
  std::uint8_t width = 1;       ///< columns: 0 for what joins the character before, 2 for East Asian Wide and emoji
  bool isPlain = true;          ///< UAX #29 has no rule for it: a cluster ends before and after (GB999)
  bool isPictographic = false;  ///< Extended_Pictographic
};

namespace detail {

// Bits of an entry of the table.
inline constexpr std::uint8_t kWidthBits = 3;
inline constexpr std::uint8_t kPlainBit = 4;
inline constexpr std::uint8_t kPictographicBit = 8;
// Two planes hold nearly everything that is written; asking the library costs as much as parsing ten bytes.
inline constexpr char32_t kCharacterTableEnd = 0x20000;

const std::uint8_t* makeCharacterTable();
CharacterProperties askForProperties(char32_t scalar);

}  // namespace detail

/// Of `scalar`, at most U+10FFFF: width by Unicode's East Asian Width (UAX #11) and general category; what is ambiguous
/// is narrow. Any thread.
inline CharacterProperties characterProperties(char32_t scalar) {
  static const std::uint8_t* const table = detail::makeCharacterTable();
  if (scalar >= detail::kCharacterTableEnd) return detail::askForProperties(scalar);
  const std::uint8_t packed = table[scalar];
  return {.width = static_cast<std::uint8_t>(packed & detail::kWidthBits),
          .isPlain = (packed & detail::kPlainBit) != 0,
          .isPictographic = (packed & detail::kPictographicBit) != 0};
}

/// Whether a cluster that begins with `first` and took one column takes two once `added` has joined it: flags, keycaps,
/// and characters that a variation selector turns into emoji.
bool widensCluster(char32_t first, char32_t added);

}  // namespace zolt
