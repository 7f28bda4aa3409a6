#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "history/LogTexts.h"
#include "history/RowIndex.h"
#include "history/TemporaryFolder.h"
#include "history/TextStorage.h"
#include "support/TextPositions.h"

namespace zolt {
namespace {

using test::TemporaryFolder;

// Compresses everything at once and moves nearly all of it to the file.
HistorySettings coldIn(const TemporaryFolder& folder) {
  return {.memoryBudget = 20'000, .hotBlocks = 0, .folder = folder.path()};
}

// Loses everything as soon as it is cold.
HistorySettings lossy() {
  return {.memoryBudget = 0, .hotBlocks = 2, .folder = "nowhere", .openFile = [](const std::string&) {
            return std::unique_ptr<SpillFile>();
          }};
}

TextAttributes styleOf(std::size_t number) {
  TextAttributes style;
  style.foreground = Color::gray(static_cast<double>(number % 50) / 50);
  if (number % 3 == 0) style.background = Color::black;
  return style;
}

TEST(ColdHistory, MatchesAPlainListOfLinesUnderRandomUse) {
  std::mt19937 random(3);
  for (int round = 0; round < 4; ++round) {
    const TemporaryFolder folder;
    TextStorage storage(coldIn(folder));
    std::vector<std::string> lines{""};
    std::vector<TextAttributes> styles;  // of the first character of each line
    for (int step = 0; step < 4000; ++step) {
      std::string piece(random() % 400, static_cast<char>('a' + random() % 26));
      if (!piece.empty() && random() % 4 == 0) piece[piece.size() / 2] = '\t';
      const TextAttributes style = styleOf(random() % 100);
      const bool startsLine = lines.back().empty();
      lines.back() += piece;
      if (random() % 3 != 0) {
        piece += "\n";
        lines.emplace_back();
      }
      if (startsLine && !piece.empty()) {
        if (styles.size() < lines.size()) styles.resize(lines.size());
        const std::size_t line = lines.back().empty() && piece.back() == '\n' ? lines.size() - 2 : lines.size() - 1;
        styles[line] = style;
      }
      storage.append(AttributedString(piece, style));
      if (random() % 500 == 0) storage.waitUntilIdle();
      if (random() % 20 != 0) continue;
      const std::size_t line = random() % lines.size();
      ASSERT_EQ(storage.text(storage.lineStart(line), storage.lineEnd(line)), lines[line]);
      if (lines[line].empty()) continue;
      storage.forEachRun(storage.lineStart(line), storage.lineStart(line) + 1,
                         [&](TextPosition, std::string_view, const TextAttributes& attributes) {
                           ASSERT_EQ(attributes, styles[line]);
                         });
    }
    storage.waitUntilIdle();
    EXPECT_GT(storage.usage().spilledBlocks, 5U);
    EXPECT_TRUE(storage.lostBlocks().empty());
    ASSERT_EQ(storage.lineCount(), lines.size());
    for (std::size_t line = 0; line < lines.size(); ++line) {
      ASSERT_EQ(storage.text(storage.lineStart(line), storage.lineEnd(line)), lines[line]) << line;
    }
  }
}

TEST(ColdHistory, HasTheLayoutOfTheTextThatWasAppended) {
  for (const NamedText& named : severalBlocksOfText()) {
    const TemporaryFolder folder;
    TextStorage cold(coldIn(folder));
    TextStorage warm;
    cold.append(AttributedString(named.text, TextAttributes()));
    warm.append(AttributedString(named.text, TextAttributes()));
    cold.waitUntilIdle();
    ASSERT_GT(cold.usage().compressedBlocks + cold.usage().spilledBlocks, 0U);
    ASSERT_EQ(cold.blockCount(), warm.blockCount());
    for (std::size_t i = 0; i < warm.blockCount(); ++i) {
      const auto expected = warm.block(i);
      const auto found = cold.block(i);
      ASSERT_EQ(found->summary(), expected->summary()) << named.name << i;
      ASSERT_EQ(found->text(), expected->text()) << named.name << i;
      ASSERT_EQ(found->lineStarts(), expected->lineStarts()) << named.name << i;
    }
  }
}

TEST(ColdHistory, ReplacesLostTextWithoutMovingTheRest) {
  for (const NamedText& named : severalBlocksOfText()) {
    std::string text;
    for (int i = 0; i < 3; ++i) {
      text += named.text;
    }
    TextStorage storage(lossy());
    NaiveLog naive;
    naive.append(text);
    storage.append(AttributedString(text, TextAttributes()));
    storage.waitUntilIdle();
    const std::size_t lost = storage.usage().droppedBlocks;
    ASSERT_GT(lost, 2U) << named.name;
    const auto lines = naive.lines();
    ASSERT_EQ(storage.lineCount(), lines.size()) << named.name;
    const std::string shown = storage.text({}, storage.end());
    ASSERT_EQ(shown.size(), text.size());
    const bool hasRoom = text.size() > lines.size();  // for more than the line ends
    EXPECT_EQ(shown.starts_with("[Zolt: this"), hasRoom) << named.name;
    const TextPosition kept = storage.summary(lost).start;
    EXPECT_EQ(shown.substr(kept.value), text.substr(kept.value)) << named.name;
    EXPECT_EQ(storage.lostBlocks().size(), lost);
    for (std::size_t line = 0; line < lines.size(); line += 97) {
      if (lines[line].begin <= kept) continue;
      EXPECT_EQ(storage.lineStart(line), lines[line].begin) << named.name << line;
    }
  }
}

TEST(ColdHistory, KeepsItsRowsInOrderWhenBlocksAreLost) {
  for (const NamedText& named : severalBlocksOfText()) {
    std::string text;
    for (int i = 0; i < 3; ++i) {
      text += named.text;
    }
    for (const std::int64_t columns : {7, 80, 300}) {
      TextStorage storage(lossy());
      RowIndex index(storage, columns);
      storage.append(AttributedString(text, TextAttributes()));
      index.sync();
      storage.waitUntilIdle();
      storage.text({}, storage.end());  // notices the loss
      ASSERT_FALSE(storage.lostBlocks().empty());
      index.sync();
      while (index.refine(100)) {
      }
      TextPosition before;
      for (RowNumber row = 0; row < index.rowCount(); row += 13) {
        const RowIndex::Row at = index.locate(row);
        ASSERT_GE(at.begin, before) << named.name << " " << columns << " row " << row;
        before = at.begin;
      }
      EXPECT_EQ(index.locate(index.rowCount() - 1).end, storage.end());
      index.setColumns(columns + 1);
      while (index.refine(100)) {
      }
      EXPECT_EQ(index.locate(index.rowCount() - 1).end, storage.end());
    }
  }
}

TEST(ColdHistory, TakesLittleMemory) {
  const TemporaryFolder folder;
  TextStorage storage({.memoryBudget = 2'000'000, .folder = folder.path()});
  std::string line = "2026-01-01 12:00:00 INFO server: request 0000000 served in 12 ms from 192.168.0.1\n";
  for (int i = 0; i < 400'000; ++i) {
    const std::string number = std::to_string(1'000'000 + i);
    std::ranges::copy(number, line.begin() + static_cast<std::ptrdiff_t>(line.find("request ")) + 8);
    storage.append(AttributedString(line, TextAttributes()));
  }
  storage.waitUntilIdle();
  EXPECT_LT(storage.memoryBytes(), 2'500'000U) << "of " << storage.size();
  EXPECT_GT(storage.size(), 30'000'000U);
  EXPECT_LT(static_cast<double>(storage.usage().fileBytes), 0.35 * static_cast<double>(storage.size()));
}

}  // namespace
}  // namespace zolt
