#pragma once

#include <string_view>

namespace zolt {

/// A syllable takes no more columns than this: a text can make one that never ends.
constexpr int kSyllableColumns = 8;

/// Whether the cluster `next` belongs to the syllable that `before` ends, so that both are shaped together. In the
/// scripts of South and South-East Asia vowel signs are characters with cells of their own that stand around the
/// letter before them, and a letter may join the next one (The Unicode Standard, chapters 12, 13, 16 and 17). Both are
/// UTF-8 and not empty. Pure.
bool continuesSyllable(std::string_view before, std::string_view next);
/// Whether `character` is of one of those scripts.
bool makesSyllables(char32_t character);

}  // namespace zolt
