// A terminal that is stored with its scrollback, and what it is like for the next program.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "vt/RandomOutput.h"
#include "vt/SequenceCase.h"
#include "vt/Terminal.h"
#include "vt/TerminalPicture.h"
#include "vt/history/ScrollbackText.h"

namespace zolt::vt {
namespace {

using test::cursorText;
using test::linesOf;
using test::screenText;

constexpr TerminalSize kSize{.rows = 4, .columns = 20};

std::string manyLines(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += "\033[3";
    text += std::to_string(i % 8);
    text += "mline ";
    text += std::to_string(i);
    text += "\r\n";
  }
  return text;
}

StoredTerminal storedFrom(const Terminal& terminal) {
  const TerminalRecord record = terminal.record();
  StoredTerminal stored{.state = record.state, .history = {}};
  record.history.forEachStored([&](StoredBlock block) { stored.history.push_back(std::move(block)); });
  return stored;
}

std::unique_ptr<Terminal> back(StoredTerminal stored) {
  auto restored = Terminal::restored(std::move(stored), {});
  if (restored) return std::move(restored.value());
  ADD_FAILURE() << restored.reason();
  return std::make_unique<Terminal>(kSize);
}

TEST(StoredTerminal, ComesBackWithItsScrollback) {
  Terminal terminal(kSize);
  terminal.feed(manyLines(20'000));
  const auto restored = back(storedFrom(terminal));
  EXPECT_EQ(linesOf(restored->screen()), linesOf(terminal.screen()));
  EXPECT_EQ(restored->screen().scrollback().begin(), terminal.screen().scrollback().begin());
  EXPECT_EQ(restored->screen().scrollback().lineCount(), terminal.screen().scrollback().lineCount());
}

TEST(StoredTerminal, GoesOnWhereItWas) {
  Terminal terminal(kSize);
  terminal.feed(manyLines(5000) +
                "and a line that has not ended and goes over the whole of the screen, several times over, "
                "so that a part of it is in the scrollback already, which is where it");
  const auto restored = back(storedFrom(terminal));
  for (Terminal* each : {&terminal, restored.get()}) {
    each->feed(" ends\r\n" + manyLines(100));
  }
  EXPECT_EQ(linesOf(restored->screen()), linesOf(terminal.screen()));
}

TEST(StoredTerminal, ComesBackTwice) {
  Terminal terminal(kSize);
  terminal.feed(manyLines(3000));
  const auto once = back(storedFrom(terminal));
  once->feed(manyLines(3000));
  const auto twice = back(storedFrom(*once));
  EXPECT_EQ(linesOf(twice->screen()), linesOf(once->screen()));
}

TEST(StoredTerminal, ComesBackFromAnyOutput) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    std::mt19937 random(seed);
    Terminal terminal(kSize);
    for (int i = 0; i < 8; ++i) {
      terminal.feed(test::randomOutput(random, 40));
      terminal.feed(manyLines(static_cast<int>(random() % 800)));
    }
    const auto restored = back(storedFrom(terminal));
    ASSERT_EQ(linesOf(restored->screen()), linesOf(terminal.screen())) << seed;
    ASSERT_EQ(test::brokenRule(restored->screen()), "") << seed;
  }
}

TEST(StoredTerminal, IsTrimmedToTheLimitAgain) {
  Terminal terminal(kSize);
  terminal.feed(manyLines(50'000));
  const auto restored = back(storedFrom(terminal));
  restored->screen().scrollback().setLimit(1000);
  EXPECT_LT(restored->screen().scrollback().lineCount(), 20'000U);
  EXPECT_GE(restored->screen().scrollback().lineCount(), 1000U);
}

TEST(StoredTerminal, LosesNoMoreThanABlockThatIsDamaged) {
  Terminal terminal(kSize);
  terminal.feed(manyLines(20'000));
  StoredTerminal stored = storedFrom(terminal);
  ASSERT_GT(stored.history.size(), 3U);
  stored.history[1].compressed = nullptr;
  const auto restored = back(std::move(stored));
  const std::string lines = linesOf(restored->screen());
  EXPECT_NE(lines.find("line 10\n"), std::string::npos);
  EXPECT_NE(lines.find(kHistoryLostNotice), std::string::npos);
  EXPECT_NE(lines.find("line 19999"), std::string::npos);
}

TEST(StoredTerminal, IsWithoutAScrollbackThatDoesNotBelongToIt) {
  Terminal terminal(kSize);
  terminal.feed(manyLines(20'000));
  for (const int damage : {0, 1, 2}) {
    StoredTerminal stored = storedFrom(terminal);
    if (damage == 0) stored.history.pop_back();
    if (damage == 1) stored.history.erase(stored.history.begin() + 1);
    if (damage == 2) stored.history.back().summary.size += 1;
    const auto restored = back(std::move(stored));
    EXPECT_EQ(restored->screen().scrollback().lineCount(), 0U) << damage;
    EXPECT_EQ(screenText(*restored), screenText(terminal)) << damage;
  }
}

TEST(TerminalThatStartsOver, PutsTheCursorBelowTheText) {
  Terminal terminal(kSize);
  terminal.feed("one\r\ntwo\r\n\r\nfour\033[1;2H");
  terminal.startOver();
  EXPECT_EQ(screenText(terminal), "two\n\nfour");
  EXPECT_EQ(cursorText(terminal), "4,1");
  terminal.feed("five");
  EXPECT_EQ(linesOf(terminal.screen()), "one\ntwo\n\nfour\nfive");
}

TEST(TerminalThatStartsOver, LeavesAnEmptyScreenAlone) {
  Terminal terminal(kSize);
  terminal.startOver();
  EXPECT_EQ(screenText(terminal), "");
  EXPECT_EQ(cursorText(terminal), "1,1");
}

TEST(TerminalThatStartsOver, StartsANewLineAfterOneThatFillsTheRow) {
  Terminal terminal(kSize);
  terminal.feed("01234567890123456789");
  terminal.startOver();
  terminal.feed("$");
  terminal.resize({.rows = 4, .columns = 40});
  EXPECT_EQ(screenText(terminal), "01234567890123456789\n$");
}

TEST(TerminalThatStartsOver, IsOnTheMainScreen) {
  Terminal terminal(kSize);
  terminal.feed("shell\r\n\033[?1049heditor");
  terminal.startOver();
  EXPECT_EQ(screenText(terminal), "shell");
  terminal.feed("\033[?1049h");
  EXPECT_EQ(screenText(terminal), "");
}

// Whatever the last program has changed, the next one finds a new terminal below the text.
TEST(TerminalThatStartsOver, KeepsNothingOfTheLastProgramButTextAndTitle) {
  constexpr std::string_view kChanges =
      "\033]2;title\033\\\033[1;31;44m\033[2;3r\033[?69h\033[3;9s\033[?6h\033[4h\033[?7l\033[?25l\033[5 "
      "q\033[?1h\033=\033[?1000h"
      "\033[?1006h\033[?1004h\033[?2004h\033[?2026h\033[?2031h\033[?2048h\033[>31u\033[>4;2m\033(0\033[3g\033]4;1;#"
      "123456\033\\"
      "\033]10;#654321\033\\\033]9;4;1;50\033\\\033[?5h\0337\033]8;;https://example.org/\033\\\033]0;half";
  Terminal terminal(kSize);
  terminal.feed("text");
  terminal.feed(kChanges);
  terminal.startOver();
  Terminal fresh(kSize);
  fresh.feed("\033]2;title\033\\text\r\n");
  EXPECT_EQ(test::everythingOf(terminal), test::everythingOf(fresh));
  EXPECT_EQ(terminal.state().progress, Progress());
  EXPECT_EQ(terminal.focusBytes(true), "");
  EXPECT_EQ(terminal.pasteBytes("a"), "a");
  terminal.feed("\xE2\x82");
  terminal.startOver();
  terminal.feed("x");
  EXPECT_EQ(screenText(terminal), "text\nx");
}

}  // namespace
}  // namespace zolt::vt
