#include "history/BlockStyles.h"

#include <gtest/gtest.h>

namespace zolt {
namespace {

StyleCode packed(std::size_t number) {
  return StyleCode({.foreground = CompactColor::fromBits(number)});
}

TextAttributes listed(std::size_t number) {
  TextAttributes style;
  style.foreground.red = 2.0 + static_cast<double>(number);
  return style;
}

TEST(BlockStyles, NumbersStylesThatRecurOnce) {
  for (const std::size_t count : {1u, 15u, 16u, 17u, 256u}) {
    BlockStyles styles;
    for (int round = 0; round < 3; ++round) {
      for (std::size_t i = 0; i < count; ++i) {
        ASSERT_EQ(styles.number(packed(i)), i);
        ASSERT_EQ(styles.number(packed(i / 2)), i / 2);
      }
    }
    ASSERT_EQ(styles.size(), count);
  }
}

TEST(BlockStyles, GivesBackEachStyleHoweverManyThereAre) {
  BlockStyles styles;
  std::vector<BlockStyles::Number> numbers;
  for (std::size_t i = 0; i < 32'000; ++i) {
    numbers.push_back(styles.number(packed(i * 7919)));
    numbers.push_back(styles.number(packed(i / 2 * 7919)));  // often crowded out by then
  }
  for (std::size_t i = 0; i < 32'000; ++i) {
    ASSERT_EQ(styles[numbers[2 * i]], packed(i * 7919).attributes()) << i;
    ASSERT_EQ(styles[numbers[2 * i + 1]], packed(i / 2 * 7919).attributes()) << i;
  }
  EXPECT_LE(styles.size(), 64'000u);
}

// Adds styles after what there is until the first one has been crowded out: by the one that is returned.
std::size_t crowdsOutTheFirst(BlockStyles styles, std::size_t from) {
  while (true) {
    styles.number(packed(++from));
    BlockStyles copy = styles;
    if (copy.number(packed(1)) != 0) return from;
  }
}

TEST(BlockStyles, RemembersTheTwoThatWereUsedLatestOfThoseThatCollide) {
  BlockStyles first;
  first.number(packed(1));
  const std::size_t second = crowdsOutTheFirst(first, 1);
  BlockStyles two = first;
  two.number(packed(second));
  const std::size_t third = crowdsOutTheFirst(two, second);
  EXPECT_EQ(two.number(packed(1)), 0) << "used again";
  EXPECT_EQ(two.number(packed(third)), 2);
  EXPECT_EQ(two.number(packed(1)), 0);
  EXPECT_EQ(two.number(packed(second)), 3) << "crowded out";
}

TEST(BlockStyles, TellsStylesApartThatDifferInOneBitOnly) {
  const std::uint64_t plain = StyleCode().bits();
  for (int bit = 0; bit < 61; ++bit) {
    BlockStyles styles;
    ASSERT_EQ(styles.number(StyleCode()), 0);
    ASSERT_EQ(styles.number(StyleCode::fromBits(plain ^ std::uint64_t{1} << bit)), 1) << bit;
    ASSERT_EQ(styles.number(StyleCode()), 0) << bit;
  }
}

TEST(BlockStyles, KeepsStylesThatDoNotFitACodeBesideThoseThatDo) {
  BlockStyles styles;
  EXPECT_EQ(styles.number(listed(0)), 0);
  EXPECT_EQ(styles.number(packed(7)), 1);
  EXPECT_EQ(styles.number(listed(1)), 2);
  EXPECT_EQ(styles.number(listed(0)), 0);
  EXPECT_EQ(styles.number(packed(7)), 1);
  EXPECT_EQ(styles.number(packed(7).attributes()), 1) << "packed where it can be";
  EXPECT_EQ(styles[0], listed(0));
  EXPECT_EQ(styles[1], packed(7).attributes());
  EXPECT_EQ(styles[2], listed(1));
  EXPECT_EQ(styles.listed().size(), 2u);
}

TEST(BlockStyles, KeepsThemWhenItIsSealedAndNoMemoryForMore) {
  BlockStyles styles;
  for (std::size_t i = 0; i < 1000; ++i) {
    styles.number(packed(i));
  }
  for (std::size_t i = 0; i < 5; ++i) {
    styles.number(listed(i));
  }
  const std::size_t before = styles.memoryBytes();
  styles.seal();
  EXPECT_EQ(styles.memoryBytes(), 1005 * sizeof(StyleCode) + 5 * sizeof(TextAttributes));
  EXPECT_LT(styles.memoryBytes(), before);
  EXPECT_EQ(styles[999], packed(999).attributes());
}

}  // namespace
}  // namespace zolt
