#include "find/FindPattern.h"

#include <gtest/gtest.h>

#include <string>

namespace zolt {
namespace {

constexpr FindOptions kExpression{.regularExpression = true};

std::string reasonAgainst(std::string_view query, FindOptions options = {}) {
  const auto pattern = FindPattern::compile(query, options);
  return pattern ? "" : pattern.reason();
}

TEST(FindPattern, RejectsAnEmptyQuery) {
  EXPECT_EQ(reasonAgainst(""), "There is no text to find.");
  EXPECT_EQ(reasonAgainst("", kExpression), "There is no text to find.");
}

TEST(FindPattern, AcceptsQueriesOfUpToFourKibibytes) {
  EXPECT_EQ(reasonAgainst(std::string(4096, 'x')), "");
  EXPECT_EQ(reasonAgainst(std::string(4096, 'x'), kExpression), "");
  EXPECT_EQ(reasonAgainst(std::string(4097, 'x')), "The text to find is longer than 4096 bytes.");
  EXPECT_EQ(reasonAgainst(std::string(4097, 'x'), kExpression), "The text to find is longer than 4096 bytes.");
}

TEST(FindPattern, AcceptsTheLongestQueryOfLettersThatNeedCaseFolding) {
  std::string query;
  while (query.size() + 2 <= FindPattern::kQueryBytes) {
    query += "ß";
  }
  EXPECT_EQ(reasonAgainst(query), "");
  EXPECT_EQ(reasonAgainst(query, {.wholeWord = true}), "");
}

TEST(FindPattern, RejectsALineBreakInTheQuery) {
  for (const char* query : {"a\nb", "a\rb", "\r\n"}) {
    const std::string reason = "The text to find has a line break, but a match never extends past the end of a line.";
    EXPECT_EQ(reasonAgainst(query), reason);
    EXPECT_EQ(reasonAgainst(query, kExpression), reason);
  }
}

TEST(FindPattern, ExplainsWhatIsWrongWithARegularExpression) {
  EXPECT_EQ(reasonAgainst("a[bc", kExpression), "The regular expression has no closing bracket: [bc");
  EXPECT_EQ(reasonAgainst("a(b", kExpression), "The regular expression has no closing parenthesis: a(b");
  EXPECT_EQ(reasonAgainst("a)b", kExpression), "The regular expression has no opening parenthesis: a)b");
  EXPECT_EQ(reasonAgainst("a\\", kExpression), "The regular expression ends with a backslash.");
  EXPECT_EQ(reasonAgainst("*a", kExpression), "The regular expression has nothing to repeat: *");
  EXPECT_EQ(reasonAgainst("a**", kExpression), "The regular expression repeats a repetition: **");
  EXPECT_EQ(reasonAgainst("a{2000}", kExpression), "The regular expression has too many repetitions: {2000}");
  EXPECT_EQ(reasonAgainst("[z-a]", kExpression), "The regular expression has an invalid range or class: z-a");
  EXPECT_EQ(reasonAgainst("[[:word", kExpression), "The regular expression has no closing bracket: [[:word");
  EXPECT_EQ(reasonAgainst("[[:worth:]]", kExpression),
            "The regular expression has an invalid range or class: [:worth:]");
  EXPECT_EQ(reasonAgainst("\\y", kExpression), "The regular expression has an unknown escape: \\y");
  EXPECT_EQ(reasonAgainst("(?=a)", kExpression), "The regular expression has an unsupported kind of group: (?=");
  EXPECT_EQ(reasonAgainst("(?P<a b>x)", kExpression), "The regular expression has an invalid group name: (?P<a b>");
  EXPECT_EQ(reasonAgainst("\xFF", kExpression), "The regular expression is not valid UTF-8.");
  EXPECT_EQ(reasonAgainst("\\pL{1000}", kExpression), "The regular expression is too large.");
}

TEST(FindPattern, RejectsARegularExpressionThatTakesTooLongToMatch) {
  std::string expression = "a{900}";
  EXPECT_EQ(reasonAgainst(expression, kExpression), "");
  for (int i = 0; i < 9; ++i) {
    expression += "a{900}";
  }
  EXPECT_EQ(reasonAgainst(expression, kExpression), "The regular expression is too large.");
}

TEST(FindPattern, ShortensTheRegularExpressionInAnExplanation) {
  const std::string reason = reasonAgainst('(' + std::string(2000, 'x'), kExpression);
  EXPECT_EQ(reason, "The regular expression has no closing parenthesis: (" + std::string(59, 'x') + "…");
}

TEST(FindPattern, RejectsARegularExpressionThatTheWholeWordOptionWouldComplete) {
  EXPECT_EQ(reasonAgainst("a)(b", {.wholeWord = true, .regularExpression = true}),
            "The regular expression has no opening parenthesis: a)(b");
}

TEST(FindPattern, AcceptsAnyBytesAsPlainText) {
  for (const char* query : {"[", "a(b", "\\", "*", "\xFF", "\xC3", "ä\xFF"}) {
    EXPECT_EQ(reasonAgainst(query), "") << query;
    EXPECT_EQ(reasonAgainst(query, {.matchCase = true}), "") << query;
  }
}

}  // namespace
}  // namespace zolt
