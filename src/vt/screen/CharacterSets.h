#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zolt::vt {

/// The character sets that a program can designate (ECMA-35 14.3, DEC STD 070), which replace some of ASCII.
enum class CharacterSet : std::uint8_t {
  Ascii,
  SpecialGraphics,  ///< DEC line drawing
  British,
  Dutch,
  Finnish,
  French,
  FrenchCanadian,
  German,
  Italian,
  NorwegianDanish,
  Portuguese,
  Spanish,
  Swedish,
  Swiss,
};

/// The set that SCS designates with these characters, if they name one.
std::optional<CharacterSet> characterSet(std::string_view designation);
/// The characters that designate `set`; the first if there are several.
std::string_view designation(CharacterSet set);

/// What `character`, U+0020 to U+007E, is in `set`.
char32_t translated(CharacterSet set, char character);

/// G0 to G3, and which of them is in use (ECMA-35). A value.
struct CharacterSets {
  std::array<CharacterSet, 4> sets{};
  std::uint8_t inUse = 0;
  std::optional<std::uint8_t> once;  ///< for the next character only (SS2, SS3)

  bool areAscii() const { return !once && sets[inUse] == CharacterSet::Ascii; }

  friend bool operator==(const CharacterSets&, const CharacterSets&) = default;
};

}  // namespace zolt::vt
