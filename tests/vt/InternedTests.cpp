#include "vt/cells/Interned.h"

#include <gtest/gtest.h>

#include <functional>

namespace zolt::vt {
namespace {

using Table = Interned<int, std::hash<int>>;

constexpr std::size_t kMaxSize = 1024;

// Fills the table, except for its reserve.
Table fullTable() {
  Table table(kMaxSize, 0);
  for (int value = 1; table.intern(value, false) != Table::noRoom; ++value) {
  }
  return table;
}

TEST(Interned, GivesEqualValuesOneId) {
  Table table(kMaxSize, 0);
  const Table::Id seven = table.intern(7);
  EXPECT_EQ(table.intern(0), 0U);
  EXPECT_NE(table.intern(8), seven);
  EXPECT_EQ(table.intern(7), seven);
  EXPECT_EQ(table[seven], 7);
}

TEST(Interned, KeepsAReserve) {
  Table table = fullTable();
  EXPECT_LT(table.size(), kMaxSize);
  EXPECT_EQ(table.intern(-1, false), Table::noRoom);
  EXPECT_NE(table.intern(-1), Table::noRoom);
}

TEST(Interned, ReusesTheIdsOfUnusedValues) {
  Table table = fullTable();
  table.keepOnly([](std::size_t id) { return id % 2 == 0; });
  EXPECT_EQ(table.intern(10), 10U) << "a used value keeps its ID";
  const std::size_t limit = table.idLimit();
  EXPECT_LT(table.intern(-1), limit);
  EXPECT_EQ(table.idLimit(), limit);
}

// A sweep visits every cell. If each new value could cause one, output with many styles or links would take time
// proportional to the size of the screen for each of them.
TEST(Interned, IsNotWorthSweepingAgainAfterASweepThatFreedLittle) {
  for (const std::size_t freed : {std::size_t{0}, std::size_t{1}, kMaxSize / 32}) {
    Table table = fullTable();
    table.keepOnly([&](std::size_t id) { return id > freed; });
    EXPECT_FALSE(table.isWorthSweeping()) << freed;
  }
  Table table = fullTable();
  table.keepOnly([](std::size_t id) { return id > kMaxSize / 4; });
  EXPECT_TRUE(table.isWorthSweeping());
}

}  // namespace
}  // namespace zolt::vt
