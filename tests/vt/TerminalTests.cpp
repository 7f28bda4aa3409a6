#include "vt/Terminal.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "vt/RandomOutput.h"
#include "vt/TerminalPicture.h"

namespace zolt::vt {
namespace {

using test::brokenRule;
using test::everythingOf;
using test::linesOf;

TerminalSettings withBulkFrom(std::size_t bytes) {
  TerminalSettings settings;
  settings.bulkBytes = bytes;
  return settings;
}

void feedInPieces(Terminal& terminal, std::string_view bytes, std::mt19937& random, std::size_t maxPiece) {
  while (!bytes.empty()) {
    const std::size_t size = std::min<std::size_t>(bytes.size(), 1 + random() % maxPiece);
    terminal.feed(bytes.substr(0, size));
    bytes.remove_prefix(size);
  }
}

TEST(Terminal, ShowsTheSameHoweverTheInputIsSplit) {
  std::mt19937 random(1);
  for (int round = 0; round < 400; ++round) {
    const std::string output = test::randomOutput(random, 300);
    const int rows = 1 + static_cast<int>(random() % 12);
    const int columns = 1 + static_cast<int>(random() % 30);
    Terminal whole({.rows = rows, .columns = columns});
    whole.feed(output);
    const std::string replies = whole.takeReplies();
    for (const std::size_t maxPiece : {std::size_t{1}, std::size_t{7}, std::size_t{200}}) {
      Terminal split({.rows = rows, .columns = columns});
      feedInPieces(split, output, random, maxPiece);
      ASSERT_EQ(everythingOf(split), everythingOf(whole)) << "round " << round << ", pieces of up to " << maxPiece;
      ASSERT_EQ(split.takeReplies(), replies);
    }
    ASSERT_EQ(brokenRule(whole.screen()), "") << "round " << round;
  }
}

// Found by fuzzing: the text that followed was treated as overflowing the last column, so that only its end was shown.
TEST(Terminal, PrintsPastAMarginThatWasResetWithAWrapPending) {
  for (const bool split : {false, true}) {
    Terminal terminal({.rows = 2, .columns = 8});
    terminal.feed("\033[?7l\033[?69h\033[1;4sabcd\033[?69h");
    for (const std::string_view piece : {"x", "y"}) {
      if (split) terminal.feed(piece);
    }
    if (!split) terminal.feed("xy");
    EXPECT_EQ(linesOf(terminal.screen()), "abcxy");
  }
}

TEST(Terminal, ShowsTheSameWithAndWithoutTheBulkPath) {
  std::mt19937 random(2);
  int bulk = 0;
  for (int round = 0; round < 600; ++round) {
    const std::string output = test::randomOutput(random, static_cast<int>(random() % 8)) +
                               test::randomLines(random, 500) + test::randomOutput(random, 20);
    const int rows = 1 + static_cast<int>(random() % 6);
    const int columns = 2 + static_cast<int>(random() % 30);
    Terminal slow({.rows = rows, .columns = columns}, withBulkFrom(SIZE_MAX));
    Terminal fast({.rows = rows, .columns = columns}, withBulkFrom(1));
    slow.feed(output);
    fast.feed(output);
    ASSERT_EQ(everythingOf(fast), everythingOf(slow)) << "round " << round;
    Terminal probe({.rows = rows, .columns = columns});
    probe.feed(std::string(static_cast<std::size_t>(rows), '\n') + "\r");
    if (probe.screen().canPrintBulk() && probe.screen().printBulk(output).printed > 0) ++bulk;
  }
  EXPECT_GT(bulk, 20) << "nothing bulk by: the test shows nothing";
}

TEST(Terminal, KeepsItsInvariantsWhenResizedBetweenAnyTwoBytes) {
  std::mt19937 random(3);
  for (int round = 0; round < 60; ++round) {
    Terminal terminal({.rows = 8, .columns = 20});
    for (const char byte : test::randomOutput(random, 120)) {
      terminal.feed({&byte, 1});
      if (random() % 4 == 0) {
        terminal.resize({.rows = 1 + static_cast<int>(random() % 15), .columns = 1 + static_cast<int>(random() % 40)});
      }
      ASSERT_EQ(brokenRule(terminal.screen()), "") << "round " << round;
    }
  }
}

TEST(Terminal, KeepsItsTextWhenResizedAndResizedBack) {
  std::mt19937 random(4);
  for (int round = 0; round < 400; ++round) {
    const int rows = 1 + static_cast<int>(random() % 12);
    const int columns = 1 + static_cast<int>(random() % 40);
    Terminal terminal({.rows = rows, .columns = columns});
    terminal.feed(test::randomLines(random, 150));
    const std::string before = linesOf(terminal.screen());
    for (int i = 0; i < 3; ++i) {
      terminal.resize({.rows = 1 + static_cast<int>(random() % 20), .columns = 1 + static_cast<int>(random() % 50)});
    }
    EXPECT_EQ(linesOf(terminal.screen()), before) << "at another size, round " << round;
    terminal.resize({.rows = rows, .columns = columns});
    EXPECT_EQ(linesOf(terminal.screen()), before) << "back again, round " << round;
  }
}

TEST(Terminal, KeepsTheCursorOnItsCharacterWhenResized) {
  Terminal terminal({.rows = 6, .columns = 20});
  terminal.feed("first\r\nthe quick brown fox jumps over\r\n$ ls -l here\033[9D");
  const auto underCursor = [&] {
    const Cursor& cursor = terminal.screen().cursor();
    return terminal.screen().grid().row(cursor.row)[static_cast<std::size_t>(cursor.column)].character();
  };
  ASSERT_EQ(underCursor(), U's');
  for (const auto& [rows, columns] : {std::pair{6, 7}, {3, 11}, {10, 40}, {2, 5}, {6, 20}}) {
    terminal.resize({.rows = rows, .columns = columns});
    EXPECT_EQ(underCursor(), U's') << rows << " by " << columns;
  }
  EXPECT_EQ(test::linesOf(terminal.screen()), "first\nthe quick brown fox jumps over\n$ ls -l here");
}

// The scrollback ends in the middle of a line that the first row continues, until that row is erased or moved.
TEST(Terminal, EndsTheLastScrollbackLineWhenTheScreenNoLongerContinuesIt) {
  for (const std::string_view eraser : {"\033[2J", "\033[H\033[2K", "\033[H\033[J", "\033[H\033[M", "\033[H\033[L",
                                        "\033[H\033M", "\033c", "\033#8\033[2J", "\033[1;1;9;9$z"}) {
    Terminal terminal({.rows = 3, .columns = 10});
    terminal.feed(std::string(65, 'm') + std::string(eraser) + "\033[2J\033[H$ prompt");
    terminal.resize({.rows = 3, .columns = 40});
    EXPECT_EQ(linesOf(terminal.screen()), std::string(40, 'm') + "\n$ prompt") << eraser.substr(1);
  }
}

TEST(Terminal, DoesNotRejoinLinesThatScrollingARegionSeparated) {
  Terminal terminal({.rows = 6, .columns = 10});
  terminal.feed("\033[4;1H0123456789ABC\033[1;4r\033[4;1H\n\033[4;1Hxyz");
  terminal.resize({.rows = 6, .columns = 30});
  EXPECT_EQ(linesOf(terminal.screen()), "\n\n\n0123456789\nxyz\nABC");
}

TEST(Terminal, KeepsThePrimaryScreenWhenResizedOnTheAlternateOne) {
  for (const std::string_view mode : {"47", "1047", "1049"}) {
    for (const std::string_view where : {"", "\033[H"}) {
      Terminal terminal({.rows = 13, .columns = 20});
      std::string lines;
      for (int i = 1; i <= 12; ++i) {
        lines += "line" + std::to_string(i) + "\r\n";
      }
      terminal.feed(lines + "$ " + std::string(where));
      const std::string before = linesOf(terminal.screen());
      terminal.feed("\033[?" + std::string(mode) + "h");
      terminal.resize({.rows = 5, .columns = 20});
      terminal.feed("vim");
      Terminal left({.rows = 13, .columns = 20});
      left.feed(lines + "$ " + std::string(where) + "\033[?" + std::string(mode) + "h");
      left.resize({.rows = 5, .columns = 20});
      left.feed("vim\033[?" + std::string(mode) + "l\033[5;3H ");
      EXPECT_EQ(linesOf(left.screen()), before + " ") << "left while small, " << mode << ' ' << where;
      terminal.resize({.rows = 13, .columns = 20});
      terminal.feed("\033[?" + std::string(mode) + "l");
      EXPECT_EQ(linesOf(terminal.screen()), before) << mode << ' ' << where;
    }
  }
}

TEST(Terminal, KeepsRowsBelowASmallerScreenUntilItIsDrawnOn) {
  Terminal terminal({.rows = 6, .columns = 10});
  terminal.feed("1\r\n2\r\n3\r\n4\r\n5\033[2;1H");
  terminal.resize({.rows = 3, .columns = 10});
  terminal.feed("\033[6n");
  terminal.resize({.rows = 6, .columns = 10});
  EXPECT_EQ(linesOf(terminal.screen()), "1\n2\n3\n4\n5") << "a query does not draw";
  terminal.resize({.rows = 3, .columns = 10});
  terminal.feed("x");
  terminal.resize({.rows = 6, .columns = 10});
  EXPECT_EQ(linesOf(terminal.screen()), "1\nx\n3\n4") << "the program has drawn its screen";
}

// The tables are swept while lines from the scrollback are in neither grid.
TEST(Terminal, KeepsTheStylesOfScrollbackLinesWhenTablesAreSweptDuringAResize) {
  Terminal terminal({.rows = 5, .columns = 20});
  std::ostringstream output;
  for (int i = 0; i < 300; ++i) {
    output << "\033[38;2;1;" << i / 256 << ';' << i % 256 << "mline e\xCC" << static_cast<char>(0x80 + i % 60)
           << "\r\n";
  }
  terminal.feed(output.str());
  // Use other styles, each overwritten at once, until the lines' styles have been swept and the table is nearly full.
  constexpr std::size_t kNearlyFull = 14'300;
  std::size_t before = 0;
  bool isSwept = false;
  for (int i = 0; !isSwept || before < kNearlyFull; ++i) {
    terminal.feed("\033[38;2;2;" + std::to_string(i / 256) + ';' + std::to_string(i % 256) + "mx\r");
    const std::size_t styles = terminal.screen().tables().styles.size();
    isSwept = isSwept || styles < before;
    before = styles;
  }
  terminal.resize({.rows = 300, .columns = 20});
  const Screen& screen = terminal.screen();
  int checked = 0;
  for (int row = 0; row < 290; ++row) {
    const Cell cell = screen.grid().row(row)[0];
    if (cell.character() != U'l') continue;
    const CellColor color = screen.tables().styles[cell.style()].foreground;
    std::string text;
    screen.tables().appendText(screen.grid().row(row)[5], text);
    const int number = color.green() * 256 + color.blue();
    EXPECT_EQ(color.red(), 1);
    EXPECT_EQ(text, "e\xCC" + std::string(1, static_cast<char>(0x80 + number % 60))) << "row " << row;
    ++checked;
  }
  EXPECT_GT(checked, 250);
}

TEST(Terminal, TakesRowsBackFromTheScrollbackWhenItGrows) {
  Terminal terminal({.rows = 3, .columns = 10});
  terminal.feed("1\r\n2\r\n3\r\n4\r\n5");
  EXPECT_EQ(terminal.screen().scrollback().lineCount(), 2U);
  terminal.resize({.rows = 5, .columns = 10});
  EXPECT_EQ(terminal.screen().scrollback().lineCount(), 0U);
  EXPECT_EQ(terminal.screen().cursor(), (Cursor{.row = 4, .column = 1}));
  terminal.resize({.rows = 4, .columns = 10});
  EXPECT_EQ(terminal.screen().scrollback().lineCount(), 1U);
}

TEST(Terminal, ClampsEveryCount) {
  // Looping for each count would take years.
  for (const std::string_view final :
       {"S", "T", "L", "M", "@", "P", "X", "b", "I", "Z",  "A",  "B",  "C",  "D",  "E",
        "F", "G", "H", "a", "d", "e", "f", "`", "^", " @", " A", "'}", "'~", "W",  "g",
        "J", "K", "t", "n", "c", "u", "r", "s", "m", "$v", "$x", "$z", "${", "$r", "$t"}) {
    Terminal terminal({.rows = 24, .columns = 80});
    terminal.feed("text\033[2;2H");
    for (const std::string_view parameters :
         {"2147483647", "2147483647;2147483647;2147483647;2147483647", "99999999999999999999",
          "1;1;2147483647;2147483647;2147483647;2147483647;2147483647;2147483647"}) {
      terminal.feed("\033[" + std::string(parameters) + std::string(final));
      ASSERT_EQ(brokenRule(terminal.screen()), "") << parameters << final;
    }
  }
}

TEST(Terminal, KeepsItsInvariantsOnExtremeGrids) {
  for (const auto& [rows, columns] : {std::pair{1, 1}, {1, 200}, {200, 1}, {2, 2}}) {
    Terminal terminal({.rows = rows, .columns = columns});
    std::mt19937 random(5);
    terminal.feed(test::randomOutput(random, 3000));
    EXPECT_EQ(brokenRule(terminal.screen()), "") << rows << " by " << columns;
  }
}

TEST(Terminal, LimitsTheSizeOfTheGrid) {
  Terminal terminal({.rows = 1'000'000, .columns = 1'000'000});
  EXPECT_LE(std::int64_t{terminal.screen().rows()} * terminal.screen().columns(), Screen::maxCells);
  terminal.resize({.rows = -5, .columns = 0});
  EXPECT_EQ(terminal.screen().rows(), 1);
  EXPECT_EQ(terminal.screen().columns(), 1);
}

TEST(Terminal, EndsASynchronizedUpdateAfterItsTimeLimit) {
  Terminal terminal({.rows = 3, .columns = 10});
  terminal.feed("\033[?2026h", Milliseconds{1000});
  EXPECT_TRUE(terminal.holdsFrame(Milliseconds{1000}));
  terminal.feed("more\033[?2026h", Milliseconds{1100});
  EXPECT_TRUE(terminal.holdsFrame(Milliseconds{1149}));
  EXPECT_FALSE(terminal.holdsFrame(Milliseconds{1150}));
  terminal.feed("\033[?2026$p", Milliseconds{1150});
  EXPECT_EQ(terminal.takeReplies(), "\033[?2026;2$y");
  terminal.feed("\033[?2026h\033[?2026l", Milliseconds{1200});
  EXPECT_FALSE(terminal.holdsFrame(Milliseconds{1200}));
}

TEST(Terminal, ReportsSizesOnlyToProgramsThatAskedForThem) {
  Terminal terminal({.rows = 3, .columns = 10});
  terminal.resize({.rows = 4, .columns = 12, .pixelWidth = 96, .pixelHeight = 64});
  EXPECT_EQ(terminal.takeReplies(), "");
  terminal.feed("\033[?2048h");
  EXPECT_EQ(terminal.takeReplies(), "\033[48;4;12;64;96t");
  terminal.resize({.rows = 5, .columns = 12, .pixelWidth = 96, .pixelHeight = 80});
  EXPECT_EQ(terminal.takeReplies(), "\033[48;5;12;80;96t");
}

TEST(Terminal, ReportsTheColourSchemeOnlyToProgramsThatAskedForIt) {
  Terminal terminal({.rows = 3, .columns = 10});
  terminal.setPrefersDark(false);
  EXPECT_EQ(terminal.takeReplies(), "");
  terminal.feed("\033[?2031h");
  terminal.setPrefersDark(true);
  EXPECT_EQ(terminal.takeReplies(), "\033[?997;1n");
  terminal.setPrefersDark(true);
  EXPECT_EQ(terminal.takeReplies(), "");
}

TEST(Terminal, SurvivesMoreStylesThanItsTableHolds) {
  Terminal terminal({.rows = 300, .columns = 300});
  std::ostringstream output;
  for (int i = 0; i < 100'000; ++i) {
    output << "\033[38;2;" << i % 256 << ';' << i / 256 % 256 << ';' << i / 65536 << "mx";
  }
  terminal.feed(output.str());
  EXPECT_LE(terminal.screen().tables().styles.size(), CellTables::maxStyles);
  EXPECT_EQ(brokenRule(terminal.screen()), "");
  terminal.feed("\033c\033[31mred");
  const Cell cell = terminal.screen().grid().row(0)[0];
  EXPECT_EQ(terminal.screen().tables().styles[cell.style()].foreground, CellColor::indexed(1)) << "a reset makes room";
}

TEST(Terminal, SurvivesMoreLinksAndClustersThanItsTablesHold) {
  Terminal terminal({.rows = 200, .columns = 200});
  std::ostringstream output;
  for (int i = 0; i < 70'000; ++i) {
    output << "\033]8;;http://h/" << i << "\033\\ab";
    for (int bits = i; bits != 0; bits /= 16) {
      output << '\xCC' << static_cast<char>(0x80 + bits % 16);
    }
  }
  terminal.feed(output.str());
  EXPECT_LE(terminal.screen().tables().links.size(), CellTables::maxLinks);
  EXPECT_LE(terminal.screen().tables().clusters.size(), CellTables::maxClusters);
  EXPECT_EQ(brokenRule(terminal.screen()), "");
}

TEST(Terminal, DropsNoLinksWhileThereIsRoom) {
  Terminal terminal({.rows = 24, .columns = 80});
  std::ostringstream output;
  for (int i = 0; i < 60'000; ++i) {
    output << "\033]8;;http://h/" << i << "\033\\a\033]8;;\033\\\r\n";
  }
  terminal.feed(output.str());
  std::size_t lines = 0;
  terminal.screen().scrollback().forEachLine([&](HistoryLine&& line) {
    ASSERT_FALSE(line.runs.empty());
    EXPECT_EQ(line.runs[0].link.uri, "http://h/" + std::to_string(lines));
    ++lines;
  });
  EXPECT_GT(lines, 59'000U);
}

TEST(Terminal, AcceptsALinkOfTheMaximumLengthAndIgnoresALongerOne) {
  const auto linkOf = [](std::size_t bytes) {
    Terminal terminal({.rows = 2, .columns = 10});
    terminal.feed("\033]8;;http://before\033\\\033]8;;" + std::string(bytes, 'h') + "\033\\x");
    return terminal.screen().tables().links[terminal.screen().grid().row(0)[0].link()].uri;
  };
  EXPECT_EQ(linkOf(2083).size(), 2083U);
  EXPECT_EQ(linkOf(2084), "");
}

TEST(Terminal, KeepsStylesApartInTheScrollbackWhenTheirIdsAreReused) {
  Terminal terminal({.rows = 2, .columns = 10});
  std::ostringstream output;
  output << "\033[38;2;255;0;0mred\r\n\r\n\r\n\033[2J";
  for (int i = 0; i < 70'000; ++i) {
    output << "\033[38;2;1;" << i / 256 % 256 << ';' << i % 256 << (i < 65536 ? "" : ";1") << "mx\r";
  }
  output << "\033[2K\033[38;2;0;255;0mgreen\r\n\r\n";
  terminal.feed(output.str());
  std::vector<CellColor> colors;
  terminal.screen().scrollback().forEachLine([&](HistoryLine&& line) {
    if (!line.text.empty()) colors.push_back(line.runs[0].style.foreground);
  });
  EXPECT_EQ(colors, (std::vector{CellColor::direct(255, 0, 0), CellColor::direct(0, 255, 0)}));
}

TEST(Terminal, DropsCombiningMarksPastTheLimitOfACluster) {
  Terminal terminal({.rows = 2, .columns = 10});
  std::string marks;
  for (int i = 0; i < 1000; ++i) {
    marks += "\u0301";
  }
  terminal.feed("a" + marks + "b");
  std::string text;
  terminal.screen().tables().appendText(terminal.screen().grid().row(0)[0], text);
  EXPECT_EQ(text.size(), 1 + 2 * (CellTables::maxScalars - 1));
  EXPECT_EQ(terminal.screen().grid().row(0)[1].character(), U'b');
}

TEST(Terminal, EncodesInputInTheModesThatTheProgramHasSet) {
  Terminal terminal({.rows = 3, .columns = 10});
  const KeyEvent up{.key = Key::Up};
  EXPECT_EQ(terminal.keyBytes(up), "\033[A");
  terminal.feed("\033[?1h");
  EXPECT_EQ(terminal.keyBytes(up), "\033OA");
  terminal.feed("\033[>1u");
  const KeyEvent escape{.key = Key::Escape};
  EXPECT_EQ(terminal.keyBytes(escape), "\033[27u");
  terminal.feed("\033[?1049h");
  EXPECT_EQ(terminal.keyBytes(escape), "\033") << "the alternate screen has its own flags";
  EXPECT_EQ(terminal.wheelBytes(1), "\033OA");
  terminal.feed("\033[?1003;1006h");
  EXPECT_EQ(terminal.wheelBytes(1), "");
  EXPECT_EQ(terminal.mouseBytes({.button = MouseButton::Left, .cell = {.row = 2, .column = 3}}), "\033[<0;4;3M");
  EXPECT_EQ(terminal.pasteBytes("a\nb"), "a\rb");
  terminal.feed("\033[?2004;1004h");
  EXPECT_EQ(terminal.pasteBytes("a\033[201~b"), "\033[200~a[201~b\033[201~");
  EXPECT_EQ(terminal.focusBytes(true), "\033[I");
  terminal.feed("\033[2h");
  EXPECT_EQ(terminal.keyBytes(up), "") << "the keyboard is locked";
}

TEST(Terminal, PassesOnWhatProgramsWantOfTheWindowIfThatIsAllowed) {
  using Kind = WindowRequest::Kind;
  Terminal terminal({.rows = 2, .columns = 8});
  terminal.allowWindowRequests(true);
  terminal.feed(
      "\033[8;30;100t\033[1t\033[2t\033[3;7;9t\033[4;600;800t\033[5t\033[6t\033[9;1t\033[9;0t\033[10;2t\033[40t\033["
      "7t");
  const std::vector<WindowRequest> expected{{.kind = Kind::ResizeToCells, .first = 30, .second = 100},
                                            {.kind = Kind::Restore},
                                            {.kind = Kind::Minimize},
                                            {.kind = Kind::MoveTo, .first = 7, .second = 9},
                                            {.kind = Kind::ResizeToPixels, .first = 600, .second = 800},
                                            {.kind = Kind::Raise},
                                            {.kind = Kind::Lower},
                                            {.kind = Kind::Maximize},
                                            {.kind = Kind::LeaveMaximized},
                                            {.kind = Kind::ToggleFullScreen},
                                            {.kind = Kind::ResizeToCells, .first = 40}};
  EXPECT_EQ(terminal.takeEvents().windowRequests, expected);
  for (int i = 0; i < 100; ++i) {
    terminal.feed("\033[2t");
  }
  EXPECT_EQ(terminal.takeEvents().windowRequests.size(), TerminalEvents::maxNotifications);
}

TEST(Terminal, StaysOnThePrimaryScreenIfTheAlternateOneIsNotAllowed) {
  for (const char* mode : {"47", "1047", "1049"}) {
    Terminal terminal({.rows = 2, .columns = 8});
    terminal.allowAlternateScreen(false);
    terminal.feed("text\033[?" + std::string(mode) + "h");
    EXPECT_FALSE(terminal.screen().showsAlternate()) << mode;
    EXPECT_EQ(linesOf(terminal.screen()), "text") << mode;
    terminal.feed("\033[?" + std::string(mode) + "l");
    EXPECT_EQ(terminal.screen().cursor().column, 4) << mode;
    terminal.allowAlternateScreen(true);
    terminal.feed("\033[?" + std::string(mode) + "h");
    EXPECT_TRUE(terminal.screen().showsAlternate()) << mode;
  }
}

}  // namespace
}  // namespace zolt::vt
