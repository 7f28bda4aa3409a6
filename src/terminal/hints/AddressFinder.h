#pragma once

#include <string_view>
#include <vector>

#include "terminal/ByteRange.h"

namespace zolt {

/// The IPv4 addresses in a part of a line, four decimal numbers as inet_pton(3) takes them, that are no part of a word
/// or of a longer row of numbers. Any bytes; linear. Pure, any thread.
std::vector<ByteRange> findIPv4(std::string_view line, ByteRange part);

/// The IPv6 addresses in it (RFC 4291, 2.2) that have a digit: "abc::def" is rather a name in a program.
std::vector<ByteRange> findIPv6(std::string_view line, ByteRange part);

}  // namespace zolt
