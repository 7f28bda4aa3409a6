#pragma once

#include "canvas/drawn/CellPicture.h"

namespace zolt {

// Each draws the symbols of some ranges of characters, which the table in DrawnSymbols.cpp names.

/// Braille patterns.
void drawBraille(char32_t symbol, CellPicture& picture);

}  // namespace zolt
