#include "terminal/EmulationSource.h"

#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "canvas/CanvasLiterals.h"
#include "support/WaitFor.h"
#include "vt/RandomOutput.h"

namespace zolt {
namespace {

using test::waitFor;

struct Fixture {
  explicit Fixture(const TerminalSize& size = {.rows = 4, .columns = 10})
      : emulator(size, vt::TerminalSettings(), quiet()) {
    settle();
  }

  static Emulator::Handlers quiet() {
    return {.changed = [] {}, .replied = [](const std::string&) {}};
  }
  void settle() {
    ASSERT_TRUE(waitFor([this] {
      source.sync();
      for (TextPosition& place : held) {
        place = source.moved(place);
      }
      return emulator.isSettled();
    }));
  }
  void feed(const std::string& text) {
    emulator.feed(Bytes(text));
    settle();
  }
  void resize(int rows, int columns) {
    emulator.change([=](vt::Terminal& terminal) { terminal.resize({.rows = rows, .columns = columns}); });
    settle();
  }
  void addLines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
      text += "line " + std::to_string(i) + "\r\n";
    }
    feed(text);
  }
  // A row as a person sees it.
  std::string row(std::int64_t number) {
    const auto content = source.content(CanvasRow(number));
    std::string picture;
    for (const TextPiece& piece : content->pieces) {
      picture += content->textOf(piece);
    }
    return picture;
  }
  std::string lastRow() { return row(source.rowCount() - 1); }
  std::string all() { return source.text({.begin = source.begin(), .end = source.end()}); }
  // Where `text` stands first.
  TextRange find(const std::string& text) {
    const std::string whole = all();
    const std::size_t at = whole.find(text);
    EXPECT_NE(at, std::string::npos) << text << " in " << whole;
    return {.begin = source.begin() + at, .end = source.begin() + at + text.size()};
  }

  Emulator emulator;
  EmulationSource source{emulator};
  std::vector<TextPosition> held;
};

TEST(EmulationSource, ShowsTheScrollbackAboveTheScreen) {
  Fixture terminal;
  terminal.addLines(10);
  EXPECT_EQ(terminal.source.screenRows(), 4);
  ASSERT_EQ(terminal.source.rowCount(), 11);
  EXPECT_EQ(terminal.row(0), "line 0");
  EXPECT_EQ(terminal.row(6), "line 6");
  EXPECT_EQ(terminal.row(7), "line 7") << "the first row of the screen";
  EXPECT_EQ(terminal.row(10), "");
}

TEST(EmulationSource, ShowsOnlyTheAlternateScreenWhileThatIsThere) {
  Fixture terminal;
  terminal.addLines(10);
  const TextRange line = terminal.find("line 2");
  terminal.feed("\033[?1049h\033[Hother");
  EXPECT_EQ(terminal.source.rowCount(), 4);
  EXPECT_EQ(terminal.row(0), "other");
  EXPECT_EQ(terminal.all().substr(0, 5), "other");
  EXPECT_EQ(terminal.source.moved(line.begin), line.begin) << "places of the primary screen wait";
  terminal.feed("\033[?1049l");
  EXPECT_EQ(terminal.source.rowCount(), 11);
  EXPECT_EQ(terminal.source.text(line), "line 2");
}

TEST(EmulationSource, CopiesWrappedLinesWholeAndWithoutBlanksAtTheirEnds) {
  Fixture terminal;
  terminal.feed("abcdefghijklmnopqrstuvwxyz\r\nshort   \r\n\033[41m\033[K\033[m\r\nend");
  EXPECT_EQ(terminal.all(), "abcdefghijklmnopqrstuvwxyz\nshort\n\nend");
}

TEST(EmulationSource, CopiesNoBlanksAtTheEndOfTheLastLine) {
  Fixture terminal;
  terminal.feed("one   \r\ntwo   \r\n  x");
  const TextPosition line = terminal.source.begin() + 7;
  EXPECT_EQ(terminal.source.text({.begin = line, .end = line + 6}), "two   ");
  EXPECT_EQ(terminal.source.copiedText({.begin = line, .end = line + 6}), "two");
  EXPECT_EQ(terminal.source.copiedText({.begin = line, .end = line + 5}), "two  ") << "short of the line's end";
  EXPECT_EQ(terminal.source.copiedText({.begin = line, .end = line + 7}), "two\n");
}

