#include "canvas/TextInView.h"

#include <gtest/gtest.h>

#include <ostream>

#include "canvas/CanvasLiterals.h"

namespace zolt {

static void PrintTo(const OffsetRange& range, std::ostream* out) {
  *out << range.begin << " to " << range.end;
}

namespace {

OffsetRange offsets(int begin, int end) {
  return {.begin = begin, .end = end};
}

// A row that begins at `begin`, of clusters in so many columns each.
std::shared_ptr<const RowContent> rowOf(TextPosition begin, const std::vector<std::pair<std::string, int>>& clusters) {
  auto row = std::make_shared<RowContent>();
  TextPosition at = begin;
  row->steps.push_back({.position = at, .column = {}});
  for (const auto& [text, columns] : clusters) {
    if (text.size() == 1) {
      row->addText(row->end, text, {});
    } else {
      row->addCluster({.begin = row->end, .end = row->end + columns}, text, {});
      row->steps.push_back({.position = at, .column = row->end, .isUnit = true});
    }
    at = at + text.size();
    row->end = row->end + columns;
    if (text.size() > 1) row->steps.push_back({.position = at, .column = row->end});
  }
  row->range = {.begin = begin, .end = at};
  return row;
}

QString nothing(TextRange) {
  ADD_FAILURE() << "asked for text that is there";
  return {};
}

constexpr const char* kWide = "\u6F22";                           // three bytes, one code unit
constexpr const char* kFace = "\U0001F600";                       // four bytes, two code units
constexpr const char* kAccent = "e\u0301";                        // three bytes, two code units
constexpr const char* kAstronaut = "\U0001F469\u200D\U0001F680";  // eleven bytes, five code units

// "a", wide, face, "b" at 100; wrapped to the accent and "c" at 109; a line end; the empty row at 114; the astronaut at
// 115.
TextInView view() {
  return {{rowOf(100_pos, {{"a", 1}, {kWide, 2}, {kFace, 2}, {"b", 1}}), rowOf(109_pos, {{kAccent, 1}, {"c", 1}}),
           rowOf(114_pos, {}), rowOf(115_pos, {{kAstronaut, 2}})},
          nothing};
}

TEST(TextInView, IsTheRowsWithLineEndsBetweenThem) {
  EXPECT_EQ(view().text(), QStringLiteral(u"a\u6F22\U0001F600b\ne\u0301c\n\n\U0001F469\u200D\U0001F680"));
  EXPECT_EQ(view().length(), view().text().size());
}

TEST(TextInView, FindsThePlaceOfEveryOffset) {
  const TextInView text = view();
  const std::vector<std::pair<std::size_t, TextPosition>> expected{
      {0, 100_pos}, {0, 101_pos}, {0, 104_pos}, {0, 104_pos},  // within the surrogate pair
      {0, 108_pos}, {0, 109_pos},                              // the line end of a row that wraps
      {1, 109_pos}, {1, 109_pos},                              // within the cluster
      {1, 112_pos}, {1, 113_pos},                              //
      {2, 114_pos},                                            //
      {3, 115_pos}, {3, 115_pos}, {3, 115_pos}, {3, 115_pos}, {3, 115_pos}, {3, 126_pos}};
  ASSERT_EQ(static_cast<int>(expected.size()), text.length() + 1);
  for (int offset = 0; offset <= text.length(); ++offset) {
    const RowPlace place = text.placeOf(offset);
    EXPECT_EQ(place.row, expected[static_cast<std::size_t>(offset)].first) << offset;
    EXPECT_EQ(place.position, expected[static_cast<std::size_t>(offset)].second) << offset;
    EXPECT_EQ(text.offsetOf(place), text.characterAt(offset).begin) << offset;
  }
  EXPECT_EQ(text.placeOf(-5).position, 100_pos);
  EXPECT_EQ(text.placeOf(500).position, 126_pos);
}

TEST(TextInView, TakesAClusterAsOneCharacter) {
  const TextInView text = view();
  EXPECT_EQ(text.characterAt(0), offsets(0, 1));
  EXPECT_EQ(text.characterAt(1), offsets(1, 2));
  EXPECT_EQ(text.characterAt(2), offsets(2, 4));
  EXPECT_EQ(text.characterAt(3), offsets(2, 4));
  EXPECT_EQ(text.characterAt(5), offsets(5, 6)) << "a line end";
  EXPECT_EQ(text.characterAt(7), offsets(6, 8));
  EXPECT_EQ(text.characterAt(10), offsets(10, 11)) << "the line end of an empty row";
  EXPECT_EQ(text.characterAt(13), offsets(11, 16));
  EXPECT_EQ(text.characterAt(16), offsets(16, 16));
  EXPECT_EQ(text.characterAt(-1), offsets(16, 16));
}

TEST(TextInView, TakesARowWithItsLineEnd) {
  const TextInView text = view();
  EXPECT_EQ(text.rowAt(0), offsets(0, 6));
  EXPECT_EQ(text.rowAt(5), offsets(0, 6));
  EXPECT_EQ(text.rowAt(6), offsets(6, 10));
  EXPECT_EQ(text.rowAt(10), offsets(10, 11));
  EXPECT_EQ(text.rowAt(11), offsets(11, 16));
  EXPECT_EQ(text.rowAt(16), offsets(11, 16));
}

TEST(TextInView, FindsThePartOfARangeThatIsInView) {
  const TextInView text = view();
  EXPECT_EQ(text.offsetsOf(rangeOf(101, 108)), offsets(1, 4));
  EXPECT_EQ(text.offsetsOf(rangeOf(100, 109)), offsets(0, 5)) << "ends where its row wraps";
  EXPECT_EQ(text.offsetsOf(rangeOf(109, 112)), offsets(6, 8)) << "begins where a row has wrapped";
  EXPECT_EQ(text.offsetsOf(rangeOf(112, 114)), offsets(8, 10)) << "with the line end";
  EXPECT_EQ(text.offsetsOf(rangeOf(114, 115)), offsets(10, 11)) << "the line end of an empty row";
  EXPECT_EQ(text.offsetsOf(rangeOf(0, 1000)), offsets(0, 16));
  EXPECT_TRUE(text.offsetsOf(rangeOf(20, 50)).empty());
  EXPECT_TRUE(text.offsetsOf(rangeOf(200, 250)).empty());
  EXPECT_TRUE(text.offsetsOf(rangeOf(109, 109)).empty());
}

TEST(TextInView, AsksForTheTextOfARowThatHasMoreCharactersThanItShows) {
  auto row = std::make_shared<RowContent>();
  row->addBlank({.begin = 0_col, .end = 8_col}, {});
  row->addText(8_col, "x", {});
  row->range = rangeOf(10, 12);
  row->end = 9_col;
  row->steps = {{.position = 10_pos, .column = 0_col}, {.position = 11_pos, .column = 8_col}};
  const TextInView text({row}, [](TextRange range) {
    EXPECT_EQ(range, rangeOf(10, 12));
    return QStringLiteral("\tx");
  });
  EXPECT_EQ(text.text(), QStringLiteral("\tx"));
  EXPECT_EQ(text.placeOf(1).position, 11_pos);
}

TEST(TextInView, IsEmptyWithoutRows) {
  const TextInView text({}, nothing);
  EXPECT_EQ(text.text(), QString());
  EXPECT_EQ(text.length(), 0);
  EXPECT_EQ(text.characterAt(0), offsets(0, 0));
  EXPECT_EQ(text.rowAt(0), offsets(0, 0));
  EXPECT_TRUE(text.offsetsOf(rangeOf(0, 5)).empty());
}

}  // namespace
}  // namespace zolt
