#pragma once

#include <random>
#include <string>

namespace zolt::vt::test {

/// Output of a program that never was: text in several scripts, lines, and every kind of sequence, about `pieces` of
/// them. The same on every run for one `random`.
std::string randomOutput(std::mt19937& random, int pieces);
/// Only text, line ends and renditions.
std::string randomLines(std::mt19937& random, int pieces);

}  // namespace zolt::vt::test
