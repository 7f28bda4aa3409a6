// Finding in the full emulation's text: a scrollback that is trimmed and changes at its end, and the lines on the
// screen.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "canvas/CanvasLiterals.h"
#include "support/WaitFor.h"
#include "view/FindSession.h"
#include "vt/ScrollbackModel.h"
#include "vt/history/ScrollbackText.h"
#include "vt/history/TailBuilder.h"

namespace zolt {
namespace {

using test::waitFor;

class ScrollbackFindTest : public testing::Test {
 protected:
  void appendLines(int count, const std::string& line) {
    for (int i = 0; i < count; ++i) {
      model.append(line, false);
    }
  }
  /// Shows the scrollback as it is now, with `screen` after it.
  void show(const std::string& screen = "") {
    vt::TailBuilder builder(model.scrollback().view(), false);
    builder.add({.text = screen, .runs = {{.length = screen.size()}}, .isEnded = false});
    text.show(builder.finish());
    session.textChanged();
  }
  void search(const char* query, FindOptions options = {}) {
    session.search(FindPattern::compile(query, options).value(), text.end());
  }
  bool counts(std::uint64_t count) {
    return waitFor([&] { return session.count() == count && !session.isSearching(); });
  }
  std::string currentText() const {
    const auto match = session.current();
    return match ? text.text(match->begin, match->end) : "none";
  }

  vt::test::ScrollbackModel model;
  vt::ScrollbackText text{model.scrollback().view()};
  FindSession session{text};
};

TEST_F(ScrollbackFindTest, FindsWhatIsInTheScrollbackAndOnTheScreen) {
  appendLines(30'000, std::string(70, '.') + " needle");
  show("needle on screen");
  search("needle");
  ASSERT_TRUE(counts(30'001));
  EXPECT_EQ(session.current()->begin, text.end() - 16);
  session.goBackward();
  EXPECT_EQ(session.current()->end, text.end() - 17);
  EXPECT_EQ(session.numberOfCurrent(), 30'000U);
}

TEST_F(ScrollbackFindTest, FindsWhatComesIntoALaterView) {
  show("$ ");
  search("needle");
  ASSERT_TRUE(counts(0));
  appendLines(1000, "needle");
  show("$ ");
  EXPECT_TRUE(counts(1000)) << session.count();
  appendLines(20'000, std::string(100, '.'));
  appendLines(1000, "needle");
  show("$ ");
  EXPECT_TRUE(counts(2000)) << session.count();
}

TEST_F(ScrollbackFindTest, ForgetsWhatIsTrimmedAtOnce) {
  appendLines(30'000, "needle" + std::string(94, '.'));
  show();
  search("needle");
  ASSERT_TRUE(counts(30'000));
  session.goForward();
  EXPECT_EQ(session.current()->begin, text.begin());
  model.setLimit(5000);
  show();
  const std::uint64_t left = model.scrollback().lineCount();
  ASSERT_LT(left, 10'000U);
  EXPECT_EQ(session.count(), left);
  EXPECT_FALSE(session.current());
  EXPECT_GE(session.spread().front().begin, text.begin());
  session.goForward();
  EXPECT_EQ(session.current()->begin, text.begin());
  EXPECT_EQ(session.numberOfCurrent(), 1U);
  session.goBackward();
  EXPECT_EQ(session.numberOfCurrent(), left) << "around the end";
  EXPECT_TRUE(counts(left));
}

TEST_F(ScrollbackFindTest, ForgetsWhatIsClearedAndGoesOn) {
  appendLines(30'000, "needle" + std::string(94, '.'));
  show();
  search("needle");
  ASSERT_TRUE(counts(30'000));
  model.scrollback().clear();
  show();
  EXPECT_EQ(session.count(), 0U);
  EXPECT_TRUE(session.spread().empty());
  session.goForward();
  EXPECT_FALSE(session.current());
  appendLines(10, "needle");
  show();
  EXPECT_TRUE(counts(10));
}

TEST_F(ScrollbackFindTest, ForgetsWhatWasTakenBackAtOnce) {
  appendLines(100, "needle");
  show();
  search("needle");
  ASSERT_TRUE(counts(100));
  for (int i = 0; i < 30; ++i) {
    model.scrollback().takeLastLine(1000);
  }
  show();
  EXPECT_EQ(session.count(), 70U);
  EXPECT_FALSE(session.current());
  EXPECT_TRUE(counts(70));
}

TEST_F(ScrollbackFindTest, SearchesTheScreenAgainWhenItChanges) {
  appendLines(10, "straw");
  show("a needle");
  search("needle");
  ASSERT_TRUE(counts(1));
  EXPECT_EQ(currentText(), "needle");
  show("needles, needles");
  EXPECT_TRUE(counts(2));
  show("nothing, nothing");
  EXPECT_TRUE(counts(0));
  EXPECT_FALSE(session.current());
}

TEST_F(ScrollbackFindTest, BeginsAnewInAnotherTextAndWaitsForTheUserToGoToAMatch) {
  appendLines(30'000, "needle" + std::string(94, '.'));
  model.setLimit(5000);
  show();
  ASSERT_GT(text.begin(), TextPosition(0));
  search("needle");
  ASSERT_TRUE(counts(text.endLine() - text.firstLine()));
  vt::test::ScrollbackModel other;
  other.append("two needles, needles", false);
  text.show(other.scrollback().view());
  session.textReplaced();
  EXPECT_FALSE(session.current());
  EXPECT_EQ(session.count(), 0U);
  EXPECT_TRUE(session.spread().empty());
  EXPECT_TRUE(session.isSearching()) << "soon";
  EXPECT_TRUE(counts(2)) << session.count();
  EXPECT_FALSE(session.current());
  session.goBackward();
  EXPECT_EQ(session.numberOfCurrent(), 2U);
}

TEST_F(ScrollbackFindTest, TakesTheCurrentMatchAlongWhenPlacesMove) {
  show("10% needle needle");
  search("needle");
  ASSERT_TRUE(counts(2));
  session.goBackward();
  ASSERT_EQ(session.current()->begin, text.begin() + 4);
  session.movePlaces([](TextPosition position) { return position + 1; });
  show("100% needle needle");
  EXPECT_EQ(session.current()->begin, text.begin() + 5);
  EXPECT_TRUE(waitFor([&] { return session.spread().front().begin == text.begin() + 5; }));
  EXPECT_EQ(session.numberOfCurrent(), 1U);
  // The line was cut within the match.
  const TextPosition cut = text.begin() + 7;
  session.movePlaces([&](TextPosition position) { return std::min(position, cut); });
  show("100% ne");
  EXPECT_FALSE(session.current());
}

TEST_F(ScrollbackFindTest, KeepsCountWhileMuchIsPrintedAndTrimmed) {
  model.setLimit(20'000);
  show();
  search("needle");
  for (int round = 0; round < 60; ++round) {
    appendLines(1000, (round % 3 == 0 ? "needle" : "straws") + std::string(94, '.'));
    show();
    test::runLoopFor(std::chrono::milliseconds(round % 4 == 0 ? 15 : 0));
  }
  std::uint64_t expected = 0;
  const std::string all = text.text(text.begin(), text.end());
  for (std::size_t at = all.find("needle"); at != std::string::npos; at = all.find("needle", at + 1)) {
    ++expected;
  }
  ASSERT_GT(expected, 1000U);
  EXPECT_TRUE(counts(expected)) << session.count() << " of " << expected;
}

}  // namespace
}  // namespace zolt
