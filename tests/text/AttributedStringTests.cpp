#include "text/AttributedString.h"

#include <gtest/gtest.h>

#include <string>

#include "text/RandomText.h"

namespace zolt {
namespace {

// Different for every number, and equal for equal ones.
TextAttributes styleNumber(std::size_t number) {
  TextAttributes style;
  style.foreground = {static_cast<double>(number), 0, 0, 1};
  if (number % 2 == 1) style.background = Color::black;
  if (number % 3 == 1) style.font.weight = FontWeight::Bold;
  return style;
}

TEST(AttributedString, OfNoTextHasNoRuns) {
  EXPECT_TRUE(AttributedString().empty());
  EXPECT_TRUE(AttributedString("", styleNumber(1)).runs().empty());
}

TEST(AttributedString, OfATextHasOneRunInTheStyleGiven) {
  const AttributedString string("hello", styleNumber(3));
  EXPECT_EQ(string.text(), "hello");
  ASSERT_EQ(string.runs().size(), 1u);
  EXPECT_EQ(string.runs()[0].length, 5u);
  EXPECT_EQ(string.attributes(string.runs()[0]), styleNumber(3));
}

TEST(AttributedString, EndsARunWithWhatWasAppendedSinceTheLast) {
  AttributedString string;
  const std::uint32_t first = string.styleIndex(styleNumber(1));
  const std::uint32_t second = string.styleIndex(styleNumber(2));
  string.appendText("one");
  EXPECT_EQ(string.pendingLength(), 3u);
  string.endRun(first);
  EXPECT_EQ(string.pendingLength(), 0u);
  string.appendText("tw");
  string.appendText('o');
  string.endRun(second);
  EXPECT_EQ(string.text(), "onetwo");
  EXPECT_EQ(string.runs(), (std::vector<AttributedString::Run>{{3, first}, {3, second}}));
}

TEST(AttributedString, MakesNoRunOfNothing) {
  AttributedString string;
  string.endRun(string.styleIndex(styleNumber(1)));
  string.appendText('x');
  string.dropLastByte();
  string.endRun(string.styleIndex(styleNumber(1)));
  EXPECT_TRUE(string.runs().empty());
  EXPECT_TRUE(string.empty());
}

TEST(AttributedString, KeepsNeighbouringRunsOfOneStyleApart) {
  AttributedString string;
  const std::uint32_t style = string.styleIndex(styleNumber(1));
  for (const char c : {'a', 'b'}) {
    string.appendText(c);
    string.endRun(style);
  }
  EXPECT_EQ(string.runs().size(), 2u);
}

TEST(AttributedString, HoldsEachDifferentStyleOnceHoweverManyThereAre) {
  constexpr std::size_t kStyles = 3000;  // far beyond what is searched without a hash
  AttributedString string;
  for (int round = 0; round < 2; ++round) {
    for (std::size_t number = 0; number < kStyles; ++number) {
      ASSERT_EQ(string.styleIndex(styleNumber(number)), number);
      ASSERT_EQ(string.styleIndex(styleNumber(number / 2)), number / 2);
    }
    ASSERT_EQ(string.styles().size(), kStyles);
  }
  for (std::size_t number = 0; number < kStyles; ++number) {
    ASSERT_EQ(string.styles()[number], styleNumber(number));
  }
}

TEST(AttributedString, FindsStylesAgainAroundTheNumberWhereTheSearchChanges) {
  for (std::size_t styles = 1; styles <= 70; ++styles) {
    AttributedString string;
    for (std::size_t number = 0; number < styles; ++number) {
      static_cast<void>(string.styleIndex(styleNumber(number)));
    }
    for (std::size_t number = styles; number-- > 0;) {
      ASSERT_EQ(string.styleIndex(styleNumber(number)), number) << "of " << styles;
    }
    ASSERT_EQ(string.styles().size(), styles);
  }
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
    string.endRun(string.styleIndex(styleNumber(style)));
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
