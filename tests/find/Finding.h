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

/// The matches in a text that comes in the pieces given. The query is one that FindPattern takes.
inline std::vector<FindMatch> findInPieces(std::span<const std::string_view> pieces, std::string_view query,
                                           FindOptions options) {
  FindScanner scanner(FindPattern::compile(query, options).value());
  std::vector<FindMatch> matches;
  for (const std::string_view piece : pieces) {
    scanner.feed(piece, matches);
  }
  scanner.finish(matches);
  return matches;
}

/// The same in pieces of `size` bytes each.
inline std::vector<FindMatch> findInPiecesOf(std::size_t size, std::string_view text, std::string_view query,
                                             FindOptions options) {
  std::vector<std::string_view> pieces;
  for (; !text.empty(); text.remove_prefix(std::min(size, text.size()))) {
    pieces.push_back(text.substr(0, size));
  }
  return findInPieces(pieces, query, options);
}

/// What was found, as text.
inline std::vector<std::string> found(std::string_view text, std::string_view query, FindOptions options) {
  std::vector<std::string> result;
  for (const FindMatch& match : findInPieces(std::span(&text, 1), query, options)) {
    result.emplace_back(text.substr(match.begin, match.end - match.begin));
  }
  return result;
}

}  // namespace zolt
