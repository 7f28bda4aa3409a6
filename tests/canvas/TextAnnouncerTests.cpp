#include "canvas/TextAnnouncer.h"

#include <gtest/gtest.h>

#include <string>

#include "support/ManualClock.h"

namespace zolt {
namespace {

using namespace std::chrono_literals;

class TextAnnouncerTest : public testing::Test {
 protected:
  void show(const std::string& rows) {
    state.rows = QString::fromStdString(rows).split(QLatin1Char('|'));
    announcer.update();
  }
  std::vector<std::string> takeTold() { return std::exchange(told, {}); }

  test::ManualClock clock;
  TextAnnouncer::State state{.rows = {QStringLiteral("$ ")}, .caret = 0};
  int reads = 0;
  std::vector<std::string> told;
  TextAnnouncer announcer{
      {.read =
           [this] {
             ++reads;
             return state;
           },
       .textChanged =
           [this](const TextChange& change) {
             told.push_back(QStringLiteral("-%1+%2").arg(change.removed, change.inserted).toStdString());
           },
       .caretMoved = [this](int caret) { told.push_back("caret " + std::to_string(caret)); },
       .selectionChanged =
           [this](const std::vector<OffsetRange>& selection) {
             told.push_back("selected " + std::to_string(selection.size()));
           }},
      clock};
};

using Told = std::vector<std::string>;

TEST_F(TextAnnouncerTest, ReadsNothingWhileNobodyListens) {
  show("$ ls");
  clock.advance(1h);
  EXPECT_EQ(reads, 0);
  announcer.start();
  show("$ ls -l");
  announcer.stop();
  reads = 0;
  clock.advance(1h);
  show("$ ls -la");
  clock.advance(1h);
  EXPECT_EQ(reads, 0);
  EXPECT_EQ(told, Told());
}

TEST_F(TextAnnouncerTest, TellsWhatHasChangedSinceItWasStarted) {
  announcer.start();
  show("$ l");
  EXPECT_EQ(told, Told()) << "within a frame";
  clock.advance(0ms);
  EXPECT_EQ(told, Told({"-+l"}));
  clock.advance(1h);
  EXPECT_EQ(told.size(), 1U);
}

TEST_F(TextAnnouncerTest, LosesNothingToAnotherListener) {
  announcer.start();
  show("$ l");
  announcer.start();
  clock.advance(0ms);
  EXPECT_EQ(told, Told({"-+l"}));
}

TEST_F(TextAnnouncerTest, TellsTheTextThenTheCaretThenTheSelection) {
  announcer.start();
  state.caret = 4;
  state.selection = {{.begin = 1, .end = 2}};
  show("$ ls");
  clock.advance(0ms);
  EXPECT_EQ(takeTold(), Told({"-+ls", "caret 4", "selected 1"}));
  state.selection.clear();
  show("$ ls");
  clock.advance(1s);
  EXPECT_EQ(takeTold(), Told({"selected 0"}));
}

TEST_F(TextAnnouncerTest, TellsAtMostTenTimesASecondAndThenTheNewest) {
  announcer.start();
  for (int line = 0; line < 999; ++line) {
    std::string rows = "line ";
    rows.append(std::to_string(line)).append("|more ").append(std::to_string(line));
    show(rows);
    clock.advance(1ms);
  }
  EXPECT_EQ(told.size(), 10U);
  clock.advance(1h);
  ASSERT_EQ(told.size(), 11U);
  EXPECT_TRUE(told.back().ends_with("+line 998\nmore 998")) << told.back();
}

TEST_F(TextAnnouncerTest, PausesForEachOfSeveralInsertions) {
  announcer.start();
  show("$ |=|=|=");
  clock.advance(1s);
  told.clear();
  show("$ a|=|b|=");
  clock.advance(0ms);
  EXPECT_EQ(takeTold(), Told({"-+a", "-=+b"}));
  show("$ aa|=|b|=");
  clock.advance(2 * TextAnnouncer::interval - 1ms);
  EXPECT_EQ(told, Told());
  clock.advance(1ms);
  EXPECT_EQ(told, Told({"-+a"}));
}

TEST_F(TextAnnouncerTest, TellsTooManyChangesAsOne) {
  announcer.start();
  show("a|=|a|=|a|=|a|=|a");
  clock.advance(1s);
  told.clear();
  show("b|=|b|=|b|=|b|=|b");
  clock.advance(1s);
  EXPECT_EQ(told, Told({"-a\n=\na\n=\na\n=\na\n=\na+b\n=\nb\n=\nb\n=\nb\n=\nb"}));
}

TEST_F(TextAnnouncerTest, IsNotKeptWaitingByRemovalsAndTheCaret) {
  announcer.start();
  show("$");
  clock.advance(0ms);
  state.caret = 1;
  show("$");
  clock.advance(0ms);
  show("$ x");
  clock.advance(0ms);
  EXPECT_EQ(told, Told({"- +", "caret 1", "-+ x"}));
}

}  // namespace
}  // namespace zolt
