// Compares the scanner with a naive search for random texts, queries, options and chunks.
#include <gtest/gtest.h>

#include <random>

#include "find/Finding.h"
#include "find/NaiveFind.h"
#include "text/InstructionSets.h"
#include "text/RandomText.h"

namespace zolt {
namespace {

using namespace std::string_view_literals;

// Few different bytes, so that there are many matches, overlapping and split ones among them.
constexpr Piece kAlphabet[] = {{"a", 12}, {"b", 6},    {"A", 4},   {"B", 2},  {" ", 6},    {"_", 1},    {"-", 2},
                               {".", 2},  {"0", 2},    {"\n", 3},  {"\r", 2}, {"\r\n", 3}, {"ä", 2},    {"Ä", 2},
                               {"→", 1},  {"σ", 1},    {"ς", 1},   {"Σ", 1},  {"\0"sv, 1}, {"\xFF", 1}, {"\xC3", 1},
                               {"K", 1},  {"\xA4", 1}, {"aaa", 2}, {"ab", 2}, {"aab", 2},  {"\t", 1},   {"\u212A", 1}};

constexpr std::string_view kPlainQueries[] = {
    "a",    "aa",      "aaa",
    "aab",  "ab",      "aba",
    "b a",  "a a",     "A",
    "AB",   "aB",      " ",
    "-",    "_a",      ".",
    "a.",   "k",       "ä",
    "äa",   "Ä",       "ÄB",
    "σ",    "aΣ",      "→",
    "aä",   "0",       "a\0"sv,
    "\0"sv, "\xFF",    "a\xFF",
    "\xA4", "baabaab", "a very long query that is found nowhere in a text like this"};

constexpr std::string_view kExpressions[] = {"a",
                                             "a+",
                                             "a*",
                                             "a|ab",
                                             "ab|a",
                                             "^a",
                                             "a$",
                                             "^a*$",
                                             "^",
                                             "$",
                                             "\\ba",
                                             "a\\b",
                                             "\\Ba\\B",
                                             ".",
                                             ".*",
                                             ".+$",
                                             "[^b]+",
                                             "\\s+",
                                             "\\S+",
                                             "\\W+",
                                             "\\D",
                                             "[\\D]+",
                                             "\\r",
                                             "\\n",
                                             "a\\n",
                                             "a\\r?\\n?b",
                                             "(?s).+",
                                             "(?s)a.b",
                                             "\\Aa",
                                             "b\\z",
                                             "(?-m)^a",
                                             "(?-m)a$",
                                             "(?i-m:^a)",
                                             "\\C",
                                             "a\\C",
                                             "\\C+a",
                                             "ä",
                                             "[äb]+",
                                             "(?i)ä",
                                             "\\x00",
                                             "a\\x00?",
                                             "(a+)+b",
                                             "(a+)+$",
                                             "a.*?b",
                                             "a.*b|a",
                                             "(a|b)*?-",
                                             "\\pL+",
                                             "\\PL+",
                                             "[[:^alpha:]]",
                                             "\\Qa.\\E",
                                             "\\Qa",
                                             "\\Qa b",
                                             "x*",
                                             "a??b",
                                             "(?U)a+",
                                             "aa(b)?|(a)a",
                                             "σ",
                                             "k",
                                             "()a",
                                             "(|a)b",
                                             "[\\x{80}-\\x{10FFFF}]+",
                                             "\\x0a",
                                             "[\\n\\r]",
                                             "a{2}",
                                             "\\.a?"};

std::vector<std::string_view> splitAnywhere(std::string_view text, RandomText& random) {
  std::vector<std::string_view> chunks;
  const std::size_t limit = 1 + random.below(60);
  while (!text.empty()) {
    const std::size_t size = std::min(text.size(), random.below(limit + 1));
    chunks.push_back(text.substr(0, size));
    text.remove_prefix(size);
  }
  return chunks;
}

void expectMatchesOfTheNaiveSearch(std::span<const std::string_view> queries, bool regularExpression, int rounds,
                                   std::uint64_t seed) {
  RandomText random(seed, kAlphabet);
  std::size_t matchCount = 0;
  for (int round = 0; round < rounds; ++round) {
    const std::string_view query = queries[static_cast<std::size_t>(round) % queries.size()];
    const std::string text = random.text(round % 5 == 0 ? 300 : 40);
    const FindOptions options{random.below(2) == 0, random.below(2) == 0, regularExpression};
    const auto expected = naiveFind(text, query, options);
    matchCount += expected.size();
    const auto chunks = splitAnywhere(text, random);
    ASSERT_EQ(findInChunks(chunks, query, options), expected)
        << "query " << escaped(query) << " in " << escaped(text) << (options.matchCase ? ", match case" : "")
        << (options.wholeWord ? ", whole word" : "") << ", in " << chunks.size() << " chunks";
    const std::string_view whole = text;
    ASSERT_EQ(findInChunks(std::span(&whole, 1), query, options), expected)
        << "query " << escaped(query) << " in one chunk " << escaped(text);
  }
  // The comparison would prove little with few matches.
  EXPECT_GT(matchCount, static_cast<std::size_t>(rounds));
}

TEST(FindModel, PlainQueriesHaveTheMatchesOfANaiveSearch) {
  withEveryInstructionSet([] { expectMatchesOfTheNaiveSearch(kPlainQueries, false, 10000, 1); });
}

TEST(FindModel, RegularExpressionsHaveTheMatchesOfANaiveSearch) {
  expectMatchesOfTheNaiveSearch(kExpressions, true, 12000, 2);
}

TEST(FindModel, LongTextHasTheMatchesOfANaiveSearch) {
  RandomText random(3, kAlphabet);
  std::string text;
  while (text.size() < 400'000) {
    text += random.text(100);
  }
  withEveryInstructionSet([&] {
    for (const std::string_view query : {"aab"sv, "baabaab"sv, "ÄB"sv, "a"sv}) {
      for (const bool matchCase : {true, false}) {
        const FindOptions options{.matchCase = matchCase};
        const auto expected = naiveFind(text, query, options);
        ASSERT_GT(expected.size(), 3U) << query;
        for (const std::size_t size : {std::size_t{1}, std::size_t{1021}, std::size_t{65536}, text.size()}) {
          ASSERT_EQ(findInChunksOf(size, text, query, options), expected) << query << " in chunks of " << size;
        }
      }
    }
  });
}

}  // namespace
}  // namespace zolt
