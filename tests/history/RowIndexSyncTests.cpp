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

// Expects `index` to agree with `rows` up to `end`, whatever was appended since the last sync.
void expectRowsUpTo(RowIndex& index, const NaiveRows& rows, TextPosition end) {
  ASSERT_EQ(index.rowCount(), rows.count());
  const std::int64_t step = rows.count() / 1000 + 1;
  for (RowNumber row = rows.count() - 1; row >= 0; row -= step) {
    ASSERT_TRUE(same(index.locate(row), rows[row])) << row;
    ASSERT_EQ(index.rowAt(rows[row].end), rows.rowAt(rows[row].end)) << row;
  }
  ASSERT_EQ(index.rowAt(end), rows.count() - 1);
  ASSERT_EQ(index.rowAt(end + 100 * kCapacity), rows.count() - 1);
}

TEST(RowIndexSync, KeepsTheIndexAnsweringAsOfTheLastSync) {
  RandomText random(52, logAlphabet);
  for (int round = 0; round < 40; ++round) {
    Log log;
    log.append(std::string(random.below(kCapacity), "x\n\t"[random.below(3)]) + random.text(3000) + "\n");
    RowIndex index(log.storage, static_cast<std::int64_t>(1 + random.below(100)));
    while (index.refine(8)) {
    }
    const NaiveRows rows(log.naive, index.columns());
    const TextPosition end = log.storage.end();
    log.append("\n");
    log.append(std::string(random.below(3 * kCapacity), 'x'));
    log.append("\n");
    ASSERT_NO_FATAL_FAILURE(expectRowsUpTo(index, rows, end)) << "round " << round;
    index.sync();
    while (index.refine(8)) {
    }
    ASSERT_EQ(index.rowCount(), NaiveRows(log.naive, index.columns()).count());
  }
}

TEST(RowIndexSync, KeepsTheEmptyLineAfterAFullBlockUntilTheNextSync) {
  for (const char* lineEnd : {"\n", "\r", "\r\n"}) {
    Log log;
    std::string text(kCapacity, 'x');
    log.append(text.replace(kCapacity - std::string_view(lineEnd).size(), std::string::npos, lineEnd));
    RowIndex index(log.storage, 80);
    const NaiveRows rows(log.naive, 80);
    log.append("x");  // starts a new block, where the last line now begins
    ASSERT_EQ(log.storage.blockCount(), 2u);
    ASSERT_NO_FATAL_FAILURE(expectRowsUpTo(index, rows, TextPosition(kCapacity))) << escaped(lineEnd);
  }
}

}  // namespace
}  // namespace zolt
