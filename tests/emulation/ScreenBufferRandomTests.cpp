#include <gtest/gtest.h>

#include <string>

#include "emulation/ReferenceScreen.h"
#include "emulation/ScreenPicture.h"
#include "emulation/TerminalScreenBuffer.h"
#include "text/RandomText.h"

namespace zolt {
namespace {

bool sameRows(const std::deque<TerminalScreenBuffer::Row>& actual, const std::vector<ReferenceScreen::Row>& expected) {
  if (actual.size() != expected.size()) return false;
  for (std::size_t row = 0; row < expected.size(); ++row) {
    if (actual[row].size() != expected[row].size()) return false;
    for (std::size_t col = 0; col < expected[row].size(); ++col) {
      if (actual[row][col] != plainCell(expected[row][col])) return false;
    }
  }
  return true;
}

bool same(const TerminalScreenBuffer& actual, const ReferenceScreen& expected) {
  return actual.cursorPosition == Cursor{expected.row, expected.col} && actual.rows() == expected.rows &&
         actual.cols() == expected.cols && sameRows(actual.cells(), expected.cells) &&
         sameRows(actual.scrollbackBuffer(), expected.scrollback);
}

// Writes, resizes and clears both at random and compares them after each step.
void compareInRandomSteps(std::uint64_t seed, int histories, std::size_t greatestRows, std::size_t greatestCols) {
  RandomText random(seed);
  for (int history = 0; history < histories; ++history) {
    TerminalScreenBuffer actual;
    ReferenceScreen expected;
    std::string story;
    for (int step = 0; step < 30; ++step) {
      const std::size_t kind = step == 0 ? 0 : random.below(12);
      if (kind == 0) {
        const auto rows = static_cast<std::int64_t>(1 + random.below(greatestRows));
        const auto cols = static_cast<std::int64_t>(random.below(greatestCols + 1));
        story += " resize(" + std::to_string(rows) + ", " + std::to_string(cols) + ")";
        actual.resize(rows, cols);
        expected.resize(rows, cols);
      } else if (kind == 1) {
        story += " clear()";
        actual.clear();
        expected.clear();
      } else {
        const std::string text = random.text(40);
        story += ' ' + escaped(text);
        actual.parseAndRender(text);
        expected.parseAndRender(text);
      }
      ASSERT_TRUE(same(actual, expected)) << "after" << story;
    }
  }
}

TEST(ScreenBufferAgainstTheRules, AgreesOnSmallGrids) {
  compareInRandomSteps(20, 3000, 4, 6);
}

TEST(ScreenBufferAgainstTheRules, AgreesOnGridsWithTabStops) {
  compareInRandomSteps(21, 400, 8, 40);
}

}  // namespace
}  // namespace zolt
