#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "vt/SequenceCase.h"
#include "vt/SequenceRows.h"

namespace zolt::vt::test {
namespace {

// A terminal's screen and replies after a case.
struct Seen {
  std::string screen;
  std::string cursor;
  std::string runs;
  std::string replies;
  std::string title;

  friend bool operator==(const Seen&, const Seen&) = default;
};

Seen see(Terminal& terminal) {
  return {.screen = screenText(terminal),
          .cursor = cursorText(terminal),
          .runs = firstRowRuns(terminal),
          .replies = terminal.takeReplies(),
          .title = terminal.state().title};
}

// Escapes ESC and other invisible characters as in the cases.
std::string printable(std::string_view text) {
  std::string shown;
  for (const char c : text) {
    if (c == '\033') {
      shown += "\\033";
    } else {
      shown += c;
    }
  }
  return shown;
}

void expectMatches(const SequenceCase& given, const Seen& seen) {
  const auto expectEqual = [](const std::optional<std::string_view>& wanted, const std::string& is) {
    if (!wanted) return;
    EXPECT_EQ(printable(is), printable(*wanted));
  };
  expectEqual(given.screen, seen.screen);
  expectEqual(given.cursor, seen.cursor);
  expectEqual(given.runs, seen.runs);
  expectEqual(given.replies, seen.replies);
  expectEqual(given.title, seen.title);
}

void run(const SequenceCase& given) {
  SCOPED_TRACE(std::string(given.covers) + ": " + std::string(given.says));
  const TerminalSettings settings = given.allowsReading ? readableSettings() : TerminalSettings();
  Terminal whole({.rows = given.rows, .columns = given.columns}, settings);
  whole.feed(given.input);
  const Seen seen = see(whole);
  expectMatches(given, seen);
  EXPECT_TRUE(given.holds == nullptr || given.holds(whole));

  Terminal byByte({.rows = given.rows, .columns = given.columns}, settings);
  for (const char byte : given.input) {
    byByte.feed({&byte, 1});
  }
  EXPECT_TRUE(see(byByte) == seen) << "fed byte by byte it is another";
  EXPECT_TRUE(given.holds == nullptr || given.holds(byByte)) << "fed byte by byte";
}

void runAll(std::span<const SequenceCase> cases) {
  ASSERT_FALSE(cases.empty());
  for (const SequenceCase& each : cases) {
    run(each);
  }
}

TEST(VtSequences, ControlCharactersAndEscapeSequencesDoWhatTheySay) {
  runAll(controlCases());
}
TEST(VtSequences, CursorFunctionsDoWhatTheySay) {
  runAll(cursorCases());
}
TEST(VtSequences, EditingFunctionsDoWhatTheySay) {
  runAll(editingCases());
}
TEST(VtSequences, RectangleFunctionsDoWhatTheySay) {
  runAll(rectangleCases());
}
TEST(VtSequences, RenditionsDoWhatTheySay) {
  runAll(renditionCases());
}
TEST(VtSequences, ModesDoWhatTheySay) {
  runAll(modeCases());
}
TEST(VtSequences, RequestsAreAnsweredAsTheySay) {
  runAll(reportCases());
}
TEST(VtSequences, SettingsDoWhatTheySay) {
  runAll(settingCases());
}
TEST(VtSequences, CommandsAndDeviceControlsDoWhatTheySay) {
  runAll(stringCases());
}

TEST(VtSequences, EveryCaseExpectsSomething) {
  for (const SequenceCase* const each : allCases()) {
    const bool expectsSomething =
        each->screen || each->cursor || each->replies || each->runs || each->title || each->holds;
    EXPECT_TRUE(expectsSomething) << each->covers << ": " << each->says;
    EXPECT_FALSE(each->says.empty()) << each->covers;
  }
}

TEST(VtSequences, EveryRowHasAUniqueNameThatCasesCanReferTo) {
  std::set<std::string_view> names;
  for (const RowFamily& family : rowFamilies()) {
    for (const Documented* const row : family.rows) {
      EXPECT_TRUE(names.insert(row->name).second) << row->name << " is the name of two rows";
      EXPECT_EQ(row->name.find(','), std::string_view::npos) << row->name;
      EXPECT_FALSE(row->sequence.empty() || row->origin.empty() || row->meaning.empty()) << row->name;
    }
  }
}

TEST(VtSequences, EveryRowIsCoveredAndEveryCaseCoversARow) {
  std::set<std::string_view> rows;
  for (const RowFamily& family : rowFamilies()) {
    for (const Documented* const row : family.rows) {
      rows.insert(row->name);
    }
  }
  std::set<std::string_view> covered;
  for (const SequenceCase* const each : allCases()) {
    for (const std::string_view name : coveredNames(*each)) {
      EXPECT_TRUE(rows.contains(name)) << "'" << name << "' of '" << each->says << "' is no row";
      covered.insert(name);
    }
  }
  for (const std::string_view name : rows) {
    EXPECT_TRUE(covered.contains(name)) << name << " has no case";
  }
}

}  // namespace
}  // namespace zolt::vt::test
