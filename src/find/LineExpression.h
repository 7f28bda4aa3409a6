#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "base/Result.h"
#include "find/FindInterrupt.h"
#include "find/FindMatch.h"

namespace re2 {
class RE2;
}

namespace zolt {

/// A regular expression in RE2's syntax that matches within lines: of UTF-8, ended by LF and by nothing else. RE2 never
/// tracks back: looking for one match takes time in proportion to the text, whatever the expression, and at most
/// kExpressionBytes of memory. Looking for all is another matter where each has to look at the whole line to know that
/// it goes on no further, as for "a+b|a" in a line of a's. Immutable: any thread may use it.
class LineExpression {
 public:
  enum class Letters { Exact, Folded };  ///< folded: Unicode's simple case folding
  enum class Words { Any, Whole };

  static constexpr std::size_t kExpressionBytes = 8 << 20;
  /// Expressions that RE2 turns into more instructions are refused: where their states do not fit its memory it falls
  /// back to a way whose time is in proportion to these as well.
  static constexpr int kMaxInstructions = 8000;

  /// The failure is a sentence for a person.
  static Result<LineExpression> compile(std::string_view expression, Letters letters, Words words);

  /// The leftmost match in `text` within `from` to `to` (not included) that is not empty, of those that begin at the
  /// same place the one that the expression prefers. What stands before `from` and after `to` is looked at to tell the
  /// ends of words and lines, and `text` begins and ends where a line does or where neither `from` nor `to` stands.
  ///
  /// With whole words, a match has no word's byte (WordByte.h) on either side. Nothing is found any more once
  /// `interrupt` is given.
  std::optional<FindRange> find(std::string_view text, std::size_t from, std::size_t to,
                                FindInterrupt& interrupt) const;

  /// Whether `text` must be one line: the expression asks for the ends of the text (\A, \z), matches bytes whatever
  /// they are (\C), or changes what ^ and $ mean. If not, `text` may have many.
  bool needsOneLine() const { return m_needsOneLine; }

 private:
  LineExpression(std::shared_ptr<const re2::RE2> engine, Words words, bool needsOneLine);

  std::shared_ptr<const re2::RE2> m_engine;
  Words m_words;
  bool m_needsOneLine;
};

}  // namespace zolt
