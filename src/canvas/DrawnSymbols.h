#pragma once

#include "canvas/CanvasFonts.h"
#include "canvas/GlyphMask.h"

namespace zolt {

/// Whether a character is a graphic symbol that is drawn to the size of the cell, whatever the fonts have: a line of a
/// box, a block, a mosaic, a braille pattern or a separator of Powerline. All of them lie at or above U+2500. Any
/// thread.
bool isDrawnSymbol(char32_t character);

/// The picture of a symbol of which `isDrawnSymbol` is true; an empty mask for other characters. It has exactly the
/// pixels of one cell: `left` is 0, `top` that of the cell, and a blank symbol (U+2800) covers none of them. Lines and
/// areas that reach an edge of the cell continue in the neighbouring cell's symbol, pixel by pixel. Their thickness
/// depends on the size of the cell only, not on the font's weight. Any thread.
///
/// Shapes are those of the code charts: Box Drawing, Block Elements, Braille Patterns, Symbols for Legacy Computing
/// (without its pictures and digits, which fonts have) and its Supplement's mosaics; and of the Powerline fonts.
GlyphMask drawSymbol(char32_t symbol, const CellMetrics& cell);

}  // namespace zolt
