#include "history/HistoryBlock.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>

namespace zolt {
namespace {

HistoryBlock everything() {
  HistoryBlock block;
  block.text = "$ make\nh\xC3\xA9llo \xE4\xB8\x96\n";
  TextAttributes loud;
  loud.font = {.size = 17.5, .weight = FontWeight::Bold, .slant = FontSlant::Italic};
  loud.foreground = {1.5, -0.25, 0.1, 0.5};
  loud.background = Color::black;
  loud.underline = Line::Single;
  loud.strikethrough = Line::Single;
  block.styles = {StyleCode(), StyleCode::listed(0)};
  block.listedStyles = {loud};
  block.runs = {{.begin = 0, .style = 0}, {.begin = 2, .style = 1, .link = 70'000}, {.begin = 7, .style = 0}};
  block.packedStyles = {{.foreground = 0x2FFFFFF, .background = 0x1000007, .underlineColor = 0, .rendition = 0x1FF}};
  block.links = {"", "https://example.org/?a=b"};
  block.softWraps = {3, 5, 9};
  block.marks = {{.offset = 0, .kind = HistoryMarkKind::PromptStart},
                 {.offset = 2, .kind = HistoryMarkKind::CommandStart},
                 {.offset = 7, .kind = HistoryMarkKind::OutputStart},
                 {.offset = 17, .kind = HistoryMarkKind::CommandEnd, .exitStatus = 127}};
  return block;
}

TEST(HistoryBlock, SurvivesEncodingAndDecodingWithEverythingInIt) {
  const HistoryBlock block = everything();
  EXPECT_EQ(decodeHistoryBlock(encodeHistoryBlock(block)), block);
  EXPECT_EQ(decodeHistoryBlock(encodeHistoryBlock(HistoryBlock())), HistoryBlock());
}

TEST(HistoryBlock, KeepsEveryExitStatus) {
  for (const int status : {0, 1, -1, 255, INT_MAX, INT_MIN}) {
    HistoryBlock block = everything();
    block.marks.back().exitStatus = status;
    EXPECT_EQ(decodeHistoryBlock(encodeHistoryBlock(block)), block) << status;
  }
}

TEST(HistoryBlock, SkipsSectionsOfALaterVersion) {
  const std::string later = encodeHistoryBlock(everything()) + std::string("\x63\x03xyz", 5);
  EXPECT_EQ(decodeHistoryBlock(later), everything());
}

TEST(HistoryBlock, IsRejectedWhenTruncated) {
  const std::string whole = encodeHistoryBlock(everything());
  // Truncated between two sections, it is still a valid block.
  std::size_t rejected = 0;
  for (std::size_t size = 1; size < whole.size(); ++size) {
    if (!decodeHistoryBlock(std::string_view(whole).substr(0, size))) ++rejected;
  }
  EXPECT_GE(rejected, whole.size() - 8);
}

TEST(HistoryBlock, RejectsReferencesOutsideOfIt) {
  const auto rejects = [](auto change) {
    HistoryBlock block = everything();
    change(block);
    return !decodeHistoryBlock(encodeHistoryBlock(block));
  };
  EXPECT_TRUE(rejects([](HistoryBlock& block) { block.runs.back().begin = 18; })) << "a run past the text";
  EXPECT_TRUE(rejects([](HistoryBlock& block) { block.runs.back().style = 2; })) << "a style that is not there";
  EXPECT_TRUE(rejects([](HistoryBlock& block) { block.listedStyles.clear(); })) << "a listed style that is not there";
  EXPECT_TRUE(rejects([](HistoryBlock& block) { block.runs.front().begin = 1; })) << "text before the first run";
  EXPECT_TRUE(rejects([](HistoryBlock& block) { block.runs.clear(); })) << "text without a run";
  EXPECT_TRUE(rejects([](HistoryBlock& block) { block.softWraps.back() = 19; }));
  EXPECT_TRUE(rejects([](HistoryBlock& block) { block.marks.back().offset = 19; }));
  EXPECT_TRUE(rejects([](HistoryBlock& block) { block.marks.back().kind = static_cast<HistoryMarkKind>(4); }))
      << "a kind of mark that does not exist";
  EXPECT_FALSE(rejects([](HistoryBlock&) {}));
  const std::string twice = encodeHistoryBlock(everything());
  EXPECT_FALSE(decodeHistoryBlock(twice + twice)) << "a text after references to the text";
}

TEST(HistoryBlock, ToleratesAnyBytes) {
  std::mt19937 random(7);
  const std::string whole = encodeHistoryBlock(everything());
  int accepted = 0;
  for (int round = 0; round < 20'000; ++round) {
    std::string bytes = whole;
    for (int changes = 1 + static_cast<int>(random() % 4); changes > 0; --changes) {
      bytes[random() % bytes.size()] = static_cast<char>(random());
    }
    const auto block = decodeHistoryBlock(bytes);
    if (!block) continue;
    ++accepted;
    for (const HistoryRun& run : block->runs) {
      ASSERT_LT(run.begin, block->text.size());
      ASSERT_LT(run.style, block->styles.size());
    }
    for (const StyleCode style : block->styles) {
      ASSERT_TRUE(!style.isListed() || style.listIndex() < block->listedStyles.size());
      static_cast<void>(style.attributes());  // any bits are safe
    }
    for (const HistoryMark& mark : block->marks) {
      ASSERT_LE(mark.offset, block->text.size());
    }
  }
  EXPECT_GT(accepted, 1000) << "most changes to the text, colours and links are valid";
}

}  // namespace
}  // namespace zolt
