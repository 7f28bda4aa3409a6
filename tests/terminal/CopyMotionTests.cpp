#include "terminal/copying/CopyMotions.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "vt/Terminal.h"
#include "vt/history/ScrollbackText.h"
#include "vt/history/TailBuilder.h"

namespace zolt {
namespace {

// A text of these lines, and a place in it that is written as "|" before a character.
class Text {
 public:
  explicit Text(const std::string& lines, bool clusters = false) : m_text(viewOf(without(lines), clusters)) {
    const std::size_t bar = lines.find('|');
    m_place = m_text.begin() + (bar == lines.npos ? 0 : bar);
  }

  const vt::ScrollbackText& text() const { return m_text; }
  TextPosition place() const { return m_place; }
  std::string with(TextPosition place) const {
    std::string all = m_text.text(m_text.begin(), m_text.end());
    all.insert(all.begin() + static_cast<std::ptrdiff_t>(place - m_text.begin()), '|');
    return all;
  }

 private:
  static std::string without(std::string lines) {
    std::erase(lines, '|');
    return lines;
  }
  static vt::ScrollbackView viewOf(const std::string& lines, bool clusters) {
    vt::Terminal terminal({.rows = 1, .columns = 10});
    vt::TailBuilder builder(terminal.snapshot()->history, clusters);
    std::size_t at = 0;
    while (true) {
      const std::size_t end = std::min(lines.find('\n', at), lines.size());
      const bool isLast = end == lines.size();
      vt::HistoryLine line{.text = lines.substr(at, end - at), .isEnded = !isLast};
      if (!line.text.empty()) line.runs.push_back({.length = line.text.size()});
      builder.add(line);
      if (isLast) return builder.finish();
      at = end + 1;
    }
  }

