#include "text/GraphemeClusters.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "text/RandomText.h"

namespace zolt {
namespace {

using End = std::size_t (*)(std::string_view, std::size_t);

std::vector<std::string> clustersOf(std::string_view text, End endOf = clusterEnd) {
  std::vector<std::string> clusters;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t end = endOf(text, position);
    clusters.emplace_back(text.substr(position, end - position));
    position = end;
  }
  return clusters;
}

using Clusters = std::vector<std::string>;

TEST(GraphemeClusters, KeepACarriageReturnTogetherWithALineFeedOnly) {
  EXPECT_EQ(clustersOf("a\r\nb"), (Clusters{"a", "\r\n", "b"}));
  EXPECT_EQ(clustersOf("\r\r\n\n\r"), (Clusters{"\r", "\r\n", "\n", "\r"}));
}

TEST(GraphemeClusters, KeepMarksWithTheCharacterBeforeButNeverWithAControl) {
  EXPECT_EQ(clustersOf("e\u0301x"), (Clusters{"e\u0301", "x"}));
  EXPECT_EQ(clustersOf("a\u200Db"), (Clusters{"a\u200D", "b"}));
  EXPECT_EQ(clustersOf("\x1B\u0301"), (Clusters{"\x1B", "\u0301"}));
  EXPECT_EQ(clustersOf("\x7F\u0301"), (Clusters{"\x7F", "\u0301"}));
}

TEST(GraphemeClusters, KeepAPrependedMarkWithTheCharacterAfter) {
  EXPECT_EQ(clustersOf("\u0600ab"), (Clusters{"\u0600a", "b"}));
  EXPECT_EQ(clustersOf("\u0600\n"), (Clusters{"\u0600", "\n"}));
}

TEST(GraphemeClusters, KeepEmojiSequencesFlagsAndSyllablesTogether) {
  const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
  EXPECT_EQ(clustersOf(family + family), (Clusters{family, family}));
  EXPECT_EQ(clustersOf("\U0001F1E9\U0001F1EA\U0001F1E9"), (Clusters{"\U0001F1E9\U0001F1EA", "\U0001F1E9"}));
  EXPECT_EQ(clustersOf("\u1100\u1161\u11A8\u1100"), (Clusters{"\u1100\u1161\u11A8", "\u1100"}));
}

TEST(GraphemeClusters, EndAtTheSamePlaceWithAndWithoutTheAsciiShortcut) {
  RandomText random(3);
  for (int round = 0; round < 30000; ++round) {
    const std::string text = random.text(30);
    ASSERT_EQ(clustersOf(text, clusterEnd), clustersOf(text, longClusterEnd)) << escaped(text);
  }
}

TEST(GraphemeClusters, EndWithTheTextWithoutReadingPastIt) {
  const std::string text = "a\u0301";
  EXPECT_EQ(clusterEnd(std::string_view(text).substr(0, 1), 0), 1u);
  const std::string pair = "\r\n";
  EXPECT_EQ(clusterEnd(std::string_view(pair).substr(0, 1), 0), 1u);
}

TEST(Scalars, AreReadForwardsAndBackwards) {
  const std::u32string scalars = U"\x01\x7F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF";
  const std::string text = "\x01\x7F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF";
  std::size_t position = 0;
  std::size_t expectedLengths[] = {1, 1, 2, 2, 3, 3, 4, 4};
  for (std::size_t i = 0; i < scalars.size(); ++i) {
    std::size_t length = 0;
    EXPECT_EQ(scalarAt(text, position, length), scalars[i]);
    EXPECT_EQ(length, expectedLengths[i]);
    position += length;
    EXPECT_EQ(scalarBefore(text, position), scalars[i]);
  }
  EXPECT_EQ(position, text.size());
}

TEST(Scalars, JoinAnAsciiLetterBeforeThemIfTheyAreMarks) {
  EXPECT_TRUE(joinsAsciiBefore(U'\u0301'));
  EXPECT_TRUE(joinsAsciiBefore(U'\u200D'));
  EXPECT_TRUE(joinsAsciiBefore(U'\U000E0100')) << "a variation selector beyond the first plane";
  EXPECT_FALSE(joinsAsciiBefore(U'\u00E9'));
  EXPECT_FALSE(joinsAsciiBefore(U'\u0600'));
}

TEST(Scalars, JoinAnAsciiLetterAfterThemIfTheyArePrepended) {
  EXPECT_TRUE(joinsAsciiAfter(U'\u0600'));
  EXPECT_TRUE(joinsAsciiAfter(U'\U000110BD')) << "a number sign beyond the first plane";
  EXPECT_FALSE(joinsAsciiAfter(U'\u0301'));
  EXPECT_FALSE(joinsAsciiAfter(U'\u4E2D'));
}

std::string encode(char32_t scalar) {
  const auto continuation = [&](int shift) { return static_cast<char>(0x80 | (scalar >> shift & 0x3F)); };
  if (scalar < 0x800) return {static_cast<char>(0xC0 | scalar >> 6), continuation(0)};
  if (scalar < 0x10000) return {static_cast<char>(0xE0 | scalar >> 12), continuation(6), continuation(0)};
  return {static_cast<char>(0xF0 | scalar >> 18), continuation(12), continuation(6), continuation(0)};
}

TEST(Scalars, JoinAsciiExactlyWhereTheClusterContinues) {
  std::string text;
  for (char32_t scalar = 0x80; scalar < 0x20000; ++scalar) {
    if (scalar >= 0xD800 && scalar < 0xE000) continue;
    const std::string encoded = encode(scalar);
    text = encoded;
    text.insert(0, 1, 'a');
    ASSERT_EQ(joinsAsciiBefore(scalar), longClusterEnd(text, 0) > 1) << std::hex << static_cast<std::uint32_t>(scalar);
    text = encoded + "a";
    ASSERT_EQ(joinsAsciiAfter(scalar), longClusterEnd(text, 0) > encoded.size())
        << std::hex << static_cast<std::uint32_t>(scalar);
  }
}

}  // namespace
}  // namespace zolt
