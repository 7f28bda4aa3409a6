#include "find/FindPattern.h"

#include <re2/re2.h>

#include <algorithm>

namespace zolt {

namespace {

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](unsigned char c) { return c < 0x80; });
}

}  // namespace

FindPattern::FindPattern(Matcher matcher, bool wholeWord) : m_matcher(std::move(matcher)), m_wholeWord(wholeWord) {}

Result<FindPattern> FindPattern::compile(std::string_view query, FindOptions options) {
  if (query.empty()) return Failure{"There is no text to find."};
  if (query.size() > kQueryBytes) return Failure{"The text to find is longer than 4096 bytes."};
  if (query.find_first_of("\r\n") != std::string_view::npos) {
    return Failure{"The text to find has a line break, but a match never extends past the end of a line."};
  }
  const auto letters = options.matchCase ? LineExpression::Letters::Exact : LineExpression::Letters::Folded;
  const auto words = options.wholeWord ? LineExpression::Words::Whole : LineExpression::Words::Any;
  if (options.regularExpression) {
    auto expression = LineExpression::compile(query, letters, words);
    if (!expression) return Failure{expression.reason()};
    return FindPattern(std::move(expression.value()), options.wholeWord);
  }
  if (!options.matchCase && !isAscii(query)) {
    // Invalid UTF-8 does not compile. It is compared byte by byte below.
    auto quoted = LineExpression::compile(RE2::QuoteMeta(std::string(query)), letters, words);
    if (quoted) return FindPattern(std::move(quoted.value()), options.wholeWord);
  }
  return FindPattern(PlainNeedle(query, options.matchCase ? LetterCase::Exact : LetterCase::AsciiFolded),
                     options.wholeWord);
}

}  // namespace zolt
