#include <gtest/gtest.h>

#include <string>

#include "history/LogTexts.h"
#include "history/RowIndex.h"
#include "support/TextPositions.h"

namespace zolt {
namespace {

constexpr std::size_t kCapacity = TextBlock::capacity;

bool same(const RowIndex::Row& a, const RowIndex::Row& b) {
  return a.begin == b.begin && a.end == b.end && a.firstColumn == b.firstColumn && a.beginColumn == b.beginColumn;
}

// A log whose blocks are estimated at first, since they have many lines and some of them wrap.
Log wrappingLog(std::string_view piece, std::size_t blocks) {
  Log log;
  std::string text;
  while (text.size() < blocks * kCapacity) {
    text += piece;
  }
  log.append(text);
  return log;
}

TEST(RowIndexEstimates, AreCorrectedGradually) {
  const Log log = wrappingLog("name\tvalue\tand more than a few words\n", 6);
  RowIndex index(log.storage, 10);
  const std::uint64_t before = index.generation();
  int calls = 1;
  while (index.refine(1)) {
    ++calls;
  }
  EXPECT_GE(calls, 6);
  EXPECT_GT(index.generation(), before);
  EXPECT_EQ(index.rowCount(), NaiveRows(log.naive, 10).count());
  EXPECT_FALSE(index.refine(1));
}

TEST(RowIndexEstimates, AreNotNeededWhenNothingWraps) {
  const Log log = wrappingLog("short\tline\n", 4);
  RowIndex index(log.storage, 80);
  EXPECT_EQ(index.rowCount(), NaiveRows(log.naive, 80).count());
  EXPECT_FALSE(index.refine(0));
}

TEST(RowIndexEstimates, AgreeOnWhichRowShowsAPositionBeforeTheyAreCorrected) {
  RandomText random(50);
  for (const NamedText& named : severalBlocksOfText()) {
    Log log;
    log.append(named.text);
    for (const std::int64_t columns : {3, 10, 80, 70000, 140000}) {
      const NaiveRows rows(log.naive, columns);
      for (int sample = 0; sample < 40; ++sample) {
        // A new index each time, since every call makes some counts exact. Near block boundaries rows span two blocks.
        RowIndex index(log.storage, columns);
        TextPosition position(random.below(log.storage.size() + 1));
        if (sample % 2 == 0) position = TextPosition((1 + random.below(4)) * kCapacity + random.below(40) - 20);
        const RowIndex::Row shown = index.locate(index.rowAt(position));
        ASSERT_TRUE(same(shown, rows[rows.rowAt(position)]))
            << named.name << ", " << position << ", " << columns << " columns";
      }
    }
  }
}

TEST(RowIndexEstimates, AgreeOnThePositionOfARowBeforeTheyAreCorrected) {
  RandomText random(51);
  for (const NamedText& named : severalBlocksOfText()) {
    Log log;
    log.append(named.text);
    for (const std::int64_t columns : {3, 10, 80, 70000}) {
      const NaiveRows rows(log.naive, columns);
      RowIndex index(log.storage, columns);
      for (int sample = 0; sample < 100; ++sample) {
        const auto row = static_cast<RowNumber>(random.below(static_cast<std::size_t>(index.rowCount())));
        const RowIndex::Row located = index.locate(row);
        const std::uint64_t generation = index.generation();
        // The content of a row is exact, even while its number is not.
        const std::int64_t exact = rows.rowAt(located.begin);
        if (located.begin < located.end) {
          ASSERT_TRUE(same(located, rows[exact])) << named.name << ", row " << row;
          if (row < index.rowCount()) {
            ASSERT_EQ(index.rowAt(located.begin), row) << named.name;
          }
        }
        ASSERT_TRUE(same(index.locate(row), located)) << named.name << ", row " << row;
        ASSERT_EQ(index.generation(), generation) << "locating the same row again corrected something";
      }
    }
  }
}

TEST(RowIndexEstimates, DoNotAffectTheRowsAboveOneThatWasLocated) {
  const Log log = wrappingLog("name\tvalue\tand more than a few words\n", 6);
  const NaiveRows rows(log.naive, 10);
  RowIndex index(log.storage, 10);
  // Going down from the top, everything above is exact.
  for (RowNumber row = 0; row < rows.count(); row += 97) {
    ASSERT_TRUE(same(index.locate(row), rows[row])) << row;
  }
}

}  // namespace
}  // namespace zolt
