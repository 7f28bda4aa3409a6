#include "find/FindScanner.h"

#include <gtest/gtest.h>

#include "find/Finding.h"

namespace zolt {
namespace {

using namespace std::string_view_literals;

using Texts = std::vector<std::string>;
constexpr FindOptions kExact{.matchCase = true};
constexpr FindOptions kAnyCase{};
constexpr FindOptions kWord{.wholeWord = true};
constexpr FindOptions kExpression{.matchCase = true, .regularExpression = true};
constexpr FindOptions kWordExpression{.wholeWord = true, .regularExpression = true};

Matches foundAt(std::string_view text, std::string_view query, FindOptions options) {
  return findInChunks(std::span(&text, 1), query, options);
}

TEST(FindScanner, TakesOfOverlappingMatchesTheLeftmostFirst) {
  EXPECT_EQ(foundAt("aaaa", "aaa", kExact), (Matches{{0, 3}}));
  EXPECT_EQ(foundAt("aaaaaa", "aaa", kExact), (Matches{{0, 3}, {3, 6}}));
  EXPECT_EQ(foundAt("ababab", "abab", kExpression), (Matches{{0, 4}}));
}

TEST(FindScanner, FindsAMatchThatIsCutAnywhere) {
  const std::string_view text = "some needle, and a needle";
  for (const FindOptions options : {kExact, kAnyCase, kWord, kExpression, kWordExpression}) {
    for (std::size_t size = 1; size <= text.size(); ++size) {
      EXPECT_EQ(findInChunksOf(size, text, "needle", options), (Matches{{5, 11}, {19, 25}})) << size;
    }
  }
}

TEST(FindScanner, FindsAQueryLongerThanThePieces) {
  const std::string query(FindPattern::kQueryBytes, 'q');
  const std::string text = "qq." + query + 'q';
  EXPECT_EQ(findInChunksOf(7, text, query, kExact), (Matches{{3, 4099}}));
  EXPECT_EQ(findInChunksOf(7, text, query, kExpression), (Matches{{3, 4099}}));
}

TEST(FindScanner, NeverMatchesPastTheEndOfALine) {
  for (const char* lineEnd : {"\n", "\r", "\r\n"}) {
    const std::string text = std::string("ab") + lineEnd + "ab";
    for (const char* query : {"b\\s+a", "b[^x]+a", "(?s)b.+a", "b\\n?\\r?\\n?a", "b\\C+a", "b\\W+a"}) {
      for (std::size_t size = 1; size <= text.size(); ++size) {
        EXPECT_EQ(findInChunksOf(size, text, query, kExpression), Matches{}) << query;
      }
    }
  }
}

TEST(FindScanner, EndsALineAtLineFeedCarriageReturnAndBoth) {
  const std::string_view text = "one\rtwo\nthree\r\nfour\n\rfive";
  for (std::size_t size = 1; size <= text.size(); ++size) {
    const Matches starts{{0, 1}, {4, 5}, {8, 9}, {15, 16}, {21, 22}};
    EXPECT_EQ(findInChunksOf(size, text, "^.", kExpression), starts);
    EXPECT_EQ(findInChunksOf(size, text, "(?-m)^.", kExpression), starts);
    EXPECT_EQ(findInChunksOf(size, text, "\\A.", kExpression), starts);
    const Matches ends{{2, 3}, {6, 7}, {12, 13}, {18, 19}, {24, 25}};
    EXPECT_EQ(findInChunksOf(size, text, ".$", kExpression), ends);
    EXPECT_EQ(findInChunksOf(size, text, ".\\z", kExpression), ends);
  }
}

TEST(FindScanner, SkipsEmptyMatches) {
  EXPECT_EQ(found("xaxaa", "a*", kExpression), (Texts{"a", "aa"}));
  EXPECT_EQ(foundAt("a\n\nb", "^|$|\\b", kExpression), Matches{});
}

TEST(FindScanner, IgnoresTheCaseOfAsciiLettersInAQueryOfAscii) {
  EXPECT_EQ(found("Error ERROR error eRRoR err0r", "eRror", kAnyCase), (Texts{"Error", "ERROR", "error", "eRRoR"}));
  EXPECT_EQ(found("Error ERROR error", "error", kExact), (Texts{"error"}));
  // The bits that make letters small make other bytes of other bytes.
  EXPECT_EQ(found("[ { @ ` \x0B +", "[", kAnyCase), (Texts{"["}));
  EXPECT_EQ(found("[ { @ ` \x0B +", "`", kAnyCase), (Texts{"`"}));
  EXPECT_EQ(found("[ { @ ` \x0B +", "+", kAnyCase), (Texts{"+"}));
  EXPECT_EQ(found("k K \u212A", "k", kAnyCase), (Texts{"k", "K"}));
}

TEST(FindScanner, IgnoresTheCaseOfOtherLettersByUnicodesFolding) {
  EXPECT_EQ(found("größe GRÖßE Grösse", "GRÖßE", kAnyCase), (Texts{"größe", "GRÖßE"}));
  EXPECT_EQ(found("σ ς Σ", "σ", kAnyCase), (Texts{"σ", "ς", "Σ"}));
  EXPECT_EQ(found("σ ς Σ", "σ", kExact), (Texts{"σ"}));
  EXPECT_EQ(found("Ä.b äxb", "ä.B", kAnyCase), (Texts{"Ä.b"}));
  EXPECT_EQ(found("k K \u212A", "k", {.regularExpression = true}), (Texts{"k", "K", "\u212A"}));
}

TEST(FindScanner, FindsWholeWordsBetweenBytesThatBelongToNone) {
  EXPECT_EQ(foundAt("cat concat cat_ _cat cat9 (cat) cat", "cat", kWord), (Matches{{0, 3}, {27, 30}, {32, 35}}));
  EXPECT_EQ(foundAt("écat caté →cat cat", "cat", kWord), (Matches{{19, 22}}));
  EXPECT_EQ(foundAt("a-- --b --", "--", kWord), (Matches{{8, 10}}));
  EXPECT_EQ(foundAt("cat\ncat\rcat\r\ncat", "cat", kWord), (Matches{{0, 3}, {4, 7}, {8, 11}, {13, 16}}));
}

TEST(FindScanner, FindsAWholeWordThatBeginsWithinARejectedMatch) {
  EXPECT_EQ(foundAt("xa a a and so on", "a a", kWord), (Matches{{3, 6}}));
  EXPECT_EQ(foundAt("xa a a and so on", "a a", kWordExpression), (Matches{{3, 6}}));
}

TEST(FindScanner, PrefersTheAlternativeOfAnExpressionThatEndsAWord) {
  EXPECT_EQ(found("foobar foo", "foo|foobar", kWordExpression), (Texts{"foobar", "foo"}));
  EXPECT_EQ(found("foobar. foo", "(?:foo|foobar)\\.?", kWordExpression), (Texts{"foobar.", "foo"}));
  EXPECT_EQ(found("a b c", "\\w", kWordExpression), (Texts{"a", "b", "c"}));
  EXPECT_EQ(found("->->", "->", kWordExpression), (Texts{"->", "->"}));
  EXPECT_EQ(found("a.b a.", "\\Qa.", kWordExpression), (Texts{"a."}));
}

TEST(FindScanner, FindsNulsAndBytesThatAreNotUtf8) {
  EXPECT_EQ(foundAt("a\0b\0"sv, "\0b"sv, kExact), (Matches{{1, 3}}));
  EXPECT_EQ(foundAt("a\0b\0"sv, "a\0B"sv, kAnyCase), (Matches{{0, 3}}));
  EXPECT_EQ(foundAt("a\0b\0"sv, "\\x00b?", kExpression), (Matches{{1, 3}, {3, 4}}));
  EXPECT_EQ(foundAt("x\xFF\xFEy", "\xFF\xFE", kAnyCase), (Matches{{1, 3}}));
  EXPECT_EQ(foundAt("x\xFF\xFEy", "y", kExpression), (Matches{{3, 4}}));
  EXPECT_EQ(foundAt("x\xFF\xFEy", ".+", kExpression), (Matches{{0, 1}, {3, 4}}));
}

TEST(FindScanner, CountsFromThePositionItIsGiven) {
  FindScanner scanner(FindPattern::compile("b$", kExpression).value(), TextPosition(std::uint64_t{1} << 40));
  Matches matches;
  scanner.feed("ab\nb", matches);
  scanner.finish(matches);
  const std::uint64_t start = std::uint64_t{1} << 40;
  EXPECT_EQ(matches, (Matches{{start + 1, start + 2}, {start + 3, start + 4}}));
}

TEST(FindScanner, ReportsAPlainMatchAtOnce) {
  FindScanner scanner(FindPattern::compile("abc", kExact).value());
  Matches matches;
  scanner.feed("xabc", matches);
  EXPECT_EQ(matches, (Matches{{1, 4}}));
}

TEST(FindScanner, FindsNothingInNoText) {
  EXPECT_EQ(foundAt("", "a", kExact), Matches{});
  EXPECT_EQ(foundAt("", "a*", kExpression), Matches{});
}

// A backtracking engine would need time exponential in the length of this line.
TEST(FindScanner, CopesWithExpressionsThatBacktrackingCannot) {
  const std::string line(FindScanner::kLongLineBytes - 1, 'a');
  EXPECT_EQ(foundAt(line + '\n', "(a+)+$", kExpression), (Matches{{0, line.size()}}));
  EXPECT_EQ(foundAt(line + "b\n", "(a+)+$", kExpression), Matches{});
  EXPECT_EQ(foundAt(line + "b\n", "(a|aa|a*)*c", kExpression), Matches{});
  EXPECT_EQ(foundAt(line + "b\n", "(.*)(.*)(.*)(.*)[^ab]", kExpression), Matches{});
}

TEST(FindScanner, CopesWithALongWordThatAnExpressionMatchesOnlyInPart) {
  const std::string line = '1' + std::string(FindScanner::kLongLineBytes - 10, 'a');
  EXPECT_EQ(foundAt(line + " a\n", "a+", kWordExpression), (Matches{{line.size() + 1, line.size() + 2}}));
}

}  // namespace
}  // namespace zolt
