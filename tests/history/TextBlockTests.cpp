#include "history/TextBlock.h"

#include <gtest/gtest.h>

#include <string>

#include "history/LogTexts.h"

namespace zolt {
namespace {

constexpr std::size_t kCapacity = TextBlock::capacity;

// The fragments of a block as "begin-contentEnd-end@column".
std::string fragmentsOf(const TextBlock& block) {
  std::string picture;
  for (std::size_t i = 0; i < block.fragmentCount(); ++i) {
    const TextBlock::Fragment fragment = block.fragment(i);
    if (i != 0) picture += ' ';
    picture += std::to_string(fragment.begin) + '-' + std::to_string(fragment.contentEnd) + '-' +
               std::to_string(fragment.end) + '@' + std::to_string(fragment.startColumn);
  }
  return picture;
}

TEST(TextBlock, IsSplitIntoFragmentsAtLineEnds) {
  Log log;
  log.append("ab\nc\r\n\rd");
  EXPECT_EQ(fragmentsOf(*log.storage.block(0)), "0-2-3@0 3-4-6@0 6-6-7@0 7-8-8@0");
  EXPECT_FALSE(log.storage.block(0)->continuesALine());
}

TEST(TextBlock, ContinuesALineAtItsColumn) {
  Log log;
  log.append(std::string(kCapacity - 1, 'x'));
  log.append("\tab\nc");
  const auto heldSecond = log.storage.block(1);
  const TextBlock& second = *heldSecond;
  EXPECT_TRUE(second.continuesALine());
  EXPECT_EQ(fragmentsOf(second), "0-2-3@65280 3-4-4@0");
  EXPECT_EQ(second.continuedEndColumn(), 65282u);
  EXPECT_EQ(second.longestLine(), 1u);
}

TEST(TextBlock, HasNoEmptyFragmentAtItsEndOnceTheNextBlockHasBegun) {
  Log log;
  log.append(std::string(kCapacity - 1, 'x'));
  log.append("\n");
  EXPECT_EQ(fragmentsOf(*log.storage.block(0)), "0-65279-65280@0 65280-65280-65280@0");
  log.append("y");
  EXPECT_EQ(fragmentsOf(*log.storage.block(0)), "0-65279-65280@0");
  EXPECT_EQ(fragmentsOf(*log.storage.block(1)), "0-1-1@0");
}

TEST(TextBlock, GivesAWholeLineEndTheColumnAfterTheContent) {
  for (const char* text : {"abc\r\nx", "a\tb\r\nx"}) {
    Log log;
    log.append(text);
    const auto heldBlock = log.storage.block(0);
    const TextBlock& block = *heldBlock;
    const TextBlock::Fragment fragment = block.fragment(0);
    const LineColumn after = block.hasTabs() ? 9 : 3;
    EXPECT_EQ(block.endColumn(fragment), after);
    for (std::size_t offset = 3; offset <= 5; ++offset) {
      EXPECT_EQ(block.columnAt(fragment, offset), after) << offset;
    }
  }
}

TEST(TextBlock, FindsTheFirstPlaceAtOrAfterAColumn) {
  Log log;
  log.append("a\tb\nx");
  const auto heldBlock = log.storage.block(0);
  const TextBlock& block = *heldBlock;
  const auto place = [&](LineColumn column) {
    const TextBlock::Place found = block.placeAt(block.fragment(0), column);
    return std::to_string(found.offset) + '@' + std::to_string(found.column);
  };
  EXPECT_EQ(place(0), "0@0");
  EXPECT_EQ(place(1), "1@1");
  EXPECT_EQ(place(2), "2@8");
  EXPECT_EQ(place(8), "2@8");
  EXPECT_EQ(place(9), "3@9");
  EXPECT_EQ(place(100), "3@9");  // the end of the content
}

TEST(TextBlock, StopsTabsEveryEightColumns) {
  EXPECT_EQ(afterTab(0), 8u);
  EXPECT_EQ(afterTab(7), 8u);
  EXPECT_EQ(afterTab(8), 16u);
}

}  // namespace
}  // namespace zolt
