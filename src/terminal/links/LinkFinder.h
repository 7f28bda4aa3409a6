#pragma once

#include <string_view>
#include <vector>

#include "terminal/ByteRange.h"

namespace zolt {

/// The URLs in a line, from left to right. They begin with a known scheme that is not the end of a longer word, and
/// extend over characters of URIs (RFC 3986) and letters, digits and marks of any script. Punctuation at the end and
/// brackets that are not balanced are not part of them, nor is a "'" if one stands before.
///
/// `line` is any bytes; what is not UTF-8 ends a URL. Linear in the line. Pure, any thread.
std::vector<ByteRange> findLinks(std::string_view line);

}  // namespace zolt
