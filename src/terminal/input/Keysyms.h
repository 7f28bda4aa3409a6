#pragma once

#include <cstdint>

namespace zolt {

/// The character of an X keysym (X Window System Protocol, appendix A): Latin-1, Unicode keysyms, and the Cyrillic,
/// Greek, Hebrew, Arabic and Thai sets; 0 for all others and for control characters.
char32_t keysymCharacter(std::uint32_t keysym);

}  // namespace zolt
