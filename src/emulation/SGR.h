#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "text/Color.h"

namespace zolt {

/// The eight colours of SGR 30-37 and 40-47: black, red, green, yellow, blue, magenta, cyan, white.
extern const std::array<Color, 8> standardColors;
/// The eight colours of SGR 90-97 and 100-107, in the same order.
extern const std::array<Color, 8> brightColors;

/// A colour of the 256-colour palette, as SGR "38;5;n" names it: 0-15 the named ones, 16-231 the 6 by 6 by 6 cube, from
/// 232 on greys, brighter than white from 257 on. Stops the program when `n` is negative or the grey level overflows.
Color color256(std::int64_t n);

/// The codes of an SGR parameter string: fields between semicolons. Empty fields are dropped, and fields that are
/// not a signed 64-bit decimal number are skipped. An empty parameter string means code 0. Appends to `codes`.
void parseSGRCodes(std::string_view params, std::vector<std::int64_t>& codes);

}  // namespace zolt
