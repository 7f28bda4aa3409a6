#include "text/CharacterWidth.h"

#include <utf8proc.h>

#include <algorithm>
#include <vector>

namespace zolt {

namespace detail {

CharacterProperties lookUpProperties(char32_t scalar) {
  const auto codePoint = static_cast<utf8proc_int32_t>(scalar);
  const utf8proc_property_t* const properties = utf8proc_get_property(codePoint);
  const auto boundClass = static_cast<utf8proc_boundclass_t>(properties->boundclass);
  int width = std::clamp(utf8proc_charwidth(codePoint), 0, 2);
  // Programs count columns with wcwidth(), which gives these a column of their own.
  if (scalar == 0xAD || properties->category == UTF8PROC_CATEGORY_CO || properties->category == UTF8PROC_CATEGORY_MC ||
      boundClass == UTF8PROC_BOUNDCLASS_PREPEND) {
    width = 1;
  }
  // Medial vowels and final consonants of Hangul join the leading consonant, which is wide.
  const bool isLaterJamo = (scalar >= 0x1160 && scalar <= 0x11FF) || (scalar >= 0xD7B0 && scalar <= 0xD7FB);
  if (isLaterJamo) width = 0;
  return {.width = static_cast<std::uint8_t>(width),
          .isPlain = boundClass == UTF8PROC_BOUNDCLASS_OTHER,
          .isPictographic = boundClass == UTF8PROC_BOUNDCLASS_EXTENDED_PICTOGRAPHIC};
}

// One byte per character, so that the part in use stays in the cache. Never freed.
const std::uint8_t* makeCharacterTable() {
  static std::vector<std::uint8_t> table(kCharacterTableEnd);
  for (char32_t scalar = 0; scalar < kCharacterTableEnd; ++scalar) {
    const CharacterProperties properties = lookUpProperties(scalar);
    table[scalar] = static_cast<std::uint8_t>(properties.width | (properties.isPlain ? kPlainBit : 0) |
                                              (properties.isPictographic ? kPictographicBit : 0));
  }
  return table.data();
}

}  // namespace detail

bool widensCluster(char32_t first, char32_t added) {
  constexpr char32_t kEmojiStyle = 0xFE0F;
  constexpr char32_t kKeycap = 0x20E3;
  const auto isRegionalIndicator = [](char32_t scalar) { return scalar >= 0x1F1E6 && scalar <= 0x1F1FF; };
  if (added == kKeycap) return true;
  if (added == kEmojiStyle) return characterProperties(first).isPictographic;
  return isRegionalIndicator(first) && isRegionalIndicator(added);
}

}  // namespace zolt
