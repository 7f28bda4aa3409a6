#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "vt/RandomOutput.h"
#include "vt/SnapshotCheck.h"

namespace zolt::vt {
namespace {

using test::snapshotError;

std::string textOf(const ScreenSnapshot& snapshot) {
  std::string text;
  for (const auto& row : snapshot.rows) {
    text += row->text + (row->wraps ? "+" : "|");
  }
  return text;
}

TEST(ScreenSnapshot, EqualsOneMadeFromScratchWhateverHasHappened) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    const auto side = [&](unsigned most) { return 1 + static_cast<int>(random() % most); };
    TerminalSettings settings;
    settings.graphemeClusters = random() % 2 == 0;
    settings.bulkBytes = random() % 2 == 0 ? 1 : 4096;
    Terminal terminal({.rows = side(12), .columns = side(30)}, settings);
    for (int step = 0; step < 30; ++step) {
      terminal.feed(test::randomOutput(random, 10));
      ASSERT_EQ(snapshotError(terminal), "") << "round " << round << ", step " << step;
      if (random() % 8 == 0) terminal.resize({.rows = side(12), .columns = side(30)});
    }
  }
}

TEST(ScreenSnapshot, SharesTheRowsThatDidNotChange) {
  Terminal terminal({.rows = 4, .columns = 10});
  terminal.feed("one\r\ntwo\r\nthree\r\n");
  const auto before = terminal.snapshot();
  terminal.feed("\033[2;1HTWO\033[4;1H");
  const auto after = terminal.snapshot();
  EXPECT_EQ(after->rows[0], before->rows[0]);
  EXPECT_NE(after->rows[1], before->rows[1]);
  EXPECT_EQ(after->rows[1]->text, "TWO");
  EXPECT_EQ(before->rows[1]->text, "two") << "what was handed out stays as it was";
  EXPECT_EQ(after->rows[2], before->rows[2]);
}

TEST(ScreenSnapshot, SharesTheRowsThatOnlyScroll) {
  Terminal terminal({.rows = 4, .columns = 10});
  terminal.feed("one\r\ntwo\r\nthree\r\nfour");
  const auto before = terminal.snapshot();
  terminal.feed("\r\nfive");
  const auto after = terminal.snapshot();
  EXPECT_EQ(after->rows[0], before->rows[1]);
  EXPECT_EQ(after->rows[1], before->rows[2]);
  EXPECT_EQ(after->rows[3]->text, "five");
}

TEST(ScreenSnapshot, HasTheTextThatARowAddsToItsLine) {
  Terminal terminal({.rows = 3, .columns = 5});
  terminal.feed("ab \u6F22\u5B57c\r\n\033[41m\033[K");
  const auto snapshot = terminal.snapshot();
  // The second wide character does not fit: the row ends with a filler, which is no text.
  EXPECT_EQ(textOf(*snapshot), "ab \u6F22+\u5B57c|     |");
  EXPECT_EQ(snapshot->rows[0]->columns, 5);
  ASSERT_EQ(snapshot->rows[0]->clusters.size(), 1U);
  EXPECT_EQ(snapshot->rows[0]->clusters[0], (SnapshotRow::Cluster{.begin = 3, .end = 6, .column = 3, .columns = 2}));
}

TEST(ScreenSnapshot, KeepsWhatItsCellsReferTo) {
  Terminal terminal({.rows = 2, .columns = 20});
  terminal.feed("\033[1;4:3;58:5:9mx\033[m\033]8;id=a;https://example.org/\033\\link\033]8;;\033\\ e\u0301");
  const auto snapshot = terminal.snapshot();
  const SnapshotRow& row = *snapshot->rows[0];
  ASSERT_EQ(row.runs.size(), 3U);
  EXPECT_EQ(row.runs[0].style,
            (Style{.underlineColor = CellColor::indexed(9), .flags = kBold, .underline = Underline::Curly}));
  ASSERT_NE(row.runs[1].link, nullptr);
  EXPECT_EQ(row.runs[1].link->uri, "https://example.org/");
  EXPECT_EQ(row.runs[2].link, nullptr);
  EXPECT_EQ(row.text, "xlink e\u0301");
  ASSERT_EQ(row.clusters.size(), 1U);
  EXPECT_EQ(row.clusters[0].columns, 1);
}

