#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "terminal/ByteRange.h"

namespace zolt {

/// What a hint stands on.
enum class HintKind : std::uint8_t {
  Link,     ///< a URL
  Path,     ///< of a file or folder, whether it exists or not, perhaps with ":line" or ":line:column"
  Hash,     ///< of a commit: 7 to 40 hexadecimal digits, of which one is a letter and one is not
  Address,  ///< IPv4 or IPv6
};

struct FoundHint {
  ByteRange range;
  HintKind kind = HintKind::Link;

  friend bool operator==(const FoundHint&, const FoundHint&) = default;
};

/// What can be given a hint in a line, from left to right, none overlapping another; nothing in the `taken` ranges,
/// which are in order and do not overlap.
///
/// A path has a slash and a letter ("src/main.cpp", "/etc", "~/notes"), or a dot and a line number ("main.cpp:12").
/// `line` is any bytes. Linear in the line. Pure, any thread.
std::vector<FoundHint> findHints(std::string_view line, std::span<const ByteRange> taken = {});

/// A path as it is written in a text, without its line number.
std::string_view pathWithoutLine(std::string_view path);

}  // namespace zolt
