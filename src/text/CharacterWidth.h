#pragma once

#include <cstdint>

namespace zolt {

/// The properties of a character that decide its place in a terminal's grid.
struct CharacterProperties {
  std::uint8_t width = 1;       ///< columns: 0 for combining characters, 2 for East Asian Wide and emoji
  bool isPlain = true;          ///< UAX #29 has no rule for it: a cluster ends before and after (GB999)
  bool isPictographic = false;  ///< Extended_Pictographic
};

namespace detail {

// The bits of a table entry.
inline constexpr std::uint8_t kWidthBits = 3;
inline constexpr std::uint8_t kPlainBit = 4;
inline constexpr std::uint8_t kPictographicBit = 8;
// Nearly all text is in the first two planes. Looking a character up in utf8proc costs as much as parsing ten bytes.
inline constexpr char32_t kCharacterTableEnd = 0x20000;

const std::uint8_t* makeCharacterTable();
CharacterProperties lookUpProperties(char32_t scalar);

}  // namespace detail

/// The properties of `scalar`, at most U+10FFFF. The width follows East Asian Width (UAX #11) and general category;
/// ambiguous characters are narrow. Any thread.
inline CharacterProperties characterProperties(char32_t scalar) {
  static const std::uint8_t* const table = detail::makeCharacterTable();
  if (scalar >= detail::kCharacterTableEnd) return detail::lookUpProperties(scalar);
  const std::uint8_t packed = table[scalar];
  return {.width = static_cast<std::uint8_t>(packed & detail::kWidthBits),
          .isPlain = (packed & detail::kPlainBit) != 0,
          .isPictographic = (packed & detail::kPictographicBit) != 0};
}

/// Whether adding `added` makes a cluster that starts with `first` and was one column wide two columns wide: flags,
/// keycaps, and characters that a variation selector turns into emoji.
bool widensCluster(char32_t first, char32_t added);

}  // namespace zolt
