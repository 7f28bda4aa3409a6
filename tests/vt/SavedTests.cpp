#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "vt/SequenceCase.h"
#include "vt/Terminal.h"
#include "vt/saved/CellPiece.h"

namespace zolt::vt {
namespace {

using test::cursorText;
using test::firstRowRuns;
using test::screenText;
using namespace std::string_view_literals;

std::unique_ptr<Terminal> fed(std::string_view output, const TerminalSize& size = {.rows = 4, .columns = 10}) {
  auto terminal = std::make_unique<Terminal>(size);
  terminal->feed(output);
  return terminal;
}

// The terminal as it comes back.
std::unique_ptr<Terminal> back(const Terminal& terminal) {
  auto restored = Terminal::restored(terminal.saved(), terminal.state().settings);
  if (restored) return std::move(restored.value());
  ADD_FAILURE() << restored.reason();
  return std::make_unique<Terminal>(terminal.state().size);
}

std::unique_ptr<Terminal> fedAndBack(std::string_view output, const TerminalSize& size = {.rows = 4, .columns = 10}) {
  return back(*fed(output, size));
}

std::string reasonFor(std::string_view bytes) {
  const auto restored = Terminal::restored(bytes, {});
  return restored ? "none" : restored.reason();
}

TEST(SavedTerminal, KeepsTheCursorInTheMiddleOfAWrappedLine) {
  const auto terminal = fedAndBack("a line that wraps\033[2D");
  EXPECT_EQ(screenText(*terminal), "a line tha\nt wraps");
  EXPECT_EQ(cursorText(*terminal), "2,6");
  EXPECT_TRUE(terminal->screen().grid().state(0).wraps);
  terminal->resize({.rows = 4, .columns = 20});
  EXPECT_EQ(screenText(*terminal), "a line that wraps");
  EXPECT_EQ(cursorText(*terminal), "1,16");
}

TEST(SavedTerminal, KeepsAWrapThatIsPending) {
  const auto terminal = fedAndBack("0123456789");
  EXPECT_EQ(cursorText(*terminal), "1,10+");
  terminal->feed("x");
  EXPECT_EQ(screenText(*terminal), "0123456789\nx");
}

TEST(SavedTerminal, KeepsThePrimaryScreenBelowTheAlternateOne) {
  const auto terminal = fedAndBack("\033[31mshell\033[?1049h\033[2;3H\033[32meditor");
  EXPECT_EQ(screenText(*terminal), "\n  editor");
  terminal->feed("\033[?1049l$");
  EXPECT_EQ(firstRowRuns(*terminal), "[0;31]shell$");
}

TEST(SavedTerminal, KeepsStylesLinksAndProtection) {
  constexpr std::string_view kOutput =
      "\033[1;4:3;38;2;1;2;3mA\033[m\033]8;id=one;https://example.org/\033\\B\033]8;;\033\\\033[1\"qC\033[44m\033[K";
  const auto terminal = fedAndBack(kOutput);
  EXPECT_EQ(firstRowRuns(*terminal), firstRowRuns(*fed(kOutput)));
  EXPECT_EQ(terminal->screen().tables().links[terminal->screen().grid().row(0)[1].link()].id, "one");
}

TEST(SavedTerminal, WritesALinkOfManyCellsOnce) {
  const std::string link = "https://example.org/" + std::string(1000, 'x');
  const std::string bytes = fed("\033]8;;" + link + "\033\\one\033]8;;\033\\ \033]8;;" + link + "\033\\two")->saved();
  EXPECT_NE(bytes.find(link), std::string::npos);
  EXPECT_EQ(bytes.find(link), bytes.rfind(link));
}

TEST(SavedTerminal, KeepsThePenForTheTextToCome) {
  const auto terminal = fedAndBack("\033[1;31m\033]8;;x:y\033\\\033[1\"q");
  terminal->feed("t");
  EXPECT_EQ(firstRowRuns(*terminal), "[0;1;31]t!<x:y>");
}

TEST(SavedTerminal, KeepsTheSavedCursorOfEachScreen) {
  const auto terminal = fedAndBack("\033[3;4H\033[1m\0337\033[?47h\033[2;2H\033[3m\0337\033[H\033[m");
  terminal->feed("\0338");
  EXPECT_EQ(cursorText(*terminal), "2,2");
  EXPECT_EQ(terminal->screen().pen().style.flags, kBold | kItalic);
  terminal->feed("\033[?47l\0338");
  EXPECT_EQ(cursorText(*terminal), "3,4");
  EXPECT_EQ(terminal->screen().pen().style.flags, kBold);
}

TEST(SavedTerminal, KeepsWideCharactersAndClusters) {
  constexpr std::string_view kOutput = "\033[?2027h\u6F22e\u0301\U0001F469\u200D\U0001F467 end";
  const auto terminal = fedAndBack(kOutput);
  EXPECT_EQ(screenText(*terminal), screenText(*fed(kOutput)));
  terminal->feed("\u0302");
  EXPECT_EQ(screenText(*terminal), screenText(*fed(std::string(kOutput) + "\u0302")));
}

TEST(SavedTerminal, CompletesACharacterOfWhichHalfHadCome) {
  for (const std::string_view character :
       {"\u00E9"sv, "\u0800"sv, "\u6F22"sv, "\uD7FF"sv, "\U00010000"sv, "\U0010FFFD"sv}) {
    for (std::size_t half = 1; half < character.size(); ++half) {
      const auto terminal = fedAndBack(character.substr(0, half));
      EXPECT_EQ(screenText(*terminal), "");
      terminal->feed(character.substr(half));
      EXPECT_EQ(screenText(*terminal), character) << half;
    }
  }
}

TEST(SavedTerminal, CompletesASequenceOfWhichAPartHadCome) {
  const auto control = fedAndBack("\033[1;3");
  control->feed("1mx");
  EXPECT_EQ(firstRowRuns(*control), "[0;1;31]x");
  const auto command = fedAndBack("\033]2;a ti\033");
  command->feed("\\\033]2;half a");
  EXPECT_EQ(command->state().title, "a ti");
  const auto request = fedAndBack("\033P$q");
  request->feed("m\033\\");
  EXPECT_EQ(request->takeReplies(), "\033P1$r0m\033\\");
}

TEST(SavedTerminal, KeepsTitlesAndTheirStack) {
  const auto terminal = fedAndBack("\033]2;first\a\033[22t\033]2;second\a");
  EXPECT_EQ(terminal->state().title, "second");
  terminal->feed("\033[23t");
  EXPECT_EQ(terminal->state().title, "first");
}

TEST(SavedTerminal, KeepsTheKeyboardOfEachScreen) {
  const auto terminal = fedAndBack("\033[>1u\033[>5u\033[?47h\033[=2u\033[>4;2m\033[>0;3m");
  const auto flags = [&] {
    terminal->feed("\033[?u");
    return terminal->takeReplies();
  };
  EXPECT_EQ(flags(), "\033[?2u");
  terminal->feed("\033[?47l");
  EXPECT_EQ(flags(), "\033[?5u");
  terminal->feed("\033[<u");
  EXPECT_EQ(flags(), "\033[?1u");
  EXPECT_EQ(terminal->state().keyboard.modifyOtherKeys, 2);
  EXPECT_EQ(terminal->state().keyboard.modifyKeyboard, 3);
}

TEST(SavedTerminal, KeepsModesAndThoseThatWereSaved) {
  const auto terminal = fedAndBack("\033[?7;2004s\033[?7l\033[?2004;1000;1006h\033[4h");
  EXPECT_FALSE(terminal->screen().modes.autoWrap);
  EXPECT_TRUE(terminal->screen().modes.insert);
  EXPECT_EQ(terminal->pasteBytes("x"), "\033[200~x\033[201~");
  terminal->feed("\033[?7;2004r");
  EXPECT_TRUE(terminal->screen().modes.autoWrap);
  EXPECT_EQ(terminal->pasteBytes("x"), "x");
}

TEST(SavedTerminal, KeepsMarginsAndTabStops) {
  const auto terminal = fedAndBack("\033[3g\033[5G\033H\033[?69h\033[2;3r\033[2;8s\033[?6h");
  EXPECT_EQ(terminal->screen().margins(),
            (Rectangle{.rows = {.begin = 1, .end = 3}, .columns = {.begin = 1, .end = 8}}));
  terminal->feed("\033[H\tx");
  EXPECT_EQ(screenText(*terminal), "\n    x");
}

TEST(SavedTerminal, KeepsCharacterSets) {
  const auto terminal = fedAndBack("\033(0\033*A\033N");
  terminal->feed("##q");
  EXPECT_EQ(screenText(*terminal), "\u00A3#\u2500");
}

TEST(SavedTerminal, RepeatsTheLastCharacter) {
  const auto terminal = fedAndBack("\u6F22");
  terminal->feed("\033[2b");
  EXPECT_EQ(screenText(*terminal), "\u6F22\u6F22\u6F22");
}

TEST(SavedTerminal, KeepsTheShellsMarks) {
  const auto terminal = fedAndBack("\033]133;A\a$ \033]133;B\als\r\n\033]133;D;3\a");
  const auto marks = [&](int row) { return terminal->screen().grid().marks(row); };
  ASSERT_EQ(marks(0).size(), 2U);
  EXPECT_EQ(marks(0)[1], (RowMark{.column = 2, .kind = HistoryMarkKind::CommandStart}));
  ASSERT_EQ(marks(1).size(), 1U);
  EXPECT_EQ(marks(1)[0], (RowMark{.column = 0, .kind = HistoryMarkKind::CommandEnd, .exitStatus = 3}));
}

TEST(SavedTerminal, KeepsAMarkThatANarrowerAlternateScreenHasCutOff) {
  const auto original = fed("\033[?1049h\033[1;9H\033]133;C\a");
  original->resize({.rows = 4, .columns = 5});
  const auto terminal = back(*original);
  ASSERT_EQ(terminal->screen().grid().marks(0).size(), 1U);
  EXPECT_EQ(terminal->screen().grid().marks(0)[0].column, 8);
}

TEST(SavedTerminal, KeepsFolderAndProgress) {
  const auto terminal = fedAndBack("\033]7;file://host/a%20b\a\033]9;4;2;70\a");
  EXPECT_EQ(terminal->state().workingDirectory, "/a b");
  EXPECT_EQ(terminal->state().workingDirectoryHost, "host");
  EXPECT_EQ(terminal->state().progress, (Progress{.kind = Progress::Kind::Error, .percent = 70}));
}

TEST(SavedTerminal, KeepsTheCursorsStyle) {
  EXPECT_EQ(fedAndBack("\033[6 q")->state().shownCursor(), (CursorStyle{.shape = CursorShape::Bar, .blinks = false}));
  EXPECT_EQ(fedAndBack("")->state().cursorStyle, std::nullopt) << "the user's may have changed since";
}

TEST(SavedTerminal, KeepsTheProgramsColoursUnderAnotherTheme) {
  constexpr Rgb kTheme{.red = 1};
  constexpr Rgb kNewTheme{.red = 2};
  constexpr Rgb kProgram{.red = 0x12, .green = 0x34, .blue = 0x56};
  const auto changeTheme = [](Terminal& terminal, const Rgb& color) {
    for (const std::uint8_t index : {1, 2, 3}) {
      terminal.palette().setIndexedDefault(index, color);
    }
    terminal.palette().setRoleDefault(Palette::Role::Background, color);
  };
  Terminal original({.rows = 4, .columns = 10});
  const Rgb initial = original.palette().indexed(3);
  changeTheme(original, kTheme);
  original.feed("\033[#P\033]4;2;#123456;3;" + colorReport(initial) + "\a\033]11;#123456\a");
  const auto terminal = back(original);
  const Palette& palette = terminal->palette();
  EXPECT_EQ(palette.indexed(1), kTheme);
  changeTheme(*terminal, kNewTheme);
  EXPECT_EQ(palette.indexed(1), kNewTheme);
  EXPECT_EQ(palette.indexed(2), kProgram);
  EXPECT_EQ(palette.indexed(3), initial) << "the program's, although it was in the palette at first";
  EXPECT_EQ(palette.role(Palette::Role::Background), kProgram);
  terminal->feed("\033]104\a");
  EXPECT_EQ(palette.indexed(2), kNewTheme);
  terminal->feed("\033[#Q");
  EXPECT_EQ(palette.role(Palette::Role::Background), kTheme) << "pushed before the program changed it";
}

TEST(SavedTerminal, KeepsARenditionThatWasPushed) {
  const auto terminal = fedAndBack("\033[1;35m\033[#{\033[m");
  terminal->feed("\033[#}x");
  EXPECT_EQ(firstRowRuns(*terminal), "[0;1;35]x");
}

TEST(SavedTerminal, NumbersLinesAndPositionsOn) {
  const auto original =
      fed("one\r\ntwo\r\nthree\r\na line that goes on in the next rows and scrolls", {.rows = 3, .columns = 10});
  const Scrollback& before = original->screen().scrollback();
  const auto terminal = back(*original);
  const Scrollback& after = terminal->screen().scrollback();
  EXPECT_EQ(after.end(), before.end());
  EXPECT_EQ(after.endLine(), before.endLine());
  EXPECT_TRUE(after.endsMidLine());
  EXPECT_EQ(after.begin(), after.end()) << "the lines themselves are kept elsewhere";
  terminal->feed("\r\nx\r\ny\r\nz");
  original->feed("\r\nx\r\ny\r\nz");
  EXPECT_EQ(after.end(), before.end());
  EXPECT_EQ(after.endLine(), before.endLine());
}

TEST(SavedTerminal, KeepsTheRowsThatAShorterScreenPushedPastItsBottom) {
  const auto original = fed("one\r\ntwo\r\nthree\033[H");
  original->resize({.rows = 1, .columns = 10});
  const auto terminal = back(*original);
  EXPECT_EQ(screenText(*terminal), "one");
  EXPECT_EQ(terminal->screen().rowsBelow().text, "two\nthree");
  terminal->resize({.rows = 4, .columns = 10});
  EXPECT_EQ(screenText(*terminal), "one\ntwo\nthree");
}

TEST(SavedTerminal, RejoinsALineThatAShorterScreenCutInTwo) {
  const auto original = fed("a line that wraps\033[H");
  original->resize({.rows = 1, .columns = 10});
  const auto terminal = back(*original);
  EXPECT_EQ(screenText(*terminal), "a line tha");
  terminal->resize({.rows = 4, .columns = 20});
  EXPECT_EQ(screenText(*terminal), "a line that wraps");
}

TEST(SavedTerminal, EndsASynchronizedUpdateInTimeOnAnotherClock) {
  Terminal original({.rows = 4, .columns = 10});
  original.feed("\033[?2026h", Milliseconds(5'000'000));
  original.feed("x", Milliseconds(5'000'100));
  const auto restored = Terminal::restored(original.saved(), {}, Milliseconds(70));
  ASSERT_TRUE(restored);
  EXPECT_TRUE(restored.value()->holdsFrame(Milliseconds(119)));
  EXPECT_FALSE(restored.value()->holdsFrame(Milliseconds(120)));
}

TEST(SavedTerminal, KnowsWhichMouseButtonsAreHeld) {
  Terminal original({.rows = 4, .columns = 10});
  original.feed("\033[?1002;1006h");
  original.mouseBytes({.button = MouseButton::Left, .action = MouseAction::Press, .cell = {.row = 1, .column = 2}});
  const MouseEvent drag{.action = MouseAction::Motion, .cell = {.row = 1, .column = 3}};
  EXPECT_EQ(back(original)->mouseBytes(drag), "\033[<32;4;2M");
  const MouseEvent still{.action = MouseAction::Motion, .cell = {.row = 1, .column = 2}};
  EXPECT_EQ(back(original)->mouseBytes(still), "");
}

TEST(SavedTerminal, TellsTheProgramOfAColourSchemeThatHasChangedSince) {
  Terminal original({.rows = 4, .columns = 10});
  original.feed("\033[?2031h");
  original.setPrefersDark(false);
  const auto terminal = back(original);
  terminal->setPrefersDark(false);
  EXPECT_EQ(terminal->takeReplies(), "");
  terminal->setPrefersDark(true);
  EXPECT_EQ(terminal->takeReplies(), "\033[?997;1n");
}

// Nothing that the user has not caused reaches a new shell, and what has happened does not happen again.
TEST(SavedTerminal, LeavesRepliesAndEventsBehind) {
  const auto terminal = fedAndBack("\033[c\033[6n\a\033]52;c;YQ==\a\033]9;done\a\033]2;title\a");
  EXPECT_EQ(terminal->takeReplies(), "");
  const TerminalEvents events = terminal->takeEvents();
  EXPECT_EQ(events.bells, 0U);
  EXPECT_TRUE(events.clipboardWrites.empty());
  EXPECT_TRUE(events.notifications.empty());
  EXPECT_FALSE(events.titleChanged);
}

TEST(SavedTerminal, TakesTheSettingsThatAreGiven) {
  TerminalSettings settings;
  settings.allowTitleReports = true;
  settings.cursor = {.shape = CursorShape::Underline};
  const auto restored = Terminal::restored(fed("\033]2;title\a")->saved(), settings);
  ASSERT_TRUE(restored);
  EXPECT_EQ(restored.value()->state().shownCursor().shape, CursorShape::Underline);
  restored.value()->feed("\033[21t");
  EXPECT_EQ(restored.value()->takeReplies(), "\033]ltitle\033\\");
}

TEST(SavedTerminal, KeepsMoreStylesThanATableHasRoomForAtFirst) {
  Terminal original({.rows = 200, .columns = 200});
  std::string output;
  for (int i = 0; i < 40'000; ++i) {
    output += "\033[38;2;" + std::to_string(i >> 8) + ";" + std::to_string(i & 255) + ";7mx";
  }
  original.feed(output);
  const auto terminal = back(original);
  for (int row = 0; row < 200; ++row) {
    for (int column = 0; column < 200; ++column) {
      const int number = row * 200 + column;
      const Cell cell = terminal->screen().grid().row(row)[static_cast<std::size_t>(column)];
      ASSERT_EQ(terminal->screen().tables().styles[cell.style()].foreground,
                CellColor::direct(static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number), 7));
    }
  }
}

TEST(SavedTerminal, IsSmall) {
  const TerminalSize size{.rows = 40, .columns = 120};
  EXPECT_LT(fed("", size)->saved().size(), 512U);
  EXPECT_LT(fed(std::string(std::size_t{40} * 120, 'x'), size)->saved().size(), 5400U);
  std::string words;
  for (int i = 0; i < 39; ++i) {
    words += "\033[1;34mname\033[m and some more plain text\r\n";
  }
  EXPECT_LT(fed(words, size)->saved().size(), 2400U);
}

TEST(SavedTerminal, OfANewerVersionIsAnErrorThatSaysSo) {
  std::string bytes = fed("text")->saved();
  ++bytes[0];
  EXPECT_EQ(reasonFor(bytes), "The terminal was saved by a newer version of Zolt.");
}

TEST(SavedTerminal, WithHalfAWideCharacterIsAnError) {
  using Content = CellPiece::Content;
  using Shape = CellPiece::Shape;
  const auto head = [](Content content, Shape shape, std::uint64_t count) {
    return std::string(1, static_cast<char>(CellPiece{.content = content, .shape = shape, .count = count}.head()));
  };
  const auto reasonWith = [](const std::string& output, const std::string& piece, const std::string& instead) {
    std::string bytes = fed(output)->saved();
    const std::size_t at = bytes.find(piece);
    if (at == std::string::npos) return std::string("no such piece");
    return reasonFor(bytes.replace(at, piece.size(), instead));
  };
  const std::string blanks = head(Content::None, Shape::Narrow, 2);
  const std::string text = head(Content::Ascii, Shape::Narrow, 1) + "x";
  for (const Shape shape : {Shape::Tail, Shape::Filler}) {
    EXPECT_NE(reasonWith("\033[2Cx", blanks + text, head(Content::None, shape, 2) + text).find("no terminal has"),
              std::string::npos);
  }
  const std::string narrow = head(Content::Scalar, Shape::Narrow, 1) + "\u00E9";
  const std::string wide = head(Content::Scalar, Shape::Wide, 1) + "\u00E9";
  EXPECT_NE(reasonWith("\033[10G\u00E9", narrow, wide).find("no terminal has"), std::string::npos) << "at the edge";
  EXPECT_NE(reasonWith("\u00E9", narrow, wide).find("no terminal has"), std::string::npos);
}

TEST(SavedTerminal, SaysWhatIsWrongWithItsBytes) {
  EXPECT_EQ(reasonFor(""), "The saved terminal is damaged: an early end before byte 0.");
  EXPECT_EQ(reasonFor("\1\0"sv), "The saved terminal is damaged: an early end before byte 2.");
  EXPECT_NE(reasonFor(fed("text")->saved() + "x").find("more than a terminal"), std::string::npos);
  // A screen that is larger than the few bytes after its size can be.
  EXPECT_NE(reasonFor("\1\x8F\x4E\x8F\x03\0\0more"sv).find("a size that is too large"), std::string::npos);
  std::string title = fed("\033]2;title\a")->saved();
  title[title.find("title")] = '\033';
  EXPECT_NE(reasonFor(title).find("a text that no program can set"), std::string::npos);
}

}  // namespace
}  // namespace zolt::vt
