#include <gtest/gtest.h>

#include "canvas/CanvasLiterals.h"
#include "view/LogRowSource.h"

namespace zolt {
namespace {

struct Log {
  explicit Log(const std::string& text, int columns = 10) {
    storage.append(AttributedString(text, TextAttributes{}));
    source.sync();
    source.setColumns(columns);
  }

  // The row as a person sees it.
  std::string row(std::int64_t number) {
    std::string picture;
    const auto content = source.content(CanvasRow(number));
    for (const TextPiece& piece : content->pieces) {
      picture.resize(static_cast<std::size_t>(piece.column.value), ' ');
      picture += content->textOf(piece);
    }
    return picture;
  }

  TextStorage storage;
  LogRowSource source{storage};
};

TEST(LogRowSource, WrapsLongLinesAtTheCharacter) {
  Log log("abcdefghijklmno\nxyz");
  ASSERT_EQ(log.source.rowCount(), 3);
  EXPECT_EQ(log.row(0), "abcdefghij");
  EXPECT_EQ(log.row(1), "klmno");
  EXPECT_EQ(log.row(2), "xyz");
}

TEST(LogRowSource, EndsALineAtALineFeedACarriageReturnOrBothTogether) {
  Log log("a\nb\rc\r\nd");
  ASSERT_EQ(log.source.rowCount(), 4);
  EXPECT_EQ(log.row(0) + log.row(1) + log.row(2) + log.row(3), "abcd");
}

TEST(LogRowSource, StopsTabsEveryEightColumns) {
  Log log("a\tb\t", 40);
  EXPECT_EQ(log.row(0), "a       b       ");
  EXPECT_EQ(log.source.content(0_row)->end, 16_col);
}

TEST(LogRowSource, ShowsTheRestOfATabThatReachesOverTheEndOfARow) {
  Log log("123456789\tx", 10);
  EXPECT_EQ(log.row(0), "123456789 ");
  EXPECT_EQ(log.row(1), "      x");
}

TEST(LogRowSource, FindsColumnsAndPositionsInARow) {
  Log log("a\tbc", 40);
  const RowContent row = *log.source.content(0_row);
  EXPECT_EQ(row.positionAt(0_col), 0_pos);
  EXPECT_EQ(row.positionAt(8_col), 2_pos);
  EXPECT_EQ(row.positionAt(4_col), 2_pos) << "inside the tab: the character after it";
  EXPECT_EQ(row.positionAt(99_col), 4_pos);
  EXPECT_EQ(row.columnOf(0_pos), 0_col);
  EXPECT_EQ(row.columnOf(2_pos), 8_col);
  EXPECT_EQ(row.columnOf(4_pos), 10_col);
}

TEST(LogRowSource, GivesRowsAnotherStampOnceTheirTextIsLost) {
  // Loses everything as soon as it is cold.
  TextStorage storage({.memoryBudget = 0, .hotBlocks = 2, .folder = "nowhere", .openFile = [](const std::string&) {
                         return std::unique_ptr<SpillFile>();
                       }});
  LogRowSource source(storage);
  source.setColumns(80);
  storage.append(AttributedString(std::string(79, 'x') + '\n', TextAttributes()));
  source.sync();
  const RowContent before = *source.content(0_row);
  EXPECT_EQ(source.content(0_row)->stamp, before.stamp);
  for (int i = 0; i < 10; ++i) {
    storage.append(AttributedString(std::string(TextBlock::capacity, 'x'), TextAttributes()));
  }
  storage.waitUntilIdle();
  source.sync();
  const RowContent after = *source.content(0_row);
  ASSERT_NE(after.text, before.text) << "a notice stands there";
  EXPECT_EQ(after.range, before.range);
  EXPECT_NE(after.stamp, before.stamp);
}

TEST(LogRowSource, SelectsWordsAsPeopleNameFiles) {
  Log log("see /usr/lib-2/a_b.c, done", 80);
  const TextRange word = log.source.wordAt(8_pos);
  EXPECT_EQ(log.source.text(word), "/usr/lib-2/a_b.c");
  EXPECT_EQ(log.source.text(log.source.wordAt(20_pos)), ",");
  EXPECT_TRUE(log.source.wordAt(log.source.end()).empty());
}

TEST(LogRowSource, SelectsLinesWithTheirEnds) {
  Log log("one\ntwo\nthree", 80);
  EXPECT_EQ(log.source.text(log.source.lineAt(5_pos)), "two\n");
  EXPECT_EQ(log.source.text(log.source.lineAt(9_pos)), "three");
}

TEST(LogRowSource, CopiesEveryLineEndAsALineFeed) {
  Log log("a\rb\r\nc\nd", 80);
  EXPECT_EQ(log.source.text({.begin = 0_pos, .end = log.source.end()}), "a\nb\nc\nd");
}

TEST(LogRowSource, ShowsEachPieceInItsStyle) {
  Log log("", 80);
  TextAttributes loud;
  loud.font.weight = FontWeight::Bold;
  loud.font.slant = FontSlant::Italic;
  loud.foreground = {1, 0.5, 0, 1};
  loud.background = Color{0, 0, 2, 1};  // more than a screen can show
  loud.underline = Line::Single;
  loud.strikethrough = Line::Single;
  TextAttributes dim;
  dim.foreground = Color::white.withAlpha(0.5);
  TextAttributes hidden;
  hidden.foreground = Color::clear;
  log.storage.append(AttributedString("plain", TextAttributes{}));
  log.storage.append(AttributedString("loud", loud));
  log.storage.append(AttributedString("dim", dim));
  log.storage.append(AttributedString("hidden", hidden));
  log.source.sync();
  const RowContent row = *log.source.content(0_row);
  ASSERT_EQ(row.pieces.size(), 4U);
  EXPECT_EQ(row.pieces[0].look, CellLook());
  EXPECT_EQ(row.textOf(row.pieces[1]), "loud");
  EXPECT_EQ(row.pieces[1].column, 5_col);
  EXPECT_EQ(row.pieces[1].look, (CellLook{.foreground = qRgb(255, 128, 0),
                                          .background = qRgb(0, 0, 255),
                                          .weight = FontWeight::Bold,
                                          .slant = FontSlant::Italic,
                                          .underline = LineStyle::Single,
                                          .struck = true}));
  EXPECT_EQ(row.pieces[2].look, (CellLook{.foreground = qRgba(255, 255, 255, 128)}));
  EXPECT_EQ(qAlpha(row.pieces[3].look.foreground), 0);
}

}  // namespace
}  // namespace zolt
