#include "view/FindSession.h"

#include <gtest/gtest.h>

#include <QTimer>
#include <random>
#include <string>

#include "canvas/CanvasLiterals.h"
#include "find/LogSearch.h"
#include "history/TextStorage.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

using test::runLoopFor;
using test::waitFor;

constexpr std::size_t kSegmentBytes = kSegmentBlocks * TextBlock::capacity;

class FindSessionTest : public testing::Test {
 protected:
  void append(const std::string& text) {
    storage.append(AttributedString(text, TextAttributes()));
    session.textChanged();
  }
  /// Filled up to `size` bytes with lines of 100.
  void fillTo(std::size_t size) {
    std::string lines;
    while (storage.size() + lines.size() < size) {
      lines += std::string(99, '.') + '\n';
    }
    append(lines);
  }
  void search(const char* query, FindOptions options = {}) {
    session.search(FindPattern::compile(query, options).value(), TextPosition(storage.size()));
  }
  bool finish() {
    return waitFor([&] { return !session.isSearching(); });
  }
  std::string currentText() const {
    const auto match = session.current();
    return match ? storage.text(match->begin, match->end) : "none";
  }
  std::uint64_t currentBegin() const { return session.current() ? session.current()->begin.value : UINT64_MAX; }

  TextStorage storage;
  FindSession session{storage};
};

TEST_F(FindSessionTest, LooksForNothingAtFirst) {
  append("text");
  EXPECT_FALSE(session.isActive());
  EXPECT_FALSE(session.isSearching());
  EXPECT_EQ(session.count(), 0U);
  session.goBackward();
  EXPECT_FALSE(session.current());
  EXPECT_EQ(session.marksIn({.begin = 0_pos, .end = 4_pos}), RowMarks());
}

TEST_F(FindSessionTest, GoesToTheLastMatchBeforeWhereItBegan) {
  append("one two one two one");
  session.search(FindPattern::compile("one", {}).value(), 12_pos);
  ASSERT_TRUE(finish());
  EXPECT_EQ(session.count(), 3U);
  EXPECT_EQ(currentBegin(), 8U);
  EXPECT_EQ(session.numberOfCurrent(), 2U);
}

TEST_F(FindSessionTest, GoesToTheLastMatchOfAllWhereNoneIsBefore) {
  append("... one two one");
  session.search(FindPattern::compile("one", {}).value(), 2_pos);
  ASSERT_TRUE(finish());
  EXPECT_EQ(currentBegin(), 12U);
}

TEST_F(FindSessionTest, WalksThroughAllMatchesAndAroundTheEnds) {
  append("a b a b a");
  search("a");
  ASSERT_TRUE(finish());
  EXPECT_EQ(currentBegin(), 8U);
  std::vector<std::uint64_t> walked;
  for (int i = 0; i < 4; ++i) {
    session.goBackward();
    walked.push_back(currentBegin());
  }
  for (int i = 0; i < 4; ++i) {
    session.goForward();
    walked.push_back(currentBegin());
  }
  EXPECT_EQ(walked, (std::vector<std::uint64_t>{4, 0, 8, 4, 8, 0, 4, 8}));
}

TEST_F(FindSessionTest, StandsNowhereWhereNothingIsFound) {
  append("text");
  search("other");
  ASSERT_TRUE(finish());
  EXPECT_FALSE(session.current());
  EXPECT_FALSE(session.numberOfCurrent());
  session.goForward();
  EXPECT_FALSE(session.isSearching());
}

TEST_F(FindSessionTest, CountsWhatALongTextHasWhileItSearches) {
  std::vector<std::uint64_t> counts;
  for (int i = 0; i < 200; ++i) {
    fillTo(storage.size() + kSegmentBytes / 2);
    append("needle\n");
  }
  QObject::connect(&session, &FindSession::resultsChanged, &session, [&] { counts.push_back(session.count()); });
  search("needle");
  ASSERT_TRUE(finish());
  EXPECT_EQ(session.count(), 200U);
  EXPECT_EQ(session.numberOfCurrent(), 200U);
  EXPECT_GT(counts.size(), 2U);
  EXPECT_TRUE(std::ranges::is_sorted(counts));
  EXPECT_EQ(session.spread().size(), 200U);
}

