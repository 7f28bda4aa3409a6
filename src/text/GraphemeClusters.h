#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "text/Utf8.h"

namespace zolt {

/// Whether `scalar`, which is not ASCII, forms one cluster with a printable ASCII character right before it: Extend,
/// ZWJ and SpacingMark do (UAX #29 rules GB9 and GB9a).
bool joinsAsciiBefore(char32_t scalar);

/// Whether `scalar`, which is not ASCII, forms one cluster with a printable ASCII character right after it: Prepend
/// does (UAX #29 rule GB9b).
bool joinsAsciiAfter(char32_t scalar);

/// The end of the extended grapheme cluster (UAX #29) that starts at `position` < text.size().
///
/// `text` is valid UTF-8 and `position` a cluster boundary. Linear in the cluster's length.
std::size_t longClusterEnd(std::string_view text, std::size_t position);

/// Whether `next` belongs to the extended grapheme cluster (UAX #29) that begins with `cluster`, which is not empty.
/// Linear in its length.
bool continuesCluster(std::u32string_view cluster, char32_t next);

/// As `longClusterEnd`, without a look-up where an ASCII byte is followed by another: that pair always breaks, except
/// between CR and LF (GB3).
inline std::size_t clusterEnd(std::string_view text, std::size_t position) {
  const auto byte = static_cast<unsigned char>(text[position]);
  if (byte < 0x80) {
    if (position + 1 == text.size()) return position + 1;
    const auto next = static_cast<unsigned char>(text[position + 1]);
    if (next < 0x80 && !(byte == '\r' && next == '\n')) return position + 1;
  }
  return longClusterEnd(text, position);
}

/// The first scalar of the canonical composition (NFC, UAX #15) of one cluster, and whether others follow it.
struct ComposedStart {
  char32_t first = 0;
  bool alone = true;
};

/// Looks at every scalar of `cluster` (not empty), for a mark at its end may compose with the base at its start: n log
/// n in the cluster's length.
ComposedStart composedStart(std::string_view cluster);

/// Whether `text` is valid UTF-8 as a whole (Unicode, table 3-7: no surrogates, no overlong forms, at most U+10FFFF).
bool isValidUtf8(std::string_view text);

}  // namespace zolt
