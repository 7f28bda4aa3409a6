#pragma once

#include <cstddef>
#include <string_view>

#include "terminal/ByteRange.h"

namespace zolt {

/// The characters that end a word by default: blanks, quotation marks, brackets, list punctuation, and the lines of
/// boxes that programs draw.
inline constexpr std::string_view kWordSeparators = " \t|\"'`()[]{}<>,;:│";

/// The word around the grapheme cluster at `offset`: the clusters around it up to the nearest separators. At a
/// separator, the run of equal ones around it. Empty at the line's end and past it.
///
/// `line` and `separators`, of which each cluster counts as one, are valid UTF-8. Linear in the line up to the word's
/// end, times the number of separators. Pure, any thread.
ByteRange wordAt(std::string_view line, std::size_t offset, std::string_view separators = kWordSeparators);

}  // namespace zolt
