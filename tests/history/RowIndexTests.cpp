#include "history/RowIndex.h"

#include <gtest/gtest.h>

#include <string>

#include "history/LogTexts.h"
#include "support/TextPositions.h"

namespace zolt {
namespace {

constexpr std::size_t kCapacity = TextBlock::capacity;

std::string print(const RowIndex::Row& row) {
  return "bytes " + std::to_string(row.begin.value) + " to " + std::to_string(row.end.value) + ", columns from " +
         std::to_string(row.firstColumn) + ", first at " + std::to_string(row.beginColumn);
}

// Compares rows and positions: all of them in a small log, otherwise samples and everything near block boundaries.
void expectSameRows(const Log& log, RowIndex& index, RandomText& random) {
  while (index.refine(2)) {
  }
  const NaiveRows rows(log.naive, index.columns());
  ASSERT_EQ(index.rowCount(), rows.count());
  const std::uint64_t generation = index.generation();
  const auto expectRow = [&](std::int64_t row) { ASSERT_EQ(print(index.locate(row)), print(rows[row])) << row; };
  const auto expectPosition = [&](TextPosition position) {
    ASSERT_EQ(index.rowAt(position), rows.rowAt(position)) << position;
  };
  constexpr std::int64_t kAll = 300;
  for (std::int64_t i = 0; i < std::min(rows.count(), kAll); ++i) {
    const auto sample = static_cast<std::int64_t>(random.below(static_cast<std::size_t>(rows.count())));
    ASSERT_NO_FATAL_FAILURE(expectRow(rows.count() <= kAll ? i : sample));
  }
  ASSERT_NO_FATAL_FAILURE(expectRow(0));
  ASSERT_NO_FATAL_FAILURE(expectRow(rows.count() - 1));
  for (int i = 0; i < 300; ++i) {
    ASSERT_NO_FATAL_FAILURE(expectPosition(TextPosition(random.below(log.storage.size() + 1))));
  }
  for (std::size_t block = 0; block < log.storage.blockCount(); ++block) {
    const TextPosition edge = log.storage.block(block)->end();
    for (TextPosition at = edge.backBy(10); at <= std::min(edge + 10, log.storage.end()); at = at + 1) {
      ASSERT_NO_FATAL_FAILURE(expectPosition(at));
      ASSERT_NO_FATAL_FAILURE(expectRow(rows.rowAt(at)));
    }
  }
  ASSERT_EQ(index.generation(), generation) << "nothing was left to correct";
}

void expectSameRows(const Log& log, std::int64_t columns) {
  RowIndex index(log.storage, columns);
  RandomText random(40);
  ASSERT_NO_FATAL_FAILURE(expectSameRows(log, index, random)) << columns << " columns";
}

TEST(RowIndex, HasOneRowForAnEmptyLog) {
  const Log log;
  RowIndex index(log.storage, 80);
  EXPECT_EQ(index.rowCount(), 1);
  EXPECT_EQ(print(index.locate(0)), print({}));
  EXPECT_EQ(index.rowAt(0_pos), 0);
  EXPECT_FALSE(index.refine(1));
}

TEST(RowIndex, FillsARowForEachWidthOfColumnsAndAtLeastOne) {
  Log log;
  log.append("12345\n\n1234567890\n123");
  RowIndex index(log.storage, 5);
  EXPECT_EQ(index.rowCount(), 5);
  EXPECT_EQ(print(index.locate(3)), print({.begin = 12_pos, .end = 17_pos, .firstColumn = 5, .beginColumn = 5}));
  EXPECT_EQ(index.rowAt(5_pos), 0);  // the line feed after a full row starts no row of its own
  EXPECT_EQ(index.rowAt(17_pos), 3);
  for (const std::int64_t columns : {1, 2, 3, 4, 5, 6, 9, 10, 11, 80}) {
    ASSERT_NO_FATAL_FAILURE(expectSameRows(log, columns));
  }
}

TEST(RowIndex, LetsATabExtendOverSeveralRows) {
  Log log;
  log.append("a\tb");
  RowIndex index(log.storage, 3);
  EXPECT_EQ(index.rowCount(), 3);
  EXPECT_EQ(print(index.locate(1)), print({.begin = 2_pos, .end = 2_pos, .firstColumn = 3, .beginColumn = 8}));
  EXPECT_EQ(print(index.locate(2)), print({.begin = 2_pos, .end = 3_pos, .firstColumn = 6, .beginColumn = 8}));
  for (std::int64_t columns = 1; columns <= 20; ++columns) {
    ASSERT_NO_FATAL_FAILURE(expectSameRows(log, columns));
  }
}

TEST(RowIndex, ClampsRowNumbers) {
  Log log;
  log.append("a\nb\nc");
  RowIndex index(log.storage, 80);
  EXPECT_EQ(print(index.locate(-1)), print(index.locate(0)));
  EXPECT_EQ(print(index.locate(3)), print(index.locate(2)));
}

TEST(RowIndex, WrapsAtOneColumnAtLeast) {
  Log log;
  log.append("abc");
  RowIndex index(log.storage, 0);
  EXPECT_EQ(index.columns(), 1);
  EXPECT_EQ(index.rowCount(), 3);
  index.setColumns(-5);
  EXPECT_EQ(index.columns(), 1);
}

TEST(RowIndex, HasTheRowsOfTextsOfSeveralBlocks) {
  for (const NamedText& named : severalBlocksOfText()) {
    Log log;
    log.append(named.text);
    for (const std::int64_t columns : {1, 7, 8, 80, 132, 1000, 65279, 65280, 65281, 200000}) {
      ASSERT_NO_FATAL_FAILURE(expectSameRows(log, columns)) << named.name;
    }
  }
}

TEST(RowIndex, HasTheSameRowsWhateverTextEndsABlock) {
  for (const std::string& ending : boundaryEndings()) {
    for (std::size_t before = 0; before <= std::min<std::size_t>(ending.size(), 3); ++before) {
      for (const char* filler : {"x", "\n", "ab\tc\r\n"}) {
        Log log;
        std::string text;
        while (text.size() < kCapacity - before) {
          text += filler;
        }
        text.resize(kCapacity - before);
        log.append(text + ending + "more\tand\nmore");
        for (const std::int64_t columns : {1, 5, 16, 80}) {
          ASSERT_NO_FATAL_FAILURE(expectSameRows(log, columns)) << escaped(filler) << escaped(ending) << before;
        }
      }
    }
  }
}

TEST(RowIndex, FollowsWhatIsAppended) {
  RandomText random(41, logAlphabet);
  for (int round = 0; round < 4; ++round) {
    Log log;
    RowIndex index(log.storage, static_cast<std::int64_t>(1 + random.below(100)));
    while (log.storage.size() < 3 * kCapacity) {
      log.append(random.text(random.below(5) == 0 ? 12000 : 50));
      index.sync();
      if (random.below(10) == 0) index.setColumns(static_cast<std::int64_t>(1 + random.below(100)));
      if (random.below(10) == 0) {
        ASSERT_NO_FATAL_FAILURE(expectSameRows(log, index, random)) << "round " << round;
      }
    }
  }
}

TEST(RowIndex, HasTheSameRowsAfterTheWidthChangesAndChangesBack) {
  RandomText random(42);
  for (const NamedText& named : severalBlocksOfText()) {
    Log log;
    log.append(named.text);
    RowIndex index(log.storage, 80);
    for (const std::int64_t columns : {80, 79, 200, 10, 80}) {
      index.setColumns(columns);
      ASSERT_EQ(index.columns(), columns);
      ASSERT_NO_FATAL_FAILURE(expectSameRows(log, index, random)) << named.name << ", " << columns << " columns";
    }
  }
}

TEST(RowIndex, ChangesItsGenerationOnlyWithTheWidth) {
  Log log;
  log.append("some text\n");
  RowIndex index(log.storage, 80);
  const std::uint64_t before = index.generation();
  index.setColumns(80);
  EXPECT_EQ(index.generation(), before);
  index.setColumns(81);
  EXPECT_GT(index.generation(), before);
}

}  // namespace
}  // namespace zolt