// Whatever is printed, every place keeps its character while lines scroll off and are wrapped anew.
TEST(EmulationSource, KeepsPlacesWhenLinesScrollOffAndAreWrappedAnew) {
  Fixture terminal;
  terminal.feed("first\r\nsecond line that wraps\r\n\u6F22\u5B57 third");
  std::vector<TextRange> words;
  for (const char* word : {"first", "line that", "\u5B57 th"}) {
    words.push_back(terminal.find(word));
    terminal.held.push_back(words.back().begin);
  }
  const auto expectKept = [&](const char* when) {
    EXPECT_EQ(terminal.source.text(words[0]), "first") << when;
    EXPECT_EQ(terminal.source.text(words[1]), "line that") << when;
    EXPECT_EQ(terminal.source.text(words[2]), "\u5B57 th") << when;
    for (std::size_t i = 0; i < words.size(); ++i) {
      EXPECT_EQ(terminal.held[i], words[i].begin) << when << ", place " << i;
    }
  };
  expectKept("at first");
  terminal.feed("\r\n1\r\n2\r\n3\r\n4\r\n5");
  expectKept("scrolled off");
  terminal.resize(4, 7);
  expectKept("narrower");
  terminal.resize(12, 30);
  expectKept("back on the screen");
  terminal.resize(2, 3);
  expectKept("tiny");
}

TEST(EmulationSource, MovesPlacesWithTheirLineWhenALineAboveChangesItsLength) {
  Fixture terminal({.rows = 5, .columns = 20});
  terminal.feed("progress 1%\r\nbelow\r\n");
  const TextRange word = terminal.find("below");
  terminal.held = {word.begin, word.end};
  terminal.feed("\033[1;1Hprogress 100%, done\033[4;1H");
  EXPECT_NE(terminal.held[0], word.begin);
  EXPECT_EQ(terminal.source.text({.begin = terminal.held[0], .end = terminal.held[1]}), "below");
  terminal.feed("\033[1;1H\033[K\033[4;1H");
  EXPECT_EQ(terminal.source.text({.begin = terminal.held[0], .end = terminal.held[1]}), "below");
}

TEST(EmulationSource, WrapsTheScrollbackAsTheScreenDoes) {
  std::mt19937 random(3);
  for (int round = 0; round < 40; ++round) {
    const int columns = 2 + static_cast<int>(random() % 20);
    // A screen high enough to hold everything, and a low one that has nearly all of it in the scrollback.
    Fixture high({.rows = 200, .columns = columns});
    Fixture low({.rows = 1, .columns = columns});
    const std::string text = vt::test::randomLines(random, 60);
    high.feed(text);
    low.feed(text);
    const std::int64_t rows = std::min(low.source.rowCount(), high.source.rowCount());
    ASSERT_LE(high.source.rowCount(), 200);
    for (std::int64_t row = 0; row + 1 < rows; ++row) {
      const auto other = low.source.content(CanvasRow(row));
      const auto trimmed = [](std::string shown) { return shown.substr(0, shown.find_last_not_of(' ') + 1); };
      ASSERT_EQ(trimmed(high.row(row)), trimmed(low.row(row))) << "round " << round << ", row " << row;
      ASSERT_EQ(low.source.rowAt(other->range.begin).value, row);
    }
  }
}

TEST(EmulationSource, FindsColumnsOfWideCharactersAndClusters) {
  Fixture terminal({.rows = 2, .columns = 20});
  terminal.feed("a\u6F22be\u0301c");
  const auto row = terminal.source.content(0_row);
  const TextPosition start = row->range.begin;
  EXPECT_EQ(row->end, 6_col);
  EXPECT_EQ(row->columnOf(start + 1), 1_col);
  EXPECT_EQ(row->columnOf(start + 4), 3_col);
  EXPECT_EQ(row->positionAt(2_col), start + 4) << "from the middle of a wide character: after it";
  EXPECT_EQ(row->columnOf(start + 5), 4_col);
  EXPECT_EQ(row->positionAt(5_col), start + 8) << "after a letter and its mark";
}

TEST(EmulationSource, KeepsTheContentOfRowsThatDidNotChange) {
  Fixture terminal;
  terminal.feed("one\r\ntwo\r\nthree\r\nfour");
  const auto kept = terminal.source.content(2_row);
  terminal.feed("\r\nfive");
  EXPECT_EQ(terminal.source.content(2_row), kept) << "it has scrolled, and stands in the same place of the text";
  EXPECT_EQ(terminal.row(2), "three");
}

TEST(EmulationSource, TellsTheCursorUnlessAProgramChoosesItsOwn) {
  Fixture terminal;
  terminal.addLines(6);
  terminal.emulator.change(
      [](vt::Terminal& engine) { engine.setUserCursor({.shape = vt::CursorShape::Bar, .blinks = true}); });
  terminal.feed("ab");
  std::optional<CanvasCursor> cursor = terminal.source.cursor();
  ASSERT_TRUE(cursor);
  EXPECT_EQ(cursor->row, CanvasRow(terminal.source.rowCount() - 1));
  EXPECT_EQ(cursor->columns, (ColumnRange{.begin = 2_col, .end = 3_col}));
  EXPECT_EQ(cursor->look, CursorLook::Bar);
  EXPECT_TRUE(cursor->blinks);
  terminal.feed("\033[2 q");
  cursor = terminal.source.cursor();
  EXPECT_EQ(cursor->look, CursorLook::Block);
  EXPECT_FALSE(cursor->blinks);
}

