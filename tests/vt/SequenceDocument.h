#pragma once

#include <string>
#include <string_view>

namespace zolt::vt::test {

/// Stands in the reference for a row without a case.
inline constexpr std::string_view kUntested = "**nothing**";

/// docs/escape-sequences.md: all tables of control functions, with the cases that cover each row.
std::string sequenceDocument();

}  // namespace zolt::vt::test
