#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "find/FindScanner.h"
#include "support/TextPositions.h"

namespace zolt {

/// Matches as a test expects them.
class Matches : public std::vector<TextRange> {
 public:
  struct Ends {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
  };

  Matches() = default;
  Matches(std::vector<TextRange> matches) : vector(std::move(matches)) {}
  Matches(std::initializer_list<Ends> matches) {
    for (const Ends& match : matches) {
      push_back(rangeOf(match.begin, match.end));
    }
  }
};

/// The matches in a text that arrives in these chunks. The query must be valid.
inline std::vector<TextRange> findInChunks(std::span<const std::string_view> chunks, std::string_view query,
                                           FindOptions options) {
  FindScanner scanner(FindPattern::compile(query, options).value());
  std::vector<TextRange> matches;
  for (const std::string_view chunk : chunks) {
    scanner.feed(chunk, matches);
  }
  scanner.finish(matches);
  return matches;
}

/// The same in chunks of `size` bytes each.
inline std::vector<TextRange> findInChunksOf(std::size_t size, std::string_view text, std::string_view query,
                                             FindOptions options) {
  std::vector<std::string_view> chunks;
  for (; !text.empty(); text.remove_prefix(std::min(size, text.size()))) {
    chunks.push_back(text.substr(0, size));
  }
  return findInChunks(chunks, query, options);
}

/// The text of the matches.
inline std::vector<std::string> found(std::string_view text, std::string_view query, FindOptions options) {
  std::vector<std::string> result;
  for (const TextRange& match : findInChunks(std::span(&text, 1), query, options)) {
    result.emplace_back(text.substr(match.begin.value, match.length()));
  }
  return result;
}

}  // namespace zolt
