#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "base/Result.h"
#include "find/FindInterrupt.h"
#include "find/FindRange.h"

namespace re2 {
class RE2;
}

namespace zolt {

/// A regular expression in RE2's syntax that matches within lines of UTF-8, which end with LF only. RE2 does not
/// backtrack: finding one match takes time linear in the text, whatever the expression, and at most kExpressionBytes of
/// memory. Finding all matches can take quadratic time if each requires a look at the rest of the line, as "a+b|a" does
/// in a line of a's. Immutable: any thread may use it.
class LineExpression {
 public:
  enum class Letters { Exact, Folded };  ///< Folded uses Unicode's simple case folding
  enum class Words { Any, Whole };

  static constexpr std::size_t kExpressionBytes = 8 << 20;
  /// Expressions that compile to more instructions are rejected: when their states exceed its memory, RE2 falls back to
  /// an algorithm whose time is also proportional to the number of instructions.
  static constexpr int kMaxInstructions = 8000;

  /// A failure is a sentence for the user.
  static Result<LineExpression> compile(std::string_view expression, Letters letters, Words words);

  /// The leftmost match in `text` between `from` and `to` (not included) that is not empty; if several begin there, the
  /// one that the expression prefers. The text before `from` and after `to` serves to recognise the ends of words and
  /// lines. Unless `text` begins and ends with a line, `from` and `to` must lie inside of it.
  ///
  /// With whole words, no word byte (WordByte.h) is adjacent to a match. Finds nothing once `interrupt` has stopped the
  /// search.
  std::optional<FindRange> find(std::string_view text, std::size_t from, std::size_t to,
                                FindInterrupt& interrupt) const;

  /// Whether `text` must be a single line, because the expression refers to the ends of the text (\A, \z), matches any
  /// byte
  /// (\C), or changes the meaning of ^ and $.
  bool needsOneLine() const { return m_needsOneLine; }

 private:
  LineExpression(std::shared_ptr<const re2::RE2> engine, Words words, bool needsOneLine);

  std::shared_ptr<const re2::RE2> m_engine;
  Words m_words;
  bool m_needsOneLine;
};

}  // namespace zolt
