// The rows of a scrollback's text: those of its blocks against a screen that prints the same, and those of the whole
// against a naive layout.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "history/RowIndex.h"
#include "text/RandomText.h"
#include "vt/ScrollbackModel.h"
#include "vt/Terminal.h"
#include "vt/history/Scrollback.h"
#include "vt/history/ScrollbackText.h"

namespace zolt::vt {
namespace {

using test::ScrollbackModel;

// With all that joins and widens: marks, flags, keycaps, emoji with variation selectors and joiners, Hangul, Indic.
constexpr Piece kPieces[] = {{"a", 9},
                             {"bc ", 5},
                             {"1\uFE0F\u20E3", 1},
                             {"e\u0301", 2},
                             {"\u4E2D", 4},
                             {"\U0001F1E9\U0001F1EA", 1},
                             {"\u2764\uFE0F", 1},
                             {"\U0001F469\u200D\U0001F469\u200D\U0001F466", 1},
                             {"\u1112\u1161\u11AB", 1},
                             {"\u0915\u094D\u0937", 1},
                             {"x\u200B", 1},
                             {"\u00E9", 2}};

std::vector<std::string> rowsOfScreen(const std::string& text, int columns, bool clusters) {
  Terminal terminal({.rows = 400, .columns = columns});
  if (clusters) terminal.feed("\033[?2027h");
  terminal.feed(text);
  const Grid& grid = terminal.screen().grid();
  std::vector<std::string> rows;
  for (int row = 0; row <= terminal.screen().cursor().row; ++row) {
    std::string& shown = rows.emplace_back();
    for (const Cell cell : grid.row(row).first(grid.state(row).extent)) {
      terminal.screen().tables().appendText(cell, shown);
    }
  }
  return rows;
}

std::vector<std::string> rowsOfBlock(const std::string& text, int columns, bool clusters) {
  auto content = std::make_shared<HistoryBlock>();
  content->text = text;
  content->clusters = clusters;
  const ScrollbackBlock block(content, {});
  const LineBlock::Fragment fragment = block.fragment(0);
  const auto width = static_cast<LineColumn>(columns);
  const RowNumber count = block.rows(fragment, width);
  std::vector<std::string> rows;
  for (RowNumber row = 0; row < count; ++row) {
    const std::size_t begin = block.rowBegin(fragment, width, row).offset;
    const std::size_t end = block.rowBegin(fragment, width, row + 1).offset;
    for (std::size_t offset = begin; offset < end; ++offset) {
      EXPECT_EQ(block.rowAt(fragment, width, offset), row) << offset;
    }
    rows.push_back(text.substr(begin, end - begin));
  }
  return rows;
}

TEST(ScrollbackRows, AreThoseOfAScreenThatPrintsTheLine) {
  RandomText random(11, kPieces);
  for (int round = 0; round < 300; ++round) {
    std::string text = random.text(1 + static_cast<std::size_t>(round));
    text.push_back('a');
    for (const int columns : {2, 3, 7, 40}) {
      for (const bool clusters : {false, true}) {
        ASSERT_EQ(rowsOfBlock(text, columns, clusters), rowsOfScreen(text, columns, clusters))
            << columns << (clusters ? " clusters: " : " characters: ") << text;
      }
    }
  }
}

TEST(ScrollbackRows, HaveAtLeastOneRowForALineAndNoneForNoLine) {
  EXPECT_EQ(rowsOfBlock("\n", 5, false).size(), 1U);
  Scrollback scrollback{HistorySettings()};
  const ScrollbackText text(scrollback.view());
  RowIndex index(text, 5);
  EXPECT_EQ(index.rowCount(), 0);
  EXPECT_EQ(index.rowAt(text.end()), 0);
  EXPECT_EQ(index.locate(0).begin, text.end());
}

TEST(ScrollbackRows, OfALineOfAsciiInManyBlocksAreAllFull) {
  ScrollbackModel model;
  for (int i = 0; i < 3000; ++i) {
    model.append(std::string(77, 'x'), true);
  }
  const ScrollbackText text(model.scrollback().view());
  ASSERT_GT(text.endBlock(), 3U);
  RowIndex index(text, 50);
  EXPECT_EQ(index.rowCount(), (3000 * 77 + 49) / 50);
  for (RowNumber row = 0; row < index.rowCount(); row += 7) {
    EXPECT_EQ(index.locate(row).begin, TextPosition(static_cast<std::uint64_t>(row) * 50));
  }
}

TEST(ScrollbackRows, OfALineWithWideCharactersBeginAnewWithEachBlock) {
  ScrollbackModel model;
  for (int i = 0; i < 2000; ++i) {
    model.append("\u4E2D" + std::string(75, 'x'), true);
  }
  const ScrollbackText text(model.scrollback().view());
  ASSERT_GT(text.endBlock(), 2U);
  EXPECT_TRUE(text.summary(1).continuesALine);
  EXPECT_EQ(text.summary(1).startColumn, 0U);
  RowIndex index(text, 50);
  EXPECT_EQ(index.locate(index.rowAt(text.summary(1).start)).begin, text.summary(1).start);
  EXPECT_EQ(index.locate(index.rowAt(text.summary(1).start - 1)).end, text.summary(1).start);
}

TEST(ScrollbackRows, FollowTheTextThroughEverythingThatHappensToIt) {
  std::mt19937 random(5);
  for (int round = 0; round < 6; ++round) {
    ScrollbackModel model({.hotBlocks = 1});
    ScrollbackText text(model.scrollback().view());
    RowIndex index(text, 40);
    for (int step = 0; step < 1500; ++step) {
      model.step(random);
      if (random() % 10 != 0) continue;
      text.show(model.scrollback().view());
      index.sync();
      if (random() % 4 == 0) index.setColumns(1 + static_cast<std::int64_t>(random() % 90));
      const test::NaiveScrollbackRows rows(model, text, static_cast<int>(index.columns()));
      // Found by their place before all rows are counted.
      const TextPosition asked = text.begin() + random() % (text.end() - text.begin() + 1);
      if (asked < text.end()) {
        ASSERT_EQ(index.locate(index.rowAt(asked)).begin, rows.rowOf(asked).begin) << round << " " << step;
      }
      while (index.refine(100)) {
      }
      ASSERT_EQ(index.rowCount(), static_cast<RowNumber>(rows.rows().size())) << round << " " << step;
      const std::size_t every = 1 + rows.rows().size() / 40;
      for (std::size_t row = random() % every; row < rows.rows().size(); row += every) {
        const RowIndex::Row found = index.locate(static_cast<RowNumber>(row));
        ASSERT_EQ(found.begin, rows.rows()[row].begin) << round << " " << step << " row " << row;
        ASSERT_EQ(found.end, rows.rows()[row].end) << round << " " << step << " row " << row;
        ASSERT_EQ(index.rowAt(found.begin), static_cast<RowNumber>(row)) << round << " " << step;
      }
    }
  }
}

TEST(ScrollbackRows, ShiftWhenBlocksAreTrimmedAndKeepTheRestOfARowThatIsCut) {
  ScrollbackModel model;
  model.append(std::string(65'530, 'x'), true);
  model.append(std::string(100, 'y'), false);
  for (int i = 0; i < 3; ++i) {
    model.append(std::string(66'000, 'z'), false);
  }
  ScrollbackText text(model.scrollback().view());
  RowIndex index(text, 64);
  const std::uint64_t before = index.generation();
  model.setLimit(3);
  text.show(model.scrollback().view());
  index.sync();
  EXPECT_GT(index.generation(), before);
  ASSERT_EQ(text.begin(), TextPosition(65'631));
  EXPECT_EQ(index.locate(0).begin, text.begin());
  EXPECT_EQ(index.rowCount(), 3 * ((66'000 + 63) / 64));
}

TEST(ScrollbackRows, KeepTheColumnsOfARowThatIsCutInTwo) {
  ScrollbackModel model;
  for (int i = 0; i < 3000; ++i) {
    model.append(std::string(70, 'x'), i != 1500);
  }
  for (int i = 0; i < 3000; ++i) {
    model.append("more text", false);
  }
  model.setLimit(2990);
  const ScrollbackText text(model.scrollback().view());
  ASSERT_TRUE(text.summary(text.firstBlock()).continuesALine);
  const LineColumn column = text.summary(text.firstBlock()).startColumn;
  for (const LineColumn columns : {64U, 50U}) {
    RowIndex index(text, static_cast<std::int64_t>(columns));
    const RowIndex::Row first = index.locate(0);
    EXPECT_EQ(first.begin, text.begin());
    EXPECT_EQ(first.beginColumn, column);
    EXPECT_EQ(first.firstColumn, column / columns * columns);
    EXPECT_EQ(first.end, text.begin() + (columns - column % columns));
    EXPECT_EQ(index.locate(1).begin, first.end);
    EXPECT_EQ(index.rowAt(text.begin()), 0);
    EXPECT_EQ(index.rowAt(first.end), 1);
    EXPECT_EQ(index.rowAt({}), 0) << "what is gone";
  }
}

}  // namespace
}  // namespace zolt::vt
