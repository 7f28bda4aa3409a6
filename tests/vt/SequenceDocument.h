#pragma once

#include <string>
#include <string_view>

namespace zolt::vt::test {

/// What stands in the reference for a row that has no case.
inline constexpr std::string_view kUntested = "**nothing**";

/// docs/escape-sequences.md: all tables of control functions, and what the cases say of each row. Markdown.
std::string sequenceDocument();

}  // namespace zolt::vt::test