TEST_F(FindSessionTest, IsAtTheNewestMatchBeforeTheOldestTextIsSearched) {
  append("needle\n");
  fillTo(150 * kSegmentBytes);
  append("needle\n");
  bool wasSearching = false;
  QObject::connect(&session, &FindSession::currentChanged, &session, [&] { wasSearching = session.isSearching(); });
  search("needle");
  ASSERT_TRUE(waitFor([&] { return session.current().has_value(); }));
  EXPECT_TRUE(wasSearching);
  EXPECT_EQ(currentBegin(), storage.size() - 7);
  ASSERT_TRUE(finish());
  session.goBackward();
  EXPECT_EQ(currentBegin(), 0U);
  EXPECT_EQ(session.numberOfCurrent(), 1U);
}

TEST_F(FindSessionTest, FindsWhatComesWhileItIsSought) {
  append("needle\n");
  search("needle");
  ASSERT_TRUE(finish());
  append("nee");
  append("dle needle\n");
  EXPECT_TRUE(waitFor([&] { return session.count() == 3; }));
  fillTo(3 * kSegmentBytes);
  append("needle");
  EXPECT_TRUE(waitFor([&] { return session.count() == 4; }));
  EXPECT_EQ(currentBegin(), 0U);
}

TEST_F(FindSessionTest, FindsEachMatchOnceHoweverItsTextCame) {
  std::mt19937 random(7);
  search("needle");
  std::uint64_t expected = 0;
  for (int i = 0; i < 60; ++i) {
    std::string text;
    while (text.size() < kSegmentBytes / 7) {
      text += std::string(random() % 2000, '.') + (random() % 5 == 0 ? "\n" : "needle");
    }
    for (std::size_t at = text.find("needle"); at != std::string::npos; at = text.find("needle", at + 1)) {
      ++expected;
    }
    for (std::size_t at = 0; at < text.size(); at += 3001) {
      append(text.substr(at, 3001));
    }
    if (random() % 3 == 0) runLoopFor(std::chrono::milliseconds(random() % 60));
  }
  EXPECT_TRUE(waitFor([&] { return session.count() == expected && !session.isSearching(); })) << session.count();
  // What is searched after all of it would count a match twice, if anything did.
  append("\nneedle");
  EXPECT_TRUE(waitFor([&] { return session.count() > expected && !session.isSearching(); }));
  EXPECT_EQ(session.count(), expected + 1);
}

TEST_F(FindSessionTest, FindsWhatComesWhileTheEndIsBeingSearchedForLong) {
  constexpr std::size_t kLetters = 15'000;
  append(std::string(kLetters, 'a') + "\n");
  search("a+b|a", {.regularExpression = true});  // to the end of the line for each
  append("a\n");
  EXPECT_TRUE(waitFor([&] { return session.count() == kLetters + 1; })) << session.count();
}

TEST_F(FindSessionTest, MarksThePartsOfMatchesThatARowShows) {
  append("needle needle");
  search("needle");
  ASSERT_TRUE(finish());
  const RowMarks whole = session.marksIn({.begin = 0_pos, .end = 13_pos});
  EXPECT_EQ(whole.found, (std::vector<TextRange>{{.begin = 0_pos, .end = 6_pos}}));
  EXPECT_EQ(whole.current, (TextRange{.begin = 7_pos, .end = 13_pos}));
  const RowMarks part = session.marksIn({.begin = 2_pos, .end = 9_pos});
  EXPECT_EQ(part.found, (std::vector<TextRange>{{.begin = 2_pos, .end = 6_pos}}));
  EXPECT_EQ(part.current, (TextRange{.begin = 7_pos, .end = 9_pos}));
  EXPECT_EQ(session.marksIn({.begin = 6_pos, .end = 7_pos}), RowMarks());
}

TEST_F(FindSessionTest, MarksWhatHasJustComeAtOnce) {
  append("needle\n");
  search("needle");
  ASSERT_TRUE(finish());
  append("...needle...\n");
  EXPECT_EQ(session.marksIn({.begin = 7_pos, .end = 19_pos}).found,
            (std::vector<TextRange>{{.begin = 10_pos, .end = 16_pos}}));
}

