#include "canvas/DrawnSymbols.h"

#include <algorithm>
#include <iterator>

#include "canvas/drawn/CellPicture.h"
#include "canvas/drawn/SymbolFamilies.h"

namespace zolt {

namespace {

struct SymbolRange {
  char32_t first;
  char32_t last;  ///< included
  void (*draw)(char32_t symbol, CellPicture& picture);
};

// In ascending order.
// clang-format off
constexpr SymbolRange kRanges[] = {
    {0x2500, 0x2570, drawBoxLines},           // Box Drawing
    {0x2571, 0x2573, drawDiagonalLines},
    {0x2574, 0x257F, drawBoxLines},
    {0x2800, 0x28FF, drawBraille},            // Braille Patterns
    {0x1FBA0, 0x1FBAE, drawDiagonalLines},
    {0x1FBAF, 0x1FBAF, drawStruckLine},
    {0x1FBBD, 0x1FBBF, drawDiagonalLines},    // the pictures from U+1FBB0 on are left to fonts
    {0x1FBD0, 0x1FBDF, drawDiagonalLines},
};
// clang-format on
static_assert(std::ranges::is_sorted(kRanges, {}, &SymbolRange::first));

const SymbolRange* rangeOf(char32_t character) {
  if (character < kRanges[0].first) return nullptr;
  const SymbolRange* range = std::ranges::lower_bound(kRanges, character, {}, &SymbolRange::last);
  return range != std::end(kRanges) && character >= range->first ? range : nullptr;
}

}  // namespace

bool isDrawnSymbol(char32_t character) {
  return rangeOf(character) != nullptr;
}

GlyphMask drawSymbol(char32_t symbol, const CellMetrics& cell) {
  const SymbolRange* range = rangeOf(symbol);
  if (range == nullptr) return {};
  CellPicture picture(cell);
  range->draw(symbol, picture);
  return picture.mask();
}

}  // namespace zolt
