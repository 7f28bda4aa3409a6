#pragma once

#include <string>
#include <string_view>

namespace zolt {

/// Whether `scalar` shows nothing itself or changes how the text around it is shown: control characters, format
/// characters (general category Cf, which the bidirectional controls are in) except the two joiners, and the separators
/// of lines and paragraphs.
bool isInvisible(char32_t scalar);

/// Appends `scalar` as something to see: C0 controls and DEL as their pictures (U+2400 to U+2421), other invisible
/// characters as "<U+202E>", all others as they are.
void appendVisible(std::string& out, char32_t scalar);

/// All of `text`, in which what is not UTF-8 becomes U+FFFD.
std::string visibleText(std::string_view text);

}  // namespace zolt
