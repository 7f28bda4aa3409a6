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
  bool wholeWord = false;  ///< neither neighbour of a match belongs to a word (WordByte.h)
  bool regularExpression = false;
};

/// What to look for, ready to be looked for by a FindScanner. Immutable and cheap to copy; any thread may use it.
///
/// Text is compared as bytes where that is enough: case matters, or the query is ASCII. A query with other characters
/// whose case does not matter follows Unicode's simple case folding, as regular expressions do; a query of ASCII does
/// not: "k" does not find the Kelvin sign.
class FindPattern {
 public:
  /// Longer queries are refused.
  static constexpr std::size_t kQueryBytes = 4096;

  /// The failure is a sentence for a person: the query is empty, too long, has a line break, or is no regular
  /// expression in RE2's syntax (https://github.com/google/re2/wiki/Syntax).
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
