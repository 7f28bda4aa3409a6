#include "terminal/input/Keysyms.h"

#include <string_view>

#include "vt/input/InputText.h"

namespace zolt {

namespace {

// Keysyms of this form have the code point in the lower 24 bits.
constexpr std::uint32_t kUnicodeMask = 0xFF000000;
constexpr std::uint32_t kUnicodeForm = 0x01000000;

// The order of KOI8-R, in both cases.
constexpr std::uint32_t kCyrillicFirst = 0x6C0;
constexpr std::u32string_view kCyrillic = U"юабцдефгхийклмнопярстужвьызшэщчъЮАБЦДЕФГХИЙКЛМНОПЯРСТУЖВЬЫЗШЭЩЧЪ";

struct KeysymRange {
  std::uint32_t first;
  std::uint32_t last;
  char32_t character;  // of the first
};

// clang-format off
constexpr KeysymRange kRanges[] = {
    {0x0020, 0x007E, U'\u0020'},
    {0x00A0, 0x00FF, U'\u00A0'},
    {0x05C1, 0x05DA, U'\u0621'}, {0x05E0, 0x05F2, U'\u0640'},                               // Arabic
    {0x07C1, 0x07D1, U'\u0391'}, {0x07D2, 0x07D2, U'\u03A3'}, {0x07D4, 0x07D9, U'\u03A4'},  // Greek, capital
    {0x07E1, 0x07F1, U'\u03B1'}, {0x07F2, 0x07F2, U'\u03C3'}, {0x07F3, 0x07F3, U'\u03C2'},  // Greek, small
    {0x07F4, 0x07F9, U'\u03C4'},
    {0x0CE0, 0x0CFA, U'\u05D0'},                                                            // Hebrew
    {0x0DA1, 0x0DDA, U'\u0E01'}, {0x0DDF, 0x0DED, U'\u0E3F'}, {0x0DF0, 0x0DF9, U'\u0E50'},  // Thai
};
// clang-format on

}  // namespace

char32_t keysymCharacter(std::uint32_t keysym) {
  if ((keysym & kUnicodeMask) == kUnicodeForm) {
    const char32_t character = keysym & ~kUnicodeMask;
    return vt::isPlain(character) ? character : 0;
  }
  if (keysym >= kCyrillicFirst && keysym < kCyrillicFirst + kCyrillic.size()) return kCyrillic[keysym - kCyrillicFirst];
  for (const KeysymRange& range : kRanges) {
    if (keysym >= range.first && keysym <= range.last) return range.character + (keysym - range.first);
  }
  return 0;
}

}  // namespace zolt
