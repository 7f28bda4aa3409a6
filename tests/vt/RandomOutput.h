#pragma once

#include <random>
#include <string>

namespace zolt::vt::test {

/// Made-up program output: about `pieces` pieces of text in several scripts, line ends and every kind of sequence.
/// Deterministic for a given state of `random`.
std::string randomOutput(std::mt19937& random, int pieces);
/// The same, with only text, line ends and SGR.
std::string randomLines(std::mt19937& random, int pieces);

}  // namespace zolt::vt::test
