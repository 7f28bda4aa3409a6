#pragma once

#include "canvas/drawn/CellPicture.h"

namespace zolt {

// Each draws the symbols of some ranges of characters, which the table in DrawnSymbols.cpp names.

/// Lines from the middle of the cell to its edges, dashed ones and rounded corners: U+2500 to U+257F but for the
/// diagonals.
void drawBoxLines(char32_t symbol, CellPicture& picture);
/// A horizontal line with a short stroke across its middle.
void drawStruckLine(char32_t symbol, CellPicture& picture);
/// Slanting lines between corners and middles of edges, and areas with such lines left out.
void drawDiagonalLines(char32_t symbol, CellPicture& picture);
/// Rectangles in eighths of the cell, some of them shaded.
void drawBlocks(char32_t symbol, CellPicture& picture);
/// A checker board.
void drawChecker(char32_t symbol, CellPicture& picture);
/// Slanting stripes.
void drawStripes(char32_t symbol, CellPicture& picture);
/// Grids of blocks, each of which is there or not: quadrants, sextants, octants.
void drawMosaic(char32_t symbol, CellPicture& picture);
/// Areas with a slanting edge, and triangles.
void drawWedge(char32_t symbol, CellPicture& picture);
/// Halves and quarters of circles, from the middle of an edge or from a corner.
void drawCircle(char32_t symbol, CellPicture& picture);
/// Braille patterns.
void drawBraille(char32_t symbol, CellPicture& picture);
/// The separators of the Powerline fonts, in the private use area.
void drawPowerline(char32_t symbol, CellPicture& picture);

}  // namespace zolt
