#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zolt::vt {

/// The graphic sets that a program can designate (ECMA-35 14.3, DEC STD 070): they say what printable ASCII stands for.
enum class CharacterSet : std::uint8_t {
  Ascii,
  SpecialGraphics,  ///< lines and boxes
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

/// The set that an escape sequence designates with these characters after '(' and the like; nothing for others.
std::optional<CharacterSet> characterSet(std::string_view designation);
/// The characters that designate a set; the first of several.
std::string_view designation(CharacterSet set);

/// What `character`, U+0020 to U+007E, stands for in a set.
char32_t translated(CharacterSet set, char character);

/// The four sets, and which of them is in use: ECMA-35's G0 to G3. A value.
struct CharacterSets {
  std::array<CharacterSet, 4> sets{};
  std::uint8_t inUse = 0;
  std::optional<std::uint8_t> once;  ///< for the next character alone (SS2, SS3)

  bool areAscii() const { return !once && sets[inUse] == CharacterSet::Ascii; }

  friend bool operator==(const CharacterSets&, const CharacterSets&) = default;
};

}  // namespace zolt::vt
