#pragma once

#include <cstddef>
#include <string_view>

namespace zolt {

/// Scans over text at the machine's widest vectors. Each returns the length of the longest prefix of `text` that
/// consists only of the bytes named; `text.size()` when all of it does.

/// Bytes 0x20 to 0x7F, TAB and LF: what a log shows without looking twice.
std::size_t plainPrefix(std::string_view text);

/// Bytes from 0x20 on, non-ASCII included: everything but C0 controls.
std::size_t controlFreePrefix(std::string_view text);

/// Bytes from 0x80 on.
std::size_t nonAsciiPrefix(std::string_view text);

}  // namespace zolt