  vt::ScrollbackText m_text;
  TextPosition m_place;
};

struct Row {
  const char* from;
  CopyMotion motion;
  const char* to;
  int count = 1;
  bool clusters = false;
};

void expectMoves(std::span<const Row> rows) {
  for (const Row& row : rows) {
    const Text text(row.from, row.clusters);
    EXPECT_EQ(text.with(moved(text.text(), text.place(), row.motion, row.count)), row.to)
        << row.from << ", " << static_cast<int>(row.motion) << " times " << row.count;
  }
}

TEST(CopyMotions, MoveByCharactersWithinALine) {
  using enum CopyMotion;
  const Row rows[] = {
      {"a|bc\nd", Right, "ab|c\nd"},
      {"ab|c\nd", Right, "ab|c\nd"},
      {"|abc\nd", Right, "ab|c\nd", 9},
      {"a\n|bc", Left, "a\n|bc"},
      {"abc\nde|f", Left, "abc\n|def", 2},
      {"|", Right, "|"},
      {"a\n|\nb", Right, "a\n|\nb"},
      {"a\n|\nb", Left, "a\n|\nb"},
      {"|漢字x", Right, "漢|字x"},
      {"漢字|x", Left, "漢|字x"},
      {"e|e\u0301x", Right, "ee\u0301|x"},
      {"ae\u0301|x", Left, "a|e\u0301x"},
      {"|👩‍👧x", Right, "👩‍👧|x", 1, true},
      {"👩‍👧|x", Left, "|👩‍👧x", 1, true},
  };
  expectMoves(rows);
}

TEST(CopyMotions, MoveByWords) {
  using enum CopyMotion;
  const Row rows[] = {
      {"|one two", WordStart, "one |two"},
      {"o|ne, two", WordStart, "one|, two"},
      {"one|, two", WordStart, "one, |two"},
      {"|one, two", BigWordStart, "one, |two"},
      {"one |two\n  three", WordStart, "one two\n  |three"},
      {"|one\n\n two", WordStart, "one\n|\n two"},
      {"one\n|\n two", WordStart, "one\n\n |two"},
      {"one |two", WordStart, "one tw|o"},
      {"|a b c d", WordStart, "a b c |d", 3},
      {"|漢字 語", WordStart, "漢字 |語"},
      {"|größe│x", WordStart, "größe|│x"},

      {"|one two", WordEnd, "on|e two"},
      {"on|e two", WordEnd, "one tw|o"},
      {"on|e, two", WordEnd, "one|, two"},
      {"|one, two", BigWordEnd, "one|, two"},
      {"on|e\n\n two", WordEnd, "one\n\n tw|o"},
      {"one tw|o  ", WordEnd, "one two | "},
      {"|größe x", WordEnd, "größ|e x"},

      {"one tw|o", WordBack, "one |two"},
      {"one |two", WordBack, "|one two"},
      {"one, |two", WordBack, "one|, two"},
      {"one, |two", BigWordBack, "|one, two"},
      {"one\n\n |two", WordBack, "one\n|\n two"},
      {"one\n|\n two", WordBack, "|one\n\n two"},
      {"|one", WordBack, "|one"},
      {"a b c |d", WordBack, "a |b c d", 2},
      {"漢字 |語", WordBack, "|漢字 語"},
  };
  expectMoves(rows);
}

TEST(CopyMotions, MoveWithinALineAndToTheEndsOfTheText) {
  using enum CopyMotion;
  const Row rows[] = {
      {"x\n  a|b c\ny", LineStart, "x\n|  ab c\ny"},
      {"x\n  ab |c\ny", LineText, "x\n  |ab c\ny"},
      {"x\n|  ab c\ny", LineEnd, "x\n  ab |c\ny"},
      {"x\n|\ny", LineEnd, "x\n|\ny"},
      {"x\n|\ny", LineText, "x\n|\ny"},
      {"|漢字", LineEnd, "漢|字"},
      {"a\nb|c\nd", TextStart, "|a\nbc\nd"},
      {"a\nb|c\nde", TextEnd, "a\nbc\nd|e"},
      {"a\nb|c\n", TextEnd, "a\nbc\n|"},
  };
  expectMoves(rows);
}

TEST(CopyMotions, MoveByParagraphs) {
  using enum CopyMotion;
  const Row rows[] = {
      {"a\n|b\n\nc\nd", ParagraphForward, "a\nb\n|\nc\nd"},      {"a\nb\n|\nc\nd", ParagraphForward, "a\nb\n\nc\n|d"},
      {"|a\n\n\nb\n\nc", ParagraphForward, "a\n\n\nb\n|\nc", 2}, {"a\nb\n\nc\n|d", ParagraphBack, "a\nb\n|\nc\nd"},
      {"a\nb\n|\nc\nd", ParagraphBack, "|a\nb\n\nc\nd"},         {"a\n  \nb|c", ParagraphBack, "a\n|  \nbc"},
  };
  expectMoves(rows);
}

TEST(CopyMotions, APlaceIsOnACharacter) {
  const auto placed = [](const char* lines, bool clusters, std::uint64_t at) {
    const Text text(lines, clusters);
    return text.with(cursorPlace(text.text(), text.text().begin() + at));
  };
  EXPECT_EQ(placed("ab\ncd", false, 2), "a|b\ncd") << "not on a line end";
  EXPECT_EQ(placed("a\n\nb", false, 2), "a\n|\nb") << "but in an empty line";
  EXPECT_EQ(placed("ab", false, 2), "a|b");
  EXPECT_EQ(placed("ab", false, 99), "a|b");
  EXPECT_EQ(placed("a漢b", false, 2), "a|漢b");
  EXPECT_EQ(placed("a漢b", false, 3), "a|漢b");
  EXPECT_EQ(placed("ae\u0301b", false, 3), "a|e\u0301b");
  EXPECT_EQ(placed("👩‍👧x", true, 4), "|👩‍👧x");
  EXPECT_EQ(placed("👩‍👧x", true, 7), "|👩‍👧x");
}

TEST(CopyMotions, KnowTheEndOfACharacter) {
  const Text text("a漢\n");
  const TextPosition begin = text.text().begin();
  EXPECT_EQ(characterEnd(text.text(), begin), begin + 1);
  EXPECT_EQ(characterEnd(text.text(), begin + 1), begin + 4);
  EXPECT_EQ(characterEnd(text.text(), begin + 4), begin + 4);
}

}  // namespace
}  // namespace zolt
