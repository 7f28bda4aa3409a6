#include "vt/history/Scrollback.h"

#include <gtest/gtest.h>

#include <random>

#include "vt/RandomOutput.h"
#include "vt/Terminal.h"
#include "vt/TerminalPicture.h"

namespace zolt::vt {
namespace {

std::vector<HistoryLine> linesOf(const Scrollback& scrollback) {
  std::vector<HistoryLine> lines;
  scrollback.forEachLine([&](HistoryLine&& line) { lines.push_back(std::move(line)); });
  return lines;
}

TEST(Scrollback, KeepsTextStylesLinksAndMarks) {
  Terminal terminal({.rows = 2, .columns = 20});
  terminal.feed(
      "\033]133;A\a$ "
      "\033]133;B\a\033[1;4:3;38:2::1:2:3mmake\033[0m\r\n\033]8;id=7;https://a.b/\033\\there\033]8;;\033\\ "
      "\u4E2D\r\n\r\n");
  const auto lines = linesOf(terminal.screen().scrollback());
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].text, "$ make");
  ASSERT_EQ(lines[0].runs.size(), 2U);
  EXPECT_EQ(lines[0].runs[1].length, 4U);
  EXPECT_EQ(lines[0].runs[1].style.flags, kBold);
  EXPECT_EQ(lines[0].runs[1].style.underline, Underline::Curly);
  EXPECT_EQ(lines[0].runs[1].style.foreground, CellColor::direct(1, 2, 3));
  ASSERT_EQ(lines[0].marks.size(), 2U);
  EXPECT_EQ(lines[0].marks[1].offset, 2U);
  EXPECT_EQ(lines[0].marks[1].kind, HistoryMarkKind::CommandStart);
  EXPECT_EQ(lines[1].text, "there \u4E2D");
  EXPECT_EQ(lines[1].runs[0].link, (LinkTarget{.id = "7", .uri = "https://a.b/"}));
  EXPECT_EQ(lines[1].runs[1].link, LinkTarget());
}

TEST(Scrollback, JoinsTheRowsOfAWrappedLine) {
  Terminal terminal({.rows = 2, .columns = 5});
  terminal.feed("0123456789abcdefg\r\nx\r\ny");
  const auto lines = linesOf(terminal.screen().scrollback());
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].text, "0123456789abcdefg");
}

TEST(Scrollback, SavesNothingFromTheAlternateScreenOrFromARegion) {
  Terminal terminal({.rows = 3, .columns = 5});
  terminal.feed("\033[?1049h1\r\n2\r\n3\r\n4\r\n5\033[?1049l\033[2;3r\033[3;1Ha\r\nb\r\nc\r\n");
  EXPECT_EQ(terminal.screen().scrollback().lineCount(), 0U);
}

TEST(Scrollback, IsErasedOnlyByItsOwnFunction) {
  Terminal terminal({.rows = 2, .columns = 5});
  terminal.feed("1\r\n2\r\n3\r\n\033[2J\033c");
  EXPECT_EQ(terminal.screen().scrollback().lineCount(), 2U);
  terminal.feed("\033[3J");
  EXPECT_EQ(terminal.screen().scrollback().lineCount(), 0U);
}

// Uses many blocks, most of them compressed.
TEST(Scrollback, KeepsEveryLineAcrossManyBlocks) {
  for (const std::size_t bulkBytes : {std::size_t{4096}, SIZE_MAX}) {
    TerminalSettings settings;
    settings.bulkBytes = bulkBytes;
    settings.history.hotBlocks = 1;
    Terminal terminal({.rows = 24, .columns = 80}, settings);
    constexpr int kLines = 60'000;
    std::string output;
    for (int i = 0; i < kLines; ++i) {
      output += "\033[3" + std::to_string(i % 8) + "mline \033[0m" + std::to_string(i) + "\r\n";
    }
    for (std::size_t at = 0; at < output.size(); at += 10'000) {
      terminal.feed(std::string_view(output).substr(at, 10'000));
    }
    terminal.screen().scrollback().waitForCompression();
    const auto lines = linesOf(terminal.screen().scrollback());
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(kLines - 23));
    EXPECT_EQ(terminal.screen().scrollback().lineCount(), lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
      ASSERT_EQ(lines[i].text, "line " + std::to_string(i));
      ASSERT_EQ(lines[i].runs.size(), 2U);
      ASSERT_EQ(lines[i].runs[0].style.foreground, CellColor::indexed(static_cast<std::uint8_t>(i % 8))) << i;
    }
  }
}

TEST(Scrollback, ReturnsLinesInReverseOrder) {
  Scrollback scrollback{HistorySettings()};
  CellTables tables;
  const auto append = [&](std::string_view text, bool wraps) {
    std::vector<Cell> cells;
    for (const char c : text) {
      cells.emplace_back(static_cast<char32_t>(c), Cell::Width::Narrow, 0);
    }
    scrollback.append(cells, wraps, {}, tables);
  };
  append("one", false);
  append("two ", true);
  append("and more", false);
  append("open", true);
  EXPECT_TRUE(scrollback.endsMidLine());
  const auto open = scrollback.takeLastLine(1000);
  ASSERT_TRUE(open);
  EXPECT_EQ(open->text, "open");
  EXPECT_FALSE(open->isEnded);
  EXPECT_FALSE(scrollback.takeLastLine(3)) << "the line is longer";
  const auto two = scrollback.takeLastLine(1000);
  ASSERT_TRUE(two);
  EXPECT_EQ(two->text, "two and more");
  EXPECT_TRUE(two->isEnded);
  EXPECT_EQ(scrollback.takeLastLine(1000)->text, "one");
  EXPECT_FALSE(scrollback.takeLastLine(1000));
  EXPECT_EQ(scrollback.lineCount(), 0U);
}

TEST(Scrollback, SplitsAnEndlessLineIntoBlocks) {
  Terminal terminal({.rows = 3, .columns = 50});
  const std::string text(300'000, 'x');
  terminal.feed(text);
  std::string kept;
  for (const HistoryLine& line : linesOf(terminal.screen().scrollback())) {
    kept += line.text;
    EXPECT_FALSE(line.isEnded);
  }
  EXPECT_EQ(kept.size(), text.size() - 150);
  terminal.resize({.rows = 5, .columns = 33});
  EXPECT_EQ(test::brokenRule(terminal.screen()), "");
  EXPECT_EQ(test::linesOf(terminal.screen()), text);
}

}  // namespace
}  // namespace zolt::vt
