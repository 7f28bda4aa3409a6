#include "vt/screen/CharacterSets.h"

#include <algorithm>
#include <iterator>

namespace zolt::vt {

namespace {

// The characters of ASCII that national replacement sets change: "VT220 Programmer Reference", table 2-9.
constexpr std::string_view kReplaced = "#@[\\]^_`{|}~";

struct National {
  CharacterSet set;
  std::u32string_view characters;  // in the order of kReplaced
};

// clang-format off
constexpr National kNational[] = {
    {CharacterSet::British,         U"£@[\\]^_`{|}~"},
    {CharacterSet::Dutch,           U"£¾ĳ½|^_`¨ƒ¼´"},
    {CharacterSet::Finnish,         U"#@ÄÖÅÜ_éäöåü"},
    {CharacterSet::French,          U"£à°ç§^_`éùè¨"},
    {CharacterSet::FrenchCanadian,  U"#àâçêî_ôéùèû"},
    {CharacterSet::German,          U"#§ÄÖÜ^_`äöüß"},
    {CharacterSet::Italian,         U"£§°çé^_ùàòèì"},
    {CharacterSet::NorwegianDanish, U"#ÄÆØÅÜ_äæøåü"},
    {CharacterSet::Portuguese,      U"#@ÃÇÕ^_`ãçõ~"},
    {CharacterSet::Spanish,         U"£§¡Ñ¿^_`°ñç~"},
    {CharacterSet::Swedish,         U"#ÉÄÖÅÜ_éäöåü"},
    {CharacterSet::Swiss,           U"ùàéçêîèôäöüû"},
};
// clang-format on
static_assert(std::ranges::all_of(kNational,
                                  [](const National& each) { return each.characters.size() == kReplaced.size(); }));

// What U+005F to U+007E are in the special graphics set: "VT220 Programmer Reference", table 2-4.
constexpr std::u32string_view kLines = U"\u00A0◆▒␉␌␍␊°±␤␋┘┐┌└┼⎺⎻─⎼⎽├┤┴┬│≤≥π≠£·";
static_assert(kLines.size() == 0x7E - 0x5F + 1);

struct Designation {
  std::string_view characters;
  CharacterSet set;
};

// clang-format off
constexpr Designation kDesignations[] = {
    {"B",  CharacterSet::Ascii},
    {"0",  CharacterSet::SpecialGraphics},
    {"2",  CharacterSet::SpecialGraphics},
    {"1",  CharacterSet::Ascii},
    {"A",  CharacterSet::British},
    {"4",  CharacterSet::Dutch},
    {"5",  CharacterSet::Finnish},
    {"C",  CharacterSet::Finnish},
    {"R",  CharacterSet::French},
    {"f",  CharacterSet::French},
    {"Q",  CharacterSet::FrenchCanadian},
    {"9",  CharacterSet::FrenchCanadian},
    {"K",  CharacterSet::German},
    {"Y",  CharacterSet::Italian},
    {"`",  CharacterSet::NorwegianDanish},
    {"E",  CharacterSet::NorwegianDanish},
    {"6",  CharacterSet::NorwegianDanish},
    {"%6", CharacterSet::Portuguese},
    {"Z",  CharacterSet::Spanish},
    {"H",  CharacterSet::Swedish},
    {"7",  CharacterSet::Swedish},
    {"=",  CharacterSet::Swiss},
};
// clang-format on

}  // namespace

std::optional<CharacterSet> characterSet(std::string_view designation) {
  const auto* const found = std::ranges::find(kDesignations, designation, &Designation::characters);
  if (found == std::end(kDesignations)) return std::nullopt;
  return found->set;
}

std::string_view designation(CharacterSet set) {
  return std::ranges::find(kDesignations, set, &Designation::set)->characters;
}

char32_t translated(CharacterSet set, char character) {
  const auto same = static_cast<char32_t>(static_cast<unsigned char>(character));
  if (set == CharacterSet::Ascii) return same;
  if (set == CharacterSet::SpecialGraphics) return same < 0x5F ? same : kLines[same - 0x5F];
  const std::size_t index = kReplaced.find(character);
  if (index == std::string_view::npos) return same;
  return std::ranges::find(kNational, set, &National::set)->characters[index];
}

}  // namespace zolt::vt