TEST(EmulationSource, SelectsWordsAndLinesAcrossRowsAndTheScreensEdge) {
  Fixture terminal;
  terminal.feed("see /usr/share/doc/readme.txt now\r\nnext\r\n\r\n\r\n");
  ASSERT_GT(terminal.source.rowCount(), 4) << "the line has scrolled off in part";
  const TextPosition inside = terminal.find("share").begin;
  EXPECT_EQ(terminal.source.text(terminal.source.wordAt(inside)), "/usr/share/doc/readme.txt");
  EXPECT_EQ(terminal.source.text(terminal.source.lineAt(inside)), "see /usr/share/doc/readme.txt now\n");
  EXPECT_EQ(terminal.source.text(terminal.source.lineAt(terminal.find("next").begin)), "next\n");
  terminal.source.setWordSeparators(" /");
  EXPECT_EQ(terminal.source.text(terminal.source.wordAt(inside)), "share");
}

TEST(EmulationSource, FindsMarkedLinksAndThoseThatAreOnlyText) {
  Fixture terminal({.rows = 3, .columns = 20});
  terminal.feed("go \033]8;;https://example.org/a\033\\this long way there\033]8;;\033\\ or https://b.example/x.");
  const auto marked = terminal.source.linkAt(terminal.find("long").begin);
  ASSERT_TRUE(marked);
  EXPECT_EQ(marked->target, "https://example.org/a");
  EXPECT_EQ(terminal.source.text(marked->range), "this long way there") << "over the end of a row";
  const auto plain = terminal.source.linkAt(terminal.find("b.example").begin);
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain->target, "https://b.example/x");
  EXPECT_FALSE(terminal.source.linkAt(terminal.find("or").begin));
  EXPECT_FALSE(terminal.source.linkAt(terminal.source.end()));
}

TEST(EmulationSource, GivesAllOfTheTextToFindAndSaving) {
  Fixture terminal;
  terminal.addLines(20);
  terminal.feed("wrapped over two rows");
  const vt::ScrollbackText text(terminal.source.wholeText());
  EXPECT_EQ(text.begin(), terminal.source.begin());
  EXPECT_EQ(text.text(text.begin(), text.end()), terminal.all());
  const TextRange word = terminal.find("over");
  EXPECT_EQ(text.text(word.begin, word.end), "over") << "places are the same";
  Fixture nearlyBlank;
  nearlyBlank.feed("one");
  const vt::ScrollbackText little(nearlyBlank.source.wholeText());
  EXPECT_EQ(little.text(little.begin(), little.end()), "one") << "blank rows below are no text";
}

TEST(EmulationSource, GivesTheAlternateScreenToFindAndTheTextBehindItToSaving) {
  Fixture terminal;
  terminal.addLines(20);
  std::string saved = terminal.all();
  saved.pop_back();  // the row of the cursor is blank
  terminal.feed("\033[?1049h\033[H\u6F22 line that wraps\r\nnext");
  const vt::ScrollbackText shown(terminal.source.shownText());
  EXPECT_EQ(shown.begin(), terminal.source.begin());
  EXPECT_EQ(shown.text(shown.begin(), shown.end()), "\u6F22 line that wraps\nnext");
  const TextRange word = terminal.find("wraps");
  EXPECT_EQ(shown.text(word.begin, word.end), "wraps") << "places are the same";
  const vt::ScrollbackText kept(terminal.source.wholeText());
  EXPECT_EQ(kept.text(kept.begin(), kept.end()), saved);
}

TEST(EmulationSource, ForgetsWhatTheLimitTrims) {
  Fixture terminal({.rows = 4, .columns = 80});
  terminal.emulator.change([](vt::Terminal& engine) { engine.screen().scrollback().setLimit(100); });
  const std::uint64_t generation = terminal.source.generation();
  for (int i = 0; i < 40; ++i) {
    terminal.addLines(1000);
  }
  EXPECT_GT(terminal.source.begin(), TextPosition(0));
  EXPECT_NE(terminal.source.generation(), generation);
  EXPECT_GE(terminal.source.rowCount(), 100);
  EXPECT_LT(terminal.source.rowCount(), 30000);
  EXPECT_EQ(terminal.source.moved(TextPosition(5)), terminal.source.begin());
  EXPECT_EQ(terminal.row(terminal.source.rowCount() - 2), "line 999");
  EXPECT_EQ(terminal.row(0).substr(0, 5), "line ");
}

TEST(EmulationSource, ClearsEverythingButTheLineOfTheCursor) {
  Fixture terminal;
  terminal.addLines(20);
  terminal.feed("$ command that wraps\033[s");
  terminal.emulator.change([](vt::Terminal& engine) { engine.screen().clearButCursorLine(); });
  terminal.settle();
  EXPECT_EQ(terminal.source.rowCount(), 4);
  EXPECT_EQ(terminal.all(), "$ command that wraps");
  terminal.feed("!");
  EXPECT_EQ(terminal.all(), "$ command that wraps!");
  EXPECT_EQ(terminal.row(2), "!") << "the program goes on where it was";
}

}  // namespace
}  // namespace zolt