// Its table is swept when it is full, and the numbers of styles that no cell has any more are given to others.
TEST(ScreenSnapshot, KeepsItsStylesWhenTheirNumbersAreGivenAnew) {
  Terminal terminal({.rows = 3, .columns = 20});
  terminal.feed("\033[38;2;1;2;3mkept\033[m \033]8;;https://example.org/\033\\link\033]8;;\033\\ e\u0301");
  const auto colorOf = [](int number) {
    return CellColor::direct(static_cast<std::uint8_t>(number >> 12), static_cast<std::uint8_t>(number >> 6 & 63),
                             static_cast<std::uint8_t>(number & 63));
  };
  std::vector<std::shared_ptr<const ScreenSnapshot>> held{terminal.snapshot()};
  constexpr int kStyles = 3 * 65'536;
  std::string output;
  for (int number = 1; number <= kStyles; ++number) {
    const CellColor color = colorOf(number);
    output += "\033[2;1H\033[38;2;" + std::to_string(color.red()) + ";" + std::to_string(color.green()) + ";" +
              std::to_string(color.blue()) + "mx";
    if (number % 4096 != 0) continue;
    terminal.feed(std::exchange(output, {}));
    ASSERT_EQ(snapshotError(terminal), "") << number;
    held.push_back(terminal.snapshot());
  }
  const SnapshotRow& first = *held.front()->rows[0];
  for (std::size_t i = 0; i < held.size(); ++i) {
    ASSERT_TRUE(haveSameContent(*held[i]->rows[0], first)) << i;
    if (i > 0) {
      ASSERT_EQ(held[i]->rows[1]->runs[0].style.foreground, colorOf(static_cast<int>(i) * 4096)) << i;
    }
  }
  EXPECT_EQ(first.runs[0].style.foreground, CellColor::direct(1, 2, 3));
}

TEST(ScreenSnapshot, TellsTheCursorAsTheProgramOrElseTheUserHasSetIt) {
  Terminal terminal({.rows = 2, .columns = 20});
  const auto style = [&] { return terminal.snapshot()->cursor.style; };
  constexpr CursorStyle kSteadyBar{.shape = CursorShape::Bar, .blinks = false};
  terminal.feed("\u6F22\b");
  EXPECT_EQ(terminal.snapshot()->cursor.position, (Position{.row = 0, .column = 0}));
  EXPECT_EQ(terminal.snapshot()->cursor.columns, 2) << "it covers the wide character";
  terminal.setUserCursor(kSteadyBar);
  EXPECT_EQ(style(), kSteadyBar);
  terminal.feed("\033[4 q\033[?25l");
  EXPECT_EQ(style(), (CursorStyle{.shape = CursorShape::Underline, .blinks = false}));
  EXPECT_FALSE(terminal.snapshot()->cursor.isVisible);
  terminal.feed("\033[0 q");
  EXPECT_EQ(style(), kSteadyBar);
  terminal.feed("\033[?12h");
  EXPECT_EQ(style(), (CursorStyle{.shape = CursorShape::Bar, .blinks = true}));
  terminal.feed("\033[?12l");
  EXPECT_EQ(style(), kSteadyBar);
  terminal.feed("\033[?12h\033[3 q\033c");
  EXPECT_EQ(style(), kSteadyBar);
}

TEST(ScreenSnapshot, AProgramThatAsksForTheCursorIsToldWhatTheUserSees) {
  Terminal terminal({.rows = 2, .columns = 20});
  terminal.setUserCursor({.shape = CursorShape::Underline, .blinks = false});
  terminal.feed("\033P$q q\033\\");
  EXPECT_EQ(terminal.takeReplies(), "\033P1$r4 q\033\\");
}

TEST(ScreenSnapshot, KeepsThePaletteAsLongAsItIsTheSame) {
  Terminal terminal({.rows = 2, .columns = 20});
  const auto first = terminal.snapshot();
  terminal.feed("text");
  EXPECT_EQ(terminal.snapshot()->palette, first->palette);
  terminal.feed("\033]4;1;#123456\033\\");
  const auto changed = terminal.snapshot();
  EXPECT_NE(changed->palette, first->palette);
  EXPECT_EQ(changed->palette->indexed(1), (Rgb{0x12, 0x34, 0x56}));
}

TEST(ScreenSnapshot, TellsWhatInputDependsOn) {
  Terminal terminal({.rows = 2, .columns = 20});
  EXPECT_FALSE(terminal.snapshot()->input.alternateScroll);
  terminal.feed("\033[?1049h\033[?2004h\033[?1004h");
  const auto snapshot = terminal.snapshot();
  EXPECT_TRUE(snapshot->isAlternate);
  EXPECT_TRUE(snapshot->input.alternateScroll);
  EXPECT_TRUE(snapshot->input.bracketedPaste);
  EXPECT_EQ(focusBytes(true, snapshot->input), "\033[I");
  terminal.feed("\033[?1000h");
  EXPECT_FALSE(terminal.snapshot()->input.alternateScroll) << "the program has the wheel";
}

TEST(ScreenSnapshot, TellsWhereTheCharacterInAColumnBegins) {
  Terminal terminal({.rows = 2, .columns = 20});
  terminal.feed("ab\u6F22c\u00E9d");
  const auto snapshot = terminal.snapshot();
  const SnapshotRow& row = *snapshot->rows.front();
  // a b (wide, two columns) c e-acute d
  const std::size_t expected[] = {0, 1, 2, 2, 5, 6, 8, 9, 9};
  for (int column = 0; column < 9; ++column) {
    EXPECT_EQ(byteAt(row, column), expected[column]) << column;
  }
  EXPECT_EQ(byteAt(*snapshot->rows.back(), 5), 0U) << "a blank row";
}

}  // namespace
}  // namespace zolt::vt
