#include "text/AttributedString.h"

#include <gtest/gtest.h>

#include <string>

#include "text/RandomText.h"

namespace zolt {
namespace {

// Different for every number, and equal for equal ones. From 2 on there is no packed code for them.
TextAttributes styleNumber(std::size_t number) {
  TextAttributes style;
  style.foreground = {static_cast<double>(number), 0, 0, 1};
  if (number % 2 == 1) style.background = Color::black;
  if (number % 3 == 1) style.font.weight = FontWeight::Bold;
  return style;
}

TEST(AttributedString, HasNoRunsWithoutText) {
  EXPECT_TRUE(AttributedString().empty());
  EXPECT_TRUE(AttributedString("", styleNumber(1)).runs().empty());
}

TEST(AttributedString, OfOneTextHasOneRunInTheGivenStyle) {
  const AttributedString string("hello", styleNumber(3));
  EXPECT_EQ(string.text(), "hello");
  ASSERT_EQ(string.runs().size(), 1u);
  EXPECT_EQ(string.runs()[0].length, 5u);
  EXPECT_EQ(string.attributes(string.runs()[0]), styleNumber(3));
}

TEST(AttributedString, EndsARunWithTheTextAppendedSinceTheLastOne) {
  AttributedString string;
  string.appendText("one");
  EXPECT_EQ(string.pendingLength(), 3u);
  string.endRun(styleNumber(1));
  EXPECT_EQ(string.pendingLength(), 0u);
  string.appendText("tw");
  string.appendText('o');
  string.endRun(styleNumber(2));
  EXPECT_EQ(string.text(), "onetwo");
  ASSERT_EQ(string.runs().size(), 2u);
  EXPECT_EQ(string.runs()[0].length, 3u);
  EXPECT_EQ(string.attributes(string.runs()[0]), styleNumber(1));
  EXPECT_EQ(string.attributes(string.runs()[1]), styleNumber(2));
}

TEST(AttributedString, MakesNoEmptyRun) {
  AttributedString string;
  string.endRun(styleNumber(1));
  string.appendText('x');
  string.dropLastByte();
  string.endRun(styleNumber(2));
  EXPECT_TRUE(string.runs().empty());
  EXPECT_TRUE(string.empty());
}

TEST(AttributedString, KeepsAdjacentRunsOfOneStyleApart) {
  for (const std::size_t style : {0u, 2u}) {  // one that is packed, one that is listed
    AttributedString string;
    for (const char c : {'a', 'b'}) {
      string.appendText(c);
      string.endRun(styleNumber(style));
    }
    EXPECT_EQ(string.runs().size(), 2u);
  }
}

TEST(AttributedString, TakesAPackedStyleAsItIs) {
  AttributedString string;
  string.appendText("x");
  string.endRun(StyleCode());
  EXPECT_EQ(string.attributes(string.runs()[0]), TextAttributes());
}

TEST(AttributedString, CoversItsTextWithRunsWithoutGaps) {
  RandomText random(6);
  AttributedString string;
  std::string expected;
  std::vector<std::size_t> styles;
  for (int run = 0; run < 2000; ++run) {
    const std::string text(1 + random.below(5), static_cast<char>('a' + random.below(26)));
    const std::size_t style = random.below(200);
    string.appendText(text);
    string.endRun(styleNumber(style));
    expected += text;
    styles.insert(styles.end(), text.size(), style);
  }
  ASSERT_EQ(string.text(), expected);
  std::size_t position = 0;
  for (const AttributedString::Run& run : string.runs()) {
    ASSERT_NE(run.length, 0u);
    for (std::size_t i = 0; i < run.length; ++i, ++position) {
      ASSERT_EQ(string.attributes(run), styleNumber(styles[position])) << position;
    }
  }
  EXPECT_EQ(position, expected.size());
}

}  // namespace
}  // namespace zolt
