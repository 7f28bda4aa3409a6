#include "terminal/hints/HintLabels.h"

#include <algorithm>
#include <string_view>

namespace zolt {

namespace {

// By how easily they are reached on most keyboards: the home row, the row above, the row below.
constexpr std::string_view kLetters = "asdfjklghqweruioptyzxcvnmb";

}  // namespace

std::vector<std::string> hintLabels(std::size_t count) {
  count = std::min(count, kMaxHintLabels);
  // Each letter that begins two-letter labels takes one label and gives 26.
  std::size_t firsts = 0;
  while (kLetters.size() - firsts + firsts * kLetters.size() < count) {
    ++firsts;
  }
  std::vector<std::string> labels;
  labels.reserve(count);
  const std::size_t singles = kLetters.size() - firsts;
  for (std::size_t i = 0; i < singles && labels.size() < count; ++i) {
    labels.emplace_back(1, kLetters[i]);
  }
  for (std::size_t first = singles; first < kLetters.size(); ++first) {
    for (std::size_t second = 0; second < kLetters.size() && labels.size() < count; ++second) {
      labels.push_back({kLetters[first], kLetters[second]});
    }
  }
  return labels;
}

}  // namespace zolt
