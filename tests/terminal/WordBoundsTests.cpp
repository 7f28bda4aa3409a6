#include "terminal/input/WordBounds.h"

#include <gtest/gtest.h>

#include <string>

namespace zolt {
namespace {

std::string_view word(std::string_view line, std::size_t offset) {
  const ByteRange range = wordAt(line, offset);
  return line.substr(range.begin, range.end - range.begin);
}

TEST(WordBounds, EndAtSeparators) {
  struct Row {
    std::string_view line;
    std::string_view at;  // its first byte in the line
    std::string_view word;
  };
  const Row rows[] = {
      {"one two", "wo", "two"},
      {"one two", "one", "one"},
      {"one", "e", "one"},
      {"cat /usr/share/doc-base/a_b.txt|less", "doc", "/usr/share/doc-base/a_b.txt"},
      {"f(a, b[1])", "1", "1"},
      {"f(a, b[1])", "f", "f"},
      {"\"say 'it'\"", "it", "it"},
      {"key:value;other", "value", "value"},
      {"│名前│値段│", "値", "値段"},
      {"<b>x</b>", "b", "b"},
      {"user@host~$", "host", "user@host~$"},
      {"na\u0308ive e\u0301a", "\u0308", "na\u0308ive"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(word(row.line, row.line.find(row.at)), row.word) << row.line << " at " << row.at;
  }
}

TEST(WordBounds, AtASeparatorAreThoseOfItsRun) {
  EXPECT_EQ(word("a   b", 2), "   ");
  EXPECT_EQ(word("a \t\tb", 1), " ");
  EXPECT_EQ(word("a \t\tb", 3), "\t\t");
  EXPECT_EQ(word("f((x))", 1), "((");
  EXPECT_EQ(word("f()", 1), "(");
  EXPECT_EQ(word("││a", 4), "││") << "in the middle of a character";
}

TEST(WordBounds, NeverSplitACluster) {
  EXPECT_EQ(word(" \u0301a b", 0), " \u0301a") << "a blank with an accent is not the blank";
  const std::string family = "\U0001F469\u200D\U0001F4BB";
  EXPECT_EQ(word("a" + family + " b", 3), "a" + family);
}

TEST(WordBounds, AreEmptyAtTheEnd) {
  EXPECT_EQ(wordAt("", 0), ByteRange());
  EXPECT_EQ(wordAt("abc", 3), (ByteRange{.begin = 3, .end = 3}));
  EXPECT_EQ(wordAt("abc", 99), (ByteRange{.begin = 3, .end = 3}));
  EXPECT_TRUE(wordAt("abc", 3).empty());
}

TEST(WordBounds, DependOnTheSeparators) {
  EXPECT_EQ(wordAt("a-b c", 0, "-"), (ByteRange{.begin = 0, .end = 1}));
  EXPECT_EQ(wordAt("a-b c", 2, "-"), (ByteRange{.begin = 2, .end = 5}));
  EXPECT_EQ(wordAt("a-b c", 2, ""), (ByteRange{.begin = 0, .end = 5}));
  EXPECT_EQ(wordAt("aéb", 0, "é"), (ByteRange{.begin = 0, .end = 1}));
}

}  // namespace
}  // namespace zolt
