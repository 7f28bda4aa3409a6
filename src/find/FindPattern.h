#pragma once

#include <cstddef>
#include <string_view>
#include <variant>

#include "base/Result.h"
#include "find/LineExpression.h"
#include "find/PlainNeedle.h"

namespace zolt {

struct FindOptions {
  bool matchCase = false;
  bool wholeWord = false;  ///< no word byte (WordByte.h) is adjacent to a match
  bool regularExpression = false;
};

/// A compiled query for a FindScanner. Immutable and cheap to copy; any thread may use it.
///
/// Text is compared byte by byte if case matters or the query is ASCII, so "k" does not find the Kelvin sign. Any other
/// query uses Unicode's simple case folding, as regular expressions do.
class FindPattern {
 public:
  /// The maximum length of a query.
  static constexpr std::size_t kQueryBytes = 4096;

  /// Fails, with a sentence for the user, when the query is empty, too long, has a line break, or is not a valid
  /// regular expression in RE2's syntax (https://github.com/google/re2/wiki/Syntax).
  static Result<FindPattern> compile(std::string_view query, FindOptions options);

  using Matcher = std::variant<PlainNeedle, LineExpression>;
  const Matcher& matcher() const { return m_matcher; }
  bool wholeWord() const { return m_wholeWord; }

 private:
  FindPattern(Matcher matcher, bool wholeWord);

  Matcher m_matcher;
  bool m_wholeWord;
};

}  // namespace zolt