TEST_F(FindSessionTest, MarksTheRestOfAMatchThatBeganInTheSegmentBefore) {
  fillTo(kSegmentBytes - 99);
  append(std::string(kSegmentBytes - storage.size() - 3, '.') + "needle" + std::string(300, '.'));
  search("needle");
  ASSERT_TRUE(finish());
  session.marksIn({.begin = TextPosition(kSegmentBytes), .end = TextPosition(kSegmentBytes + 50)});
  ASSERT_TRUE(finish());
  EXPECT_EQ(session.marksIn({.begin = TextPosition(kSegmentBytes), .end = TextPosition(kSegmentBytes + 50)}).current,
            (TextRange{.begin = TextPosition(kSegmentBytes), .end = TextPosition(kSegmentBytes + 3)}));
}

TEST_F(FindSessionTest, ForgetsEverythingWhenItStops) {
  append("needle");
  search("needle");
  ASSERT_TRUE(finish());
  session.stop();
  EXPECT_FALSE(session.isActive());
  EXPECT_EQ(session.count(), 0U);
  EXPECT_FALSE(session.current());
  EXPECT_EQ(session.marksIn({.begin = 0_pos, .end = 6_pos}), RowMarks());
  EXPECT_TRUE(session.spread().empty());
}

TEST_F(FindSessionTest, LooksOnlyForTheLatestOfManyPatterns) {
  fillTo(30 * kSegmentBytes);
  append("needle");
  for (const char* query : {"n", "ne", "nee", "need", "needl"}) {
    search(query);
  }
  search("needle");
  ASSERT_TRUE(finish());
  EXPECT_EQ(session.count(), 1U);
  EXPECT_EQ(currentText(), "needle");
}

TEST_F(FindSessionTest, MayGoWhileItSearches) {
  fillTo(100 * kSegmentBytes);
  auto other = std::make_unique<FindSession>(storage);
  other->search(FindPattern::compile("needle", {}).value(), TextPosition(storage.size()));
  bool hasFound = false;
  QObject::connect(other.get(), &FindSession::resultsChanged, [&] { hasFound = true; });
  ASSERT_TRUE(waitFor([&] { return hasFound; }));
  ASSERT_TRUE(other->isSearching());
  other.reset();
  search("needle");  // on the same threads, after what they still have to do
  EXPECT_TRUE(finish());
}

TEST_F(FindSessionTest, KeepsTheMainThreadFreeWhileItSearches) {
  fillTo(200 * kSegmentBytes);
  search("[a-z]+needle", {.regularExpression = true});
  int turns = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] { ++turns; });
  timer.start(0);
  ASSERT_TRUE(finish());
  EXPECT_GT(turns, 10);
}

TEST_F(FindSessionTest, GivesUpAnExpressionThatWouldTakeForever) {
  bool gaveUp = false;
  QObject::connect(&session, &FindSession::gaveUp, &session, [&] { gaveUp = true; });
  append(std::string(kSegmentBytes, 'a'));
  search("a+b|a", {.regularExpression = true});
  // Six seconds of work at a lower priority: beside busy processes that can take minutes.
  EXPECT_TRUE(waitFor([&] { return gaveUp; }, std::chrono::seconds(500)));
  EXPECT_FALSE(session.isActive());
}

TEST_F(FindSessionTest, BringsBackMatchesThatItCouldNotKeep) {
  append(std::string(6 * kSegmentBytes, 'a'));
  search("a");
  ASSERT_TRUE(finish());
  EXPECT_EQ(session.count(), 6 * kSegmentBytes);
  for (const std::size_t segment : {5U, 0U, 3U, 1U}) {
    const TextRange row{.begin = TextPosition(segment * kSegmentBytes + 10),
                        .end = TextPosition(segment * kSegmentBytes + 15)};
    EXPECT_TRUE(waitFor([&] { return session.marksIn(row).found.size() == 5; })) << segment;
  }
  session.goForward();
  EXPECT_TRUE(waitFor([&] { return currentBegin() == 0; }));
}

}  // namespace
}  // namespace zolt
