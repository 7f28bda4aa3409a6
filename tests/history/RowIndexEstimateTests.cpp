#include <gtest/gtest.h>

#include <string>

#include "history/LogTexts.h"
#include "history/RowIndex.h"

namespace zolt {
namespace {

constexpr std::size_t kCapacity = TextBlock::capacity;

bool same(const RowIndex::Row& a, const RowIndex::Row& b) {
  return a.begin == b.begin && a.end == b.end && a.firstColumn == b.firstColumn && a.beginColumn == b.beginColumn;
}

// A log whose blocks are counted by estimates at first: they wrap, and have tabs or many lines.
Log wrappingLog(std::string_view piece, std::size_t blocks) {
  Log log;
  std::string text;
  while (text.size() < blocks * kCapacity) {
    text += piece;
  }
  log.append(text);
  return log;
}

TEST(RowIndexEstimates, AreCorrectedBitByBit) {
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

TEST(RowIndexEstimates, AreNotNeededWhereNothingWraps) {
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
        // A new index each time: every question makes some of the counts exact. Near a block's end rows reach over it.
        RowIndex index(log.storage, columns);
        TextPosition position = random.below(log.storage.size() + 1);
        if (sample % 2 == 0) position = (1 + random.below(4)) * kCapacity + random.below(40) - 20;
        const RowIndex::Row shown = index.locate(index.rowAt(position));
        ASSERT_TRUE(same(shown, rows[rows.rowAt(position)]))
            << named.name << ", position " << position << ", " << columns << " columns";
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
        // Row contents are exact, whatever their numbers are.
        const std::int64_t exact = rows.rowAt(located.begin);
        if (located.begin < located.end) {
          ASSERT_TRUE(same(located, rows[exact])) << named.name << ", row " << row;
          if (row < index.rowCount()) {
            ASSERT_EQ(index.rowAt(located.begin), row) << named.name;
          }
        }
        ASSERT_TRUE(same(index.locate(row), located)) << named.name << ", row " << row;
        ASSERT_EQ(index.generation(), generation) << "asking for the same row again corrected something";
      }
    }
  }
}

TEST(RowIndexEstimates, LeaveWhatStandsBeforeARowAlone) {
  const Log log = wrappingLog("name\tvalue\tand more than a few words\n", 6);
  const NaiveRows rows(log.naive, 10);
  RowIndex index(log.storage, 10);
  // From the top on everything is exact as far as it was passed through.
  for (RowNumber row = 0; row < rows.count(); row += 97) {
    ASSERT_TRUE(same(index.locate(row), rows[row])) << row;
  }
}

}  // namespace
}  // namespace zolt
