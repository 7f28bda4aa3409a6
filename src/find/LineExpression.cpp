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
  bool showsPart;  // the part of the expression that is meant follows
};

constexpr std::array kSentences{
    Sentence{RE2::ErrorBadEscape, "The regular expression has an unknown escape", true},
    Sentence{RE2::ErrorBadCharClass, "The regular expression has a range or class that is none", true},
    Sentence{RE2::ErrorBadCharRange, "The regular expression has a range or class that is none", true},
    Sentence{RE2::ErrorMissingBracket, "The regular expression has no closing bracket", true},
    Sentence{RE2::ErrorMissingParen, "The regular expression has no closing parenthesis", true},
    Sentence{RE2::ErrorUnexpectedParen, "The regular expression has no opening parenthesis", true},
    Sentence{RE2::ErrorTrailingBackslash, "The regular expression ends in a backslash", false},
    Sentence{RE2::ErrorRepeatArgument, "The regular expression repeats nothing", true},
    Sentence{RE2::ErrorRepeatSize, "The regular expression repeats too often", true},
    Sentence{RE2::ErrorRepeatOp, "The regular expression repeats a repetition", true},
    Sentence{RE2::ErrorBadPerlOp, "The regular expression has an unknown kind of group", true},
    Sentence{RE2::ErrorBadUTF8, "The regular expression is not valid UTF-8", false},
    Sentence{RE2::ErrorBadNamedCapture, "The regular expression has a bad name of a group", true},
    Sentence{RE2::ErrorPatternTooLarge, "The regular expression is too large", false},
};

// Enough to know the place by.
constexpr std::size_t kShownBytes = 60;

std::string shown(std::string part) {
  if (part.size() <= kShownBytes) return part;
  std::size_t cut = kShownBytes;
  while (isUtf8Continuation(part[cut])) {
    --cut;
  }
  return part.substr(0, cut) + "…";
}

Failure failureOf(const RE2& engine) {
  const auto sentence = std::ranges::find(kSentences, engine.error_code(), &Sentence::code);
  if (sentence == kSentences.end()) return {"The regular expression does not work: " + engine.error() + '.'};
  if (!sentence->showsPart || engine.error_arg().empty()) return {std::string(sentence->text) + '.'};
  return {std::string(sentence->text) + ": " + shown(engine.error_arg())};
}

// Whether a group such as (?-m) or (?s-m:...) takes a flag away.
bool takesFlagAway(std::string_view expression) {
  for (std::size_t at = expression.find("(?"); at != std::string_view::npos; at = expression.find("(?", at + 2)) {
    const std::size_t end = expression.find_first_not_of("imsU", at + 2);
    if (end != std::string_view::npos && expression[end] == '-') return true;
  }
  return false;
}

// True too often (an escaped backslash before an A) costs time, never a match.
bool asksForOneLine(std::string_view expression) {
  for (const char* escape : {"\\A", "\\z", "\\C"}) {
    if (expression.find(escape) != std::string_view::npos) return true;
  }
  return takesFlagAway(expression);
}

// The end of a whole word is part of what is matched, so that of several ways to match one that ends there is taken.
// Bytes that are not UTF-8 match nothing, and so no word ends before them.
std::string endingInWord(const std::string& expression) {
  return '(' + expression + ")(?:$|[^0-9A-Za-z_\\x{80}-\\x{10FFFF}])";
}

// Behind the first byte at `at` or after it that belongs to no word.
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
  const std::string asked(expression);
  // By itself first: what is put around it must not close its parentheses, nor be shown in an error.
  const RE2 alone(asked, options);
  if (!alone.ok()) return failureOf(alone);
  if (alone.ProgramSize() > kMaxInstructions) return Failure{"The regular expression is too large."};
  const bool whole = words == Words::Whole;
  auto engine = std::make_shared<const RE2>("(?m)" + (whole ? endingInWord(asked) : asked), options);
  if (!engine->ok() && whole) {
    // A quotation that was left open ("\Q...") takes in what follows; closing it is harmless only then.
    auto closed = std::make_shared<const RE2>("(?m)" + endingInWord(asked + "\\E"), options);
    if (closed->ok()) engine = std::move(closed);
  }
  if (!engine->ok()) return failureOf(*engine);
  return LineExpression(std::move(engine), words, asksForOneLine(expression));
}

std::optional<FindRange> LineExpression::find(std::string_view text, std::size_t from, std::size_t to,
                                              FindInterrupt& interrupt) const {
  const bool whole = m_words == Words::Whole;
  // The match, and what is left of it without the byte that ends the word.
  std::array<re2::StringPiece, 2> groups;
  while (from < to && !interrupt.stepAndAsk() &&
         m_engine->Match(text, from, to, RE2::UNANCHORED, groups.data(), whole ? 2 : 1)) {
    const re2::StringPiece& match = groups[whole ? 1 : 0];
    const auto begin = static_cast<std::size_t>(match.data() - text.data());
    if (whole && begin > 0 && isWordByte(text[begin - 1])) {
      // No other place in this word will do: trying them all would take the square of a long word's time.
      from = afterWord(text, begin);
      continue;
    }
    if (!match.empty()) return FindRange{begin, begin + match.size()};
    from = begin + 1;
  }
  return std::nullopt;
}

}  // namespace zolt
