#include "history/OutputWriter.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "history/LogTexts.h"
#include "history/TextStorage.h"

namespace zolt {
namespace {

std::string written(const TextStorage& storage, OutputWriter writer = OutputWriter()) {
  const TextSnapshot text = storage.snapshot(0, storage.blockCount());
  std::string out;
  for (std::size_t i = text.firstBlock(); i < text.endBlock(); ++i) {
    writer.append(text, i, out);
  }
  writer.finish(out);
  return out;
}

// The expected text, byte by byte: CR becomes LF, and a LF after a CR is dropped.
std::string withLineFeeds(std::string_view text) {
  std::string result;
  char before = 0;
  for (const char c : text) {
    const bool restOfPair = c == '\n' && before == '\r';
    if (!restOfPair) result += c == '\r' ? '\n' : c;
    before = c;
  }
  return result;
}

// Reports where two long texts differ. GoogleTest's own line by line difference takes minutes for such texts.
testing::AssertionResult same(std::string_view actual, std::string_view expected) {
  if (actual == expected) return testing::AssertionSuccess();
  const auto at = static_cast<std::size_t>(std::ranges::mismatch(actual, expected).in1 - actual.begin());
  return testing::AssertionFailure() << actual.size() << " bytes instead of " << expected.size()
                                     << ", different from byte " << at << ": " << escaped(actual.substr(at, 40));
}

// Styles that differ in size, by which `appendName` names them.
TextAttributes style(double size) {
  TextAttributes attributes;
  attributes.font.size = size;
  return attributes;
}

void appendName(std::string& out, const TextAttributes& from, const TextAttributes& to) {
  out += '<' + std::to_string(static_cast<int>(from.font.size)) + '-' + std::to_string(static_cast<int>(to.font.size)) +
         '>';
}

TEST(OutputWriter, WritesALineFeedForEachLineEnd) {
  TextStorage storage;
  storage.append(AttributedString("a\nb\rc\r\nd\n\re\r\r\nf", TextAttributes()));
  EXPECT_EQ(written(storage), "a\nb\nc\nd\n\ne\n\nf");
}

TEST(OutputWriter, WritesNothingForNoText) {
  EXPECT_EQ(written(TextStorage()), "");
  EXPECT_EQ(written(TextStorage(), OutputWriter(appendName)), "");
}

TEST(OutputWriter, WritesTextOfManyBlocks) {
  for (const NamedText& named : severalBlocksOfText()) {
    TextStorage storage;
    storage.append(AttributedString(named.text, TextAttributes()));
    EXPECT_TRUE(same(written(storage), withLineFeeds(named.text))) << named.name;
    EXPECT_TRUE(same(written(storage, OutputWriter(appendName)), withLineFeeds(named.text))) << named.name;
  }
}

TEST(OutputWriter, WritesOneLineFeedForALineEndSplitBetweenRunsOrBlocks) {
  for (const std::string& ending : boundaryEndings()) {
    const std::string text = std::string(TextBlock::capacity - 1, 'x') + ending + "more";
    TextStorage storage;
    for (std::size_t i = 0; i < text.size(); ++i) {
      storage.append(AttributedString(text.substr(i, 1), style(i % 2 == 0 ? 1 : 2)));
    }
    EXPECT_TRUE(same(written(storage), withLineFeeds(text)));
    const auto nothing = [](std::string&, const TextAttributes&, const TextAttributes&) {};
    EXPECT_TRUE(same(written(storage, OutputWriter(nothing)), withLineFeeds(text)));
  }
}

TEST(OutputWriter, WritesOneLineFeedForALineEndSplitBetweenSnapshots) {
  TextStorage first;
  first.append(AttributedString("a\r", TextAttributes()));
  TextStorage second;
  second.append(AttributedString("\n\nb", TextAttributes()));
  OutputWriter writer;
  std::string out;
  writer.append(first.snapshot(0, 1), 0, out);
  writer.append(second.snapshot(0, 1), 0, out);
  EXPECT_EQ(out, "a\n\nb");
}

TEST(OutputWriter, WritesAStyleWhereItChangesAndTheDefaultAtTheEnd) {
  TextStorage storage;
  storage.append(AttributedString("plain", TextAttributes()));
  storage.append(AttributedString(" one", style(1)));
  storage.append(AttributedString(" more", style(1)));
  storage.append(AttributedString(" two", style(2)));
  EXPECT_EQ(written(storage, OutputWriter(appendName)), "plain<14-1> one more<1-2> two<2-14>");
}

TEST(OutputWriter, WritesNoStyleTwiceForTextOfManyBlocks) {
  const std::string text(3 * TextBlock::capacity, 'x');
  TextStorage storage;
  storage.append(AttributedString(text, style(1)));
  EXPECT_TRUE(same(written(storage, OutputWriter(appendName)), "<14-1>" + text + "<1-14>"));
}

TEST(OutputWriter, WritesNoStyleWithoutText) {
  TextStorage storage;
  storage.append(AttributedString("a\r", style(1)));
  storage.append(AttributedString("\n", style(2)));
  storage.append(AttributedString("b", style(1)));
  EXPECT_EQ(written(storage, OutputWriter(appendName)), "<14-1>a\nb<1-14>");
}

TEST(OutputWriter, WritesTheReplacementForLostText) {
  TextStorage storage(
      {.memoryBudget = 0, .hotBlocks = 1, .folder = "nowhere", .openFile = [](const std::string&) { return nullptr; }});
  const std::string line = "a line that will be lost\n";
  for (int i = 0; i < 20000; ++i) {
    storage.append(AttributedString(line, style(1)));
  }
  storage.waitUntilIdle();
  ASSERT_GT(storage.usage().droppedBlocks, 0U);
  const std::string expected = withLineFeeds(storage.text({}, storage.end()));
  ASSERT_TRUE(expected.starts_with(kHistoryLostNotice));
  EXPECT_TRUE(same(written(storage), expected));
  EXPECT_TRUE(written(storage, OutputWriter(appendName)).starts_with(kHistoryLostNotice)) << "in the default style";
}

}  // namespace
}  // namespace zolt
