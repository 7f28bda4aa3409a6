#include "vt/ScrollbackModel.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "text/CharacterWidth.h"
#include "text/Utf8.h"

namespace zolt::vt::test {

void ScrollbackModel::append(std::string_view utf8, bool wraps) {
  std::vector<Cell> cells;
  std::u32string cluster;
  for (std::size_t at = 0, length = 0; at < utf8.size(); at += length) {
    const char32_t scalar = scalarAt(utf8, at, length);
    const int width = characterProperties(scalar).width;
    if (width == 0) {
      if (!cells.back().isCluster()) cluster.assign(1, cells.back().character());
      cluster.push_back(scalar);
      cells.back() = Cell::cluster(m_tables.clusters.intern(cluster), Cell::Width::Narrow, 0);
      continue;
    }
    cells.emplace_back(scalar, width == 2 ? Cell::Width::Wide : Cell::Width::Narrow, 0);
    if (width == 2) cells.emplace_back(0, Cell::Width::Tail, 0);
  }
  m_scrollback.append(cells, wraps, {}, m_tables);
  m_text += utf8;
  if (!wraps) m_text += '\n';
}

void ScrollbackModel::step(std::mt19937& random) {
  const unsigned what = random() % 1000;
  if (what < 20) {
    const TextPosition before = m_scrollback.begin();
    for (unsigned lines = random() % 5; lines > 0; --lines) {
      const auto line = m_scrollback.takeLastLine(100'000);
      if (!line) break;
      m_text.resize(m_text.size() - line->text.size() - (line->isEnded ? 1 : 0));
    }
    EXPECT_EQ(m_scrollback.begin(), before);
  } else if (what < 22) {
    m_scrollback.clear();
  } else if (what < 26) {
    setLimit(random() % 2 == 0 ? std::nullopt : std::optional<std::uint64_t>(random() % 3000));
  } else if (what < 30) {
    m_scrollback.setClusters(random() % 2 == 0);
  } else {
    const unsigned kind = random() % 8;
    std::string row;
    for (unsigned i = random() % (what < 40 ? 3000 : 300); i > 0; --i) {
      row += kind == 0 && i % 9 == 0 ? "\u4E2D" : kind <= 1 && i % 7 == 0 ? "e\u0301" : "abc";
    }
    append(row, random() % 3 == 0);
  }
}

NaiveScrollbackRows::NaiveScrollbackRows(const ScrollbackModel& model, const ScrollbackText& text, int columns) {
  std::vector<TextPosition> anew;  // where a line goes on at no known column
  for (std::size_t i = text.firstBlock() + 1; i < text.endBlock(); ++i) {
    anew.push_back(text.summary(i).start);
  }
  const BlockSummary& first = text.summary(text.firstBlock());
  int column = static_cast<int>(first.startColumn % static_cast<LineColumn>(columns));
  bool isOpen = first.continuesALine && column != 0;  // whether the last row goes on
  bool hasWide = false;
  bool hasLine = first.continuesALine;
  if (isOpen) m_rows.push_back({text.begin(), text.begin()});
  auto block = anew.begin();
  for (std::size_t at = text.begin().value, length = 0; at < text.end().value; at += length) {
    for (; block != anew.end() && block->value <= at; ++block) {
      if (hasWide && block->value == at) isOpen = hasWide = false;
    }
    const char32_t scalar = scalarAt(model.text(), at, length);
    if (scalar == U'\n') {
      if (!hasLine) m_rows.push_back({TextPosition(at), TextPosition(at)});
      isOpen = hasWide = hasLine = false;
      continue;
    }
    const int natural = characterProperties(scalar).width;
    const int width = std::min(natural, columns);
    hasWide = hasWide || natural == 2;
    if (natural != 0 && (!isOpen || column + width > columns)) {
      m_rows.push_back({TextPosition(at), TextPosition(at)});
      isOpen = true;
      column = 0;
    }
    hasLine = true;
    column += width;
    m_rows.back().end = TextPosition(at + length);
  }
}

NaiveScrollbackRows::Row NaiveScrollbackRows::rowOf(TextPosition position) const {
  const auto after = std::ranges::upper_bound(m_rows, position, {}, &Row::begin);
  return *(after - 1);
}

}  // namespace zolt::vt::test
