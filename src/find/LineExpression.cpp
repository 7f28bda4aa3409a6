#include "find/LineExpression.h"

#include <re2/re2.h>

#include <algorithm>
#include <array>
#include <string>

#include "find/WordByte.h"
#include "text/Utf8.h"

namespace zolt {

namespace {

struct Sentence {
  RE2::ErrorCode code;
  const char* text;
  bool showsPart;  // followed by the part of the expression
};

constexpr std::array kSentences{
    Sentence{RE2::ErrorBadEscape, "The regular expression has an unknown escape", true},
    Sentence{RE2::ErrorBadCharClass, "The regular expression has an invalid range or class", true},
    Sentence{RE2::ErrorBadCharRange, "The regular expression has an invalid range or class", true},
    Sentence{RE2::ErrorMissingBracket, "The regular expression has no closing bracket", true},
    Sentence{RE2::ErrorMissingParen, "The regular expression has no closing parenthesis", true},
    Sentence{RE2::ErrorUnexpectedParen, "The regular expression has no opening parenthesis", true},
    Sentence{RE2::ErrorTrailingBackslash, "The regular expression ends with a backslash", false},
    Sentence{RE2::ErrorRepeatArgument, "The regular expression has nothing to repeat", true},
    Sentence{RE2::ErrorRepeatSize, "The regular expression has too many repetitions", true},
    Sentence{RE2::ErrorRepeatOp, "The regular expression repeats a repetition", true},
    Sentence{RE2::ErrorBadPerlOp, "The regular expression has an unsupported kind of group", true},
    Sentence{RE2::ErrorBadUTF8, "The regular expression is not valid UTF-8", false},
    Sentence{RE2::ErrorBadNamedCapture, "The regular expression has an invalid group name", true},
    Sentence{RE2::ErrorPatternTooLarge, "The regular expression is too large", false},
};

// Enough to recognise the place.
constexpr std::size_t kShownBytes = 60;

std::string shown(std::string part) {
  if (part.size() <= kShownBytes) return part;
  std::size_t end = kShownBytes;
  while (isUtf8Continuation(part[end])) {
    --end;
  }
  return part.substr(0, end) + "…";
}

Failure failureOf(const RE2& engine) {
  const auto sentence = std::ranges::find(kSentences, engine.error_code(), &Sentence::code);
  if (sentence == kSentences.end()) return {"The regular expression is invalid: " + engine.error() + '.'};
  if (!sentence->showsPart || engine.error_arg().empty()) return {std::string(sentence->text) + '.'};
  return {std::string(sentence->text) + ": " + shown(engine.error_arg())};
}

// Whether a group such as (?-m) or (?s-m:...) clears a flag.
bool clearsFlag(std::string_view expression) {
  for (std::size_t at = expression.find("(?"); at != std::string_view::npos; at = expression.find("(?", at + 2)) {
    const std::size_t end = expression.find_first_not_of("imsU", at + 2);
    if (end != std::string_view::npos && expression[end] == '-') return true;
  }
  return false;
}

// A false positive, as for an escaped backslash before an A, costs time but no match.
bool refersToTextEnds(std::string_view expression) {
  for (const char* escape : {"\\A", "\\z", "\\C"}) {
    if (expression.find(escape) != std::string_view::npos) return true;
  }
  return clearsFlag(expression);
}

// The end of the word is part of the match, so that RE2 chooses an alternative that ends there. Bytes that are not
// UTF-8 match nothing, so no word ends before them.
std::string endingInWord(const std::string& expression) {
  return '(' + expression + ")(?:$|[^0-9A-Za-z_\\x{80}-\\x{10FFFF}])";
}

// The offset after the first byte at or after `at` that is not a word byte.
std::size_t afterWord(std::string_view text, std::size_t at) {
  const auto rest = text.substr(at);
  return at + static_cast<std::size_t>(std::ranges::find_if_not(rest, isWordByte) - rest.begin()) + 1;
}

}  // namespace

LineExpression::LineExpression(std::shared_ptr<const re2::RE2> engine, Words words, bool needsOneLine)
    : m_engine(std::move(engine)), m_words(words), m_needsOneLine(needsOneLine) {}

Result<LineExpression> LineExpression::compile(std::string_view expression, Letters letters, Words words) {
  RE2::Options options;
  options.set_log_errors(false);
  options.set_max_mem(kExpressionBytes);
  options.set_never_nl(true);
  options.set_case_sensitive(letters == Letters::Exact);
  const std::string source(expression);
  // Compiled on its own first: what is added below must not balance its parentheses, nor appear in an error.
  const RE2 alone(source, options);
  if (!alone.ok()) return failureOf(alone);
  if (alone.ProgramSize() > kMaxInstructions) return Failure{"The regular expression is too large."};
  const bool whole = words == Words::Whole;
  auto engine = std::make_shared<const RE2>("(?m)" + (whole ? endingInWord(source) : source), options);
  if (!engine->ok() && whole) {
    // An unclosed quotation ("\Q...") swallows what was added. It is closed only if need be.
    auto closed = std::make_shared<const RE2>("(?m)" + endingInWord(source + "\\E"), options);
    if (closed->ok()) engine = std::move(closed);
  }
  if (!engine->ok()) return failureOf(*engine);
  return LineExpression(std::move(engine), words, refersToTextEnds(expression));
}

std::optional<FindRange> LineExpression::find(std::string_view text, std::size_t from, std::size_t to,
                                              FindInterrupt& interrupt) const {
  const bool whole = m_words == Words::Whole;
  // The whole match, and the match without the byte that ends the word.
  std::array<re2::StringPiece, 2> groups;
  while (from < to && !interrupt.checkSometimes() &&
         m_engine->Match(text, from, to, RE2::UNANCHORED, groups.data(), whole ? 2 : 1)) {
    const re2::StringPiece& match = groups[whole ? 1 : 0];
    const auto begin = static_cast<std::size_t>(match.data() - text.data());
    if (whole && begin > 0 && isWordByte(text[begin - 1])) {
      // No match can begin anywhere else in this word. Trying every place would take quadratic time.
      from = afterWord(text, begin);
      continue;
    }
    if (!match.empty()) return FindRange{begin, begin + match.size()};
    from = begin + 1;
  }
  return std::nullopt;
}

}  // namespace zolt
