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
    {0x2580, 0x2595, drawBlocks},             // Block Elements
    {0x2596, 0x259F, drawMosaic},             // quadrants
    {0x2800, 0x28FF, drawBraille},            // Braille Patterns
    {0xE0B0, 0xE0BF, drawPowerline},          // private use
    {0xE0D2, 0xE0D2, drawPowerline},
    {0xE0D4, 0xE0D4, drawPowerline},
    {0x1CC21, 0x1CC2F, drawMosaic},           // Symbols for Legacy Computing Supplement: separated quadrants
    {0x1CD00, 0x1CDE5, drawMosaic},           // octants
    {0x1CE51, 0x1CE8F, drawMosaic},           // separated sextants
    {0x1CE90, 0x1CEAF, drawBlocks},           // sixteenths and quarters
    {0x1FB00, 0x1FB3B, drawMosaic},           // Symbols for Legacy Computing: sextants
    {0x1FB3C, 0x1FB6F, drawWedge},
    {0x1FB70, 0x1FB92, drawBlocks},
    {0x1FB94, 0x1FB94, drawBlocks},           // U+1FB93 is not assigned
    {0x1FB95, 0x1FB96, drawChecker},
    {0x1FB97, 0x1FB97, drawBlocks},
    {0x1FB98, 0x1FB99, drawStripes},
    {0x1FB9A, 0x1FB9F, drawWedge},
    {0x1FBA0, 0x1FBAE, drawDiagonalLines},
    {0x1FBAF, 0x1FBAF, drawStruckLine},
    {0x1FBBD, 0x1FBBF, drawDiagonalLines},    // the pictures from U+1FBB0 on are left to fonts
    {0x1FBCE, 0x1FBCF, drawMosaic},           // thirds
    {0x1FBD0, 0x1FBDF, drawDiagonalLines},
    {0x1FBE0, 0x1FBE3, drawCircle},
    {0x1FBE4, 0x1FBE7, drawBlocks},
    {0x1FBE8, 0x1FBEF, drawCircle},
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
