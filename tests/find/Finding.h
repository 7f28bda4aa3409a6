#pragma once

#include <algorithm>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "find/FindScanner.h"

namespace zolt {

inline void PrintTo(const FindMatch& match, std::ostream* out) {
  *out << match.begin << ".." << match.end;
}

/// The matches in a text that arrives in these chunks. The query must be valid.
inline std::vector<FindMatch> findInChunks(std::span<const std::string_view> chunks, std::string_view query,
                                           FindOptions options) {
  FindScanner scanner(FindPattern::compile(query, options).value());
  std::vector<FindMatch> matches;
  for (const std::string_view chunk : chunks) {
    scanner.feed(chunk, matches);
  }
  scanner.finish(matches);
  return matches;
}

/// The same in chunks of `size` bytes each.
inline std::vector<FindMatch> findInChunksOf(std::size_t size, std::string_view text, std::string_view query,
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
  for (const FindMatch& match : findInChunks(std::span(&text, 1), query, options)) {
    result.emplace_back(text.substr(match.begin, match.end - match.begin));
  }
  return result;
}

}  // namespace zolt
