#include "text/GraphemeBreakFile.h"

#include <fstream>
#include <sstream>

namespace zolt::test {

namespace {

// Where Debian and Fedora install it.
constexpr const char* kPlaces[] = {"/usr/share/unicode/auxiliary/GraphemeBreakTest.txt",
                                   "/usr/share/unicode/ucd/auxiliary/GraphemeBreakTest.txt"};

// "÷ 0020 × 0308 ÷ 0020 ÷ # ...": a cluster ends at each ÷.
std::vector<GraphemeBreakLine> readLines(std::istream& file) {
  std::vector<GraphemeBreakLine> lines;
  int number = 0;
  for (std::string text; std::getline(file, text);) {
    ++number;
    std::istringstream words(text.substr(0, text.find('#')));
    GraphemeBreakLine line{.number = number, .clusters = {}};
    for (std::string word; words >> word;) {
      if (word == "÷") {
        line.clusters.emplace_back();
      } else if (word != "×") {
        line.clusters.back().push_back(static_cast<char32_t>(std::stoul(word, nullptr, 16)));
      }
    }
    if (line.clusters.empty()) continue;
    line.clusters.pop_back();
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace

std::vector<GraphemeBreakLine> graphemeBreakFile() {
  for (const char* const place : kPlaces) {
    std::ifstream file(place);
    if (file) return readLines(file);
  }
  return {};
}

}  // namespace zolt::test
