#include <gtest/gtest.h>

#include "text/CharacterWidth.h"
#include "text/GraphemeBreakFile.h"
#include "text/Utf8.h"
#include "vt/Terminal.h"

namespace zolt::vt {
namespace {

using Texts = std::vector<std::string>;

// The texts of the non-empty cells in the first row, and the columns they occupy.
struct Row {
  Texts texts;
  int columns = 0;
};

Row firstRow(std::string_view bytes, bool inClusters) {
  Terminal terminal({.rows = 2, .columns = 40});
  if (inClusters) terminal.feed("\033[?2027h");
  terminal.feed(bytes);
  Row row{.texts = {}, .columns = terminal.screen().cursor().column};
  for (const Cell cell : terminal.screen().grid().row(0)) {
    std::string text;
    terminal.screen().tables().appendText(cell, text);
    if (!cell.isErased() && cell.width() != Cell::Width::Tail) row.texts.push_back(text);
  }
  return row;
}

// Characters that are printed as such: controls are not, and zero-width characters always join the cell before them.
bool isPrinted(const std::u32string& cluster) {
  const auto isControl = [](char32_t scalar) { return scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0); };
  return std::ranges::none_of(cluster, isControl) && characterProperties(cluster.front()).width > 0;
}

TEST(Clusters, AreSegmentedAsInUnicodesTestFile) {
  const auto lines = zolt::test::graphemeBreakFile();
  if (lines.empty()) GTEST_SKIP() << "the package unicode-data is not installed";
  int looked = 0;
  for (const auto& line : lines) {
    if (!std::ranges::all_of(line.clusters, isPrinted)) continue;
    std::string bytes;
    Texts expected;
    for (const std::u32string& cluster : line.clusters) {
      std::string& text = expected.emplace_back();
      for (const char32_t scalar : cluster) {
        appendUtf8(text, scalar);
      }
      bytes += text;
    }
    EXPECT_EQ(firstRow(bytes, true).texts, expected) << "line " << line.number;
    ++looked;
  }
  EXPECT_GT(looked, 200);
}

TEST(Clusters, AreAsWideAsTheWholeCluster) {
  const struct {
    const char* text;
    int asClusters;
    int asCharacters;
  } expectations[] = {
      {"e\u0301", 1, 1},
      {"\u4E2D", 2, 2},
      {"\U0001F600", 2, 2},
      {"\u2764\uFE0F", 2, 1},                                // a heart with emoji presentation
      {"1\uFE0F\u20E3", 2, 1},                               // a keycap
      {"\U0001F1E9\U0001F1EA", 2, 2},                        // a flag
      {"\U0001F44D\U0001F3FD", 2, 4},                        // a skin tone
      {"\U0001F468\u200D\U0001F469\u200D\U0001F467", 2, 6},  // a family
      {"\u1112\u1161\u11AB", 2, 2},                          // a decomposed syllable
      {"\u0928\u093F", 1, 2},                                // Devanagari with a spacing vowel sign
  };
  for (const auto& expected : expectations) {
    EXPECT_EQ(firstRow(expected.text, true).columns, expected.asClusters) << expected.text;
    EXPECT_EQ(firstRow(expected.text, true).texts, Texts{expected.text});
    EXPECT_EQ(firstRow(expected.text, false).columns, expected.asCharacters) << expected.text;
  }
}

TEST(Clusters, AreNotJoinedAcrossOtherFunctions) {
  EXPECT_EQ(firstRow("\U0001F468\u200D\033[m\U0001F469", true).texts, (Texts{"\U0001F468\u200D", "\U0001F469"}));
  EXPECT_EQ(firstRow("\U0001F1E9\033[m\U0001F1EA", true).texts, (Texts{"\U0001F1E9", "\U0001F1EA"}));
}

TEST(Clusters, WrapWhenTheyGrowTooWideForTheLastColumn) {
  Terminal terminal({.rows = 3, .columns = 5});
  terminal.feed("\033[?2027habcd\u2764\uFE0Fx");
  EXPECT_EQ(terminal.screen().cursor(), (Cursor{.row = 1, .column = 3}));
  EXPECT_EQ(terminal.screen().grid().row(0)[4].width(), Cell::Width::Filler);
  EXPECT_EQ(terminal.screen().grid().row(1)[0].width(), Cell::Width::Wide);
  EXPECT_TRUE(terminal.screen().grid().state(0).wraps);
}

}  // namespace
}  // namespace zolt::vt
