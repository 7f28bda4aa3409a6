#include "vt/screen/Grid.h"

#include <gtest/gtest.h>

#include <random>

#include "vt/cells/CellRuns.h"

namespace zolt::vt {
namespace {

TEST(Cell, TakesEightBytes) {
  EXPECT_EQ(sizeof(Cell), 8U);
}

TEST(Cell, KeepsItsFieldsApart) {
  const Cell cell = Cell::cluster(0x1FFFFF, Cell::Width::Wide, Cell::makeAttributes(0xFFFF, 0xABCD, true));
  EXPECT_TRUE(cell.isCluster());
  EXPECT_EQ(cell.clusterId(), 0x1FFFFFU);
  EXPECT_EQ(cell.width(), Cell::Width::Wide);
  EXPECT_EQ(cell.style(), 0xFFFF);
  EXPECT_EQ(cell.link(), 0xABCD);
  EXPECT_TRUE(cell.isProtected());
  const Cell other = cell.withStyle(5).withWidth(Cell::Width::Narrow);
  EXPECT_EQ(other.style(), 5);
  EXPECT_EQ(other.link(), 0xABCD);
  EXPECT_EQ(other.width(), Cell::Width::Narrow);
  EXPECT_EQ(other.clusterId(), 0x1FFFFFU);
}

// A model: a plain list of rows that scrolling moves.
struct NaiveGrid {
  std::vector<std::vector<Cell>> rows;
  void scrollUp(RowRange region, int count, Cell blank) {
    for (; count > 0; --count) {
      rows.insert(rows.begin() + region.end, std::vector<Cell>(rows[0].size(), blank));
      rows.erase(rows.begin() + region.begin);
    }
  }
  void scrollDown(RowRange region, int count, Cell blank) {
    for (; count > 0; --count) {
      rows.erase(rows.begin() + region.end - 1);
      rows.insert(rows.begin() + region.begin, std::vector<Cell>(rows[0].size(), blank));
    }
  }
};

TEST(Grid, ScrollsAsIfEachRowWereMoved) {
  std::mt19937 random(11);
  for (int round = 0; round < 200; ++round) {
    const int rows = 1 + static_cast<int>(random() % 12);
    const int columns = 1 + static_cast<int>(random() % 5);
    Grid grid({.rows = rows, .columns = columns});
    NaiveGrid naive{std::vector(static_cast<std::size_t>(rows), std::vector<Cell>(static_cast<std::size_t>(columns)))};
    for (int step = 0; step < 100; ++step) {
      const int top = static_cast<int>(random() % static_cast<unsigned>(rows));
      const int bottom = top + 1 + static_cast<int>(random() % static_cast<unsigned>(rows - top));
      const int count = static_cast<int>(random() % static_cast<unsigned>(bottom - top + 1));
      const Cell blank = random() % 3 == 0 ? Cell(Cell::makeAttributes(3, 0, false)) : Cell();
      const int column = static_cast<int>(random() % static_cast<unsigned>(columns));
      switch (random() % 4) {
        case 0:
          grid.scrollUp({.begin = top, .end = bottom}, count, blank);
          naive.scrollUp({.begin = top, .end = bottom}, count, blank);
          break;
        case 1:
          grid.scrollDown({.begin = top, .end = bottom}, count, blank);
          naive.scrollDown({.begin = top, .end = bottom}, count, blank);
          break;
        case 2: {
          const Cell cell(U'a' + static_cast<char32_t>(random() % 26), Cell::Width::Narrow, 0);
          grid.row(top)[static_cast<std::size_t>(column)] = cell;
          grid.touch({.row = top, .column = column + 1});
          naive.rows[static_cast<std::size_t>(top)][static_cast<std::size_t>(column)] = cell;
          break;
        }
        default:
          grid.fill(top, {.begin = column, .end = columns}, blank);
          std::fill(naive.rows[static_cast<std::size_t>(top)].begin() + column,
                    naive.rows[static_cast<std::size_t>(top)].end(), blank);
          break;
      }
      for (int row = 0; row < rows; ++row) {
        ASSERT_TRUE(std::ranges::equal(grid.row(row), naive.rows[static_cast<std::size_t>(row)]))
            << "round " << round << " step " << step;
      }
    }
  }
}

TEST(CellRuns, AreReadBackFromCellsAsTheyWereWritten) {
  std::mt19937 random(12);
  for (int round = 0; round < 2000; ++round) {
    std::string text(random() % 100, ' ');
    for (char& c : text) {
      c = static_cast<char>(0x20 + random() % 0x5F);
    }
    const std::uint64_t attributes =
        Cell::makeAttributes(static_cast<StyleId>(random()), static_cast<LinkId>(random()), random() % 2 == 0);
    std::vector<Cell> cells(text.size() + 3);
    spreadAscii(text, attributes, cells.data());
    for (std::size_t i = 0; i < text.size(); ++i) {
      ASSERT_EQ(cells[i], Cell(static_cast<unsigned char>(text[i]), Cell::Width::Narrow, attributes));
    }
    EXPECT_EQ(cells[text.size()], Cell()) << "nothing is written behind";
    std::size_t expected = text.size();
    if (!text.empty() && random() % 2 == 0) {
      expected = random() % text.size();
      const Cell foreign[] = {Cell(), Cell(0xE9, Cell::Width::Narrow, attributes),
                              Cell('a', Cell::Width::Wide, attributes),
                              Cell::cluster('a', Cell::Width::Narrow, attributes),
                              Cell('a', Cell::Width::Narrow, attributes ^ (std::uint64_t{1} << 40))};
      cells[expected] = foreign[random() % std::size(foreign)];
    }
    std::string back(text.size(), '\0');
    const std::size_t count = gatherAscii(cells.data(), text.size(), attributes, back.data());
    ASSERT_EQ(count, expected);
    EXPECT_EQ(back.substr(0, count), text.substr(0, count));
  }
}

TEST(Grid, TellsOnceWhichRowsMayHaveChanged) {
  Grid grid({.rows = 3, .columns = 4});
  const auto changes = [&] {
    std::string changed;
    for (int row = 0; row < grid.rows(); ++row) {
      changed += grid.takeChange(row).isChanged ? '*' : '.';
    }
    return changed;
  };
  EXPECT_EQ(changes(), "***") << "all are new";
  EXPECT_EQ(changes(), "...");
  grid.row(1)[0] = Cell(U'x', Cell::Width::Narrow, 0);
  EXPECT_EQ(changes(), ".*.");
  grid.touch({.row = 1, .column = 1});
  grid.writable(2);
  EXPECT_EQ(changes(), "..*");
  grid.fill(1, {.begin = 0, .end = 1}, Cell());
  EXPECT_EQ(changes(), ".*.");
  grid.fill(0, {.begin = 0, .end = 4}, Cell(Cell::makeAttributes(1, 0, false)));
  EXPECT_EQ(changes(), "*..");
  grid.addMark(2, {});
  EXPECT_EQ(changes(), "..*");
  grid.scrollUp({.begin = 0, .end = 3}, 1, Cell());
  EXPECT_EQ(changes(), "..*") << "the rows that move stay as they are";
}

}  // namespace
}  // namespace zolt::vt
