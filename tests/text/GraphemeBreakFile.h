#pragma once

#include <string>
#include <vector>

namespace zolt::test {

/// A line of GraphemeBreakTest.txt, the test file of UAX #29: a text split into clusters.
struct GraphemeBreakLine {
  int number = 0;
  std::vector<std::u32string> clusters;
};

/// The file as distributions package it; empty when it is not installed.
std::vector<GraphemeBreakLine> graphemeBreakFile();

}  // namespace zolt::test
