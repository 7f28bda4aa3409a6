#pragma once

#include <string>
#include <vector>

namespace zolt::test {

/// A line of the grapheme break test file of the Unicode data (UAX #29): text, taken apart.
struct GraphemeBreakLine {
  int number = 0;
  std::vector<std::u32string> clusters;
};

/// The whole file, as the package manager ships it; empty where it is not installed.
std::vector<GraphemeBreakLine> graphemeBreakFile();

}  // namespace zolt::test
