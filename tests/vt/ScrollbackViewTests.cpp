#include "vt/history/ScrollbackView.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <thread>

#include "find/LogSearch.h"
#include "history/OutputWriter.h"
#include "support/TextPositions.h"
#include "vt/ScrollbackModel.h"
#include "vt/Terminal.h"
#include "vt/TerminalPicture.h"
#include "vt/history/ScrollbackStyles.h"
#include "vt/history/ScrollbackText.h"
#include "vt/history/TailBuilder.h"

namespace zolt::vt {
namespace {

using test::ScrollbackModel;

std::string textOf(const ScrollbackView& view) {
  const ScrollbackText text(view);
  return text.text(text.begin(), text.end());
}

// Of all blocks, as another thread would read them.
std::string textOf(const TextSnapshot& snapshot) {
  std::string text;
  for (std::size_t i = snapshot.firstBlock(); i < snapshot.endBlock(); ++i) {
    const BlockText held = snapshot.text(i);
    text += held.text();
  }
  return text;
}

std::string saved(const ScrollbackView& view, std::unique_ptr<OutputStyles> styles) {
  const ScrollbackText text(view);
  const TextSnapshot snapshot = text.snapshot(text.firstBlock(), text.endBlock());
  OutputWriter writer(std::move(styles));
  std::string out;
  for (std::size_t i = snapshot.firstBlock(); i < snapshot.endBlock(); ++i) {
    writer.append(snapshot, i, out);
  }
  writer.finish(out);
  return out;
}

TEST(ScrollbackView, HasThePositionsAndLinesOfTheStream) {
  ScrollbackModel model;
  model.append("one", false);
  model.append("\u4E2D", false);
  model.append("open", true);
  const ScrollbackText text(model.scrollback().view());
  EXPECT_EQ(text.begin(), 0_pos);
  EXPECT_EQ(text.end(), 12_pos);
  EXPECT_EQ(text.endLine(), 3U);
  EXPECT_EQ(text.lineStart(1), 4_pos);
  EXPECT_EQ(text.lineEnd(1), 7_pos);
  EXPECT_EQ(text.lineAt(7_pos), 1U);
  EXPECT_EQ(text.lineStart(2), 8_pos);
  EXPECT_EQ(text.lineEnd(2), 12_pos);
  EXPECT_EQ(text.view().end(), text.end());
  EXPECT_EQ(text.view().endLine(), 3U);
}

TEST(ScrollbackView, IsOfTheTextThatRemainsUnderItsOldNumbers) {
  std::mt19937 random(3);
  ScrollbackModel model({.hotBlocks = 1});
  ScrollbackText text(model.scrollback().view());
  for (int step = 0; step < 6000; ++step) {
    model.step(random);
    if (step % 50 != 0) continue;
    const ScrollbackView view = model.scrollback().view();
    text.show(view);
    ASSERT_EQ(view.end().value, model.text().size()) << step;
    ASSERT_EQ(text.end(), view.end()) << step;
    ASSERT_EQ(text.begin(), view.begin()) << step;
    ASSERT_EQ(text.firstLine(), view.firstLine()) << step;
    ASSERT_EQ(text.endLine(), view.endLine()) << step;
    ASSERT_EQ(text.text(view.begin(), view.end()), model.text().substr(view.begin().value)) << step;
    TextPosition at = view.begin();
    for (std::uint64_t line = view.firstLine(); line < view.endLine(); ++line) {
      ASSERT_EQ(text.lineStart(line), at) << step << " line " << line;
      ASSERT_EQ(text.lineAt(at), line) << step;
      const std::size_t end = std::min(model.text().find('\n', at.value), model.text().size());
      ASSERT_EQ(text.lineEnd(line), TextPosition(end)) << step << " line " << line;
      at = TextPosition(std::min(end + 1, model.text().size()));
    }
  }
  EXPECT_GT(text.firstBlock(), 20U);
}

TEST(ScrollbackView, GoesOnCountingWhenEverythingIsCleared) {
  ScrollbackModel model;
  model.append("one", false);
  model.append("two", true);
  model.scrollback().clear();
  EXPECT_EQ(model.scrollback().lineCount(), 0U);
  model.append("three", false);
  const ScrollbackView view = model.scrollback().view();
  EXPECT_EQ(view.begin(), 7_pos);
  EXPECT_EQ(view.firstLine(), 2U);
  EXPECT_EQ(view.endLine(), 3U);
  EXPECT_EQ(textOf(view), "three\n");
}

TEST(ScrollbackView, KeepsItsTextWhateverHappensLater) {
  std::mt19937 random(9);
  ScrollbackModel model({.memoryBudget = 100'000, .hotBlocks = 1});
  std::vector<std::pair<ScrollbackView, std::string>> views;
  for (int step = 0; step < 4000; ++step) {
    model.step(random);
    if (step % 100 != 0) continue;
    const ScrollbackView view = model.scrollback().view();
    views.emplace_back(view, model.text().substr(view.begin().value));
  }
  model.scrollback().clear();
  for (const auto& [view, text] : views) {
    ASSERT_EQ(textOf(view), text);
  }
}

TEST(ScrollbackView, OutlivesItsScrollback) {
  auto model = std::make_unique<ScrollbackModel>(HistorySettings{.hotBlocks = 1});
  for (int i = 0; i < 4000; ++i) {
    model->append("line " + std::to_string(i) + std::string(80, '.'), false);
  }
  const std::string expected = model->text();
  const ScrollbackView view = model->scrollback().view();
  model.reset();
  EXPECT_EQ(textOf(view), expected);
}

TEST(ScrollbackView, IsReadByAnotherThreadWhileTheScrollbackChanges) {
  std::mutex mutex;
  std::optional<std::pair<ScrollbackView, std::string>> latest;
  std::atomic<bool> isOver = false;
  std::atomic<int> read = 0;
  std::thread reader([&] {
    std::optional<ScrollbackText> text;
    std::optional<RowIndex> index;
    while (!isOver) {
      std::optional<std::pair<ScrollbackView, std::string>> taken;
      {
        const std::lock_guard lock(mutex);
        taken = std::exchange(latest, std::nullopt);
      }
      if (!taken) continue;
      if (text) {
        text->show(taken->first);
        index->sync();
      } else {
        text.emplace(taken->first);
        index.emplace(*text, 70);
      }
      EXPECT_EQ(text->text(text->begin(), text->end()), taken->second);
      index->locate(index->rowCount() / 2);
      ++read;
    }
  });
  std::mt19937 random(4);
  ScrollbackModel model({.hotBlocks = 1});
  for (int step = 0; step < 5000 || read < 5; ++step) {
    model.step(random);
    if (step % 20 != 0) continue;
    const ScrollbackView view = model.scrollback().view();
    const std::lock_guard lock(mutex);
    latest.emplace(view, model.text().substr(view.begin().value));
  }
  isOver = true;
  reader.join();
}

TEST(ScrollbackView, HasTheStylesLinksAndMarksOfAPartOfALine) {
  Terminal terminal({.rows = 1, .columns = 60});
  terminal.feed("\033]133;A\a$ \033[1mmake\033[0m \033]8;;https://a.b/\033\\all\033]8;;\033\\ done\r\n");
  const ScrollbackText text(terminal.screen().scrollback().view());
  const HistoryLine line = text.part(4_pos, 10_pos);
  EXPECT_EQ(line.text, "ke all");
  ASSERT_EQ(line.runs.size(), 3U);
  EXPECT_EQ(line.runs[0].length, 2U);
  EXPECT_EQ(line.runs[0].style.flags, kBold);
  EXPECT_EQ(line.runs[2].link.uri, "https://a.b/");
  EXPECT_TRUE(line.marks.empty());
  EXPECT_FALSE(line.isEnded);
  const HistoryLine whole = text.part(0_pos, text.lineEnd(0));
  EXPECT_EQ(whole.text, "$ make all done");
  EXPECT_EQ(whole.marks.size(), 1U);
  EXPECT_TRUE(whole.isEnded);
}

TEST(ScrollbackView, StartsABlockWhereTheMeaningOfACellChanges) {
  Terminal terminal({.rows = 1, .columns = 20});
  const std::string two = "\U0001F469\u200D\U0001F466";
  terminal.feed(two + "\r\n\033[?2027h" + two + "\r\n\033[?2027l" + two + "\r\n");
  const ScrollbackText text(terminal.screen().scrollback().view());
  ASSERT_EQ(text.endBlock(), 3U);
  RowIndex index(text, 3);
  while (index.refine(100)) {
  }
  EXPECT_EQ(index.rowAt(text.lineStart(1)), 2) << "two wide characters take two rows";
  EXPECT_EQ(index.rowAt(text.lineStart(2)), 3) << "one wide cluster takes one";
  EXPECT_EQ(index.rowCount(), 5);
}

TEST(ScrollbackLimit, TrimsWholeBlocksButKeepsAsManyLines) {
  for (const std::uint64_t limit : {1U, 500U, 1000U, 5000U}) {
    ScrollbackModel model;
    model.setLimit(limit);
    for (int i = 0; i < 20'000; ++i) {
      model.append("line " + std::to_string(i) + std::string(40, '.'), i % 3 == 0);
      ASSERT_GE(model.scrollback().lineCount(), std::min<std::uint64_t>(limit, model.scrollback().endLine()));
    }
    EXPECT_LT(model.scrollback().lineCount(), limit + 5000) << "two blocks more at most";
    EXPECT_EQ(textOf(model.scrollback().view()), model.text().substr(model.scrollback().begin().value));
    const auto last = model.scrollback().takeLastLine(1000);
    EXPECT_TRUE(last);
  }
}

TEST(ScrollbackLimit, BoundsALineThatDoesNotEnd) {
  ScrollbackModel model;
  constexpr std::uint64_t kLimit = 100;
  model.setLimit(kLimit);
  for (int i = 0; i < 100'000; ++i) {
    model.append(std::string(80, static_cast<char>('a' + i % 26)), true);
  }
  const auto kept = model.scrollback().end() - model.scrollback().begin();
  EXPECT_GE(kept, kLimit * Scrollback::partBytes);
  EXPECT_LT(kept, kLimit * Scrollback::partBytes + 4 * kScrollbackBlockBytes);
  EXPECT_EQ(textOf(model.scrollback().view()), model.text().substr(model.scrollback().begin().value));
}

TEST(ScrollbackLimit, KeepsEverythingWithoutOne) {
  ScrollbackModel model;
  model.setLimit(1);
  model.setLimit(std::nullopt);
  for (int i = 0; i < 20'000; ++i) {
    model.append(std::string(40, '.'), false);
  }
  EXPECT_EQ(model.scrollback().firstLine(), 0U);
  EXPECT_EQ(model.scrollback().lineCount(), 20'000U);
}

TEST(ScrollbackLimit, BoundsTheMemory) {
  ScrollbackModel model;
  model.setLimit(1000);
  std::size_t most = 0;
  for (int i = 0; i < 200'000; ++i) {
    model.append(std::to_string(i * 7919) + std::string(60, '.'), false);
    most = std::max(most, model.scrollback().memoryBytes());
  }
  EXPECT_LT(most, 600'000U);
}

TEST(TailBuilder, AddsLinesThatContinueTheLastOne) {
  ScrollbackModel model;
  model.append("first", false);
  model.append("begun, ", true);
  TailBuilder builder(model.scrollback().view(), false);
  const Style red{.foreground = CellColor::indexed(1)};
  const LinkTarget link{.id = "", .uri = "https://a.b/"};
  builder.add({.text = "ended", .runs = {{.length = 2, .style = red}, {.length = 3, .link = link}}});
  builder.add({.text = ""});
  builder.add({.text = "prompt", .runs = {{.length = 6}}, .marks = {{.offset = 2}}, .isEnded = false});
  const ScrollbackText text(builder.finish());
  EXPECT_EQ(text.text(text.begin(), text.end()), "first\nbegun, ended\n\nprompt");
  EXPECT_EQ(text.endLine(), 4U);
  EXPECT_EQ(text.view().endLine(), 4U);
  EXPECT_EQ(text.view().end(), text.end());
  EXPECT_EQ(text.lineAt(13_pos), 1U);
  const HistoryLine line = text.part(text.lineStart(1), text.lineEnd(1));
  EXPECT_EQ(line.text, "begun, ended");
  ASSERT_EQ(line.runs.size(), 3U);
  EXPECT_EQ(line.runs[1].style, red);
  EXPECT_EQ(line.runs[2].link, link);
  ASSERT_EQ(text.part(text.lineStart(3), text.end()).marks.size(), 1U);
  EXPECT_EQ(text.part(text.lineStart(3), text.end()).marks[0].offset, 2U);
}

TEST(TailBuilder, MakesSeveralBlocksOfManyLinesOrStyles) {
  ScrollbackModel model;
  TailBuilder builder(model.scrollback().view(), false);
  std::string expected;
  for (std::uint32_t i = 0; i < 100'000; ++i) {
    const Style style{.foreground = CellColor::direct(static_cast<std::uint8_t>(i >> 16),
                                                      static_cast<std::uint8_t>(i >> 8), static_cast<std::uint8_t>(i))};
    builder.add({.text = "x", .runs = {{.length = 1, .style = style}}});
    expected += "x\n";
  }
  const ScrollbackText text(builder.finish());
  EXPECT_GT(text.endBlock(), 2U);
  EXPECT_EQ(text.text(text.begin(), text.end()), expected);
  EXPECT_EQ(text.part(text.lineStart(70'000), text.lineEnd(70'000)).runs[0].style.foreground,
            CellColor::direct(1, 17, 112));
}

TEST(ScrollbackStyles, AreReadBackByTheTerminal) {
  Terminal terminal({.rows = 1, .columns = 80});
  terminal.feed(
      "plain \033[1;3;4:3;58:2::1:2:3mcurly\033[0;2;5;7;8;9;53;38;5;200;48;2;9;8;7m all \033[0;91;102;6;21m"
      "\u4E2D\033[m end\r\n\033[32mgreen\r\n");
  const std::string file = saved(terminal.screen().scrollback().view(), std::make_unique<ScrollbackStyles>());
  EXPECT_TRUE(file.ends_with("\033[0m")) << "the styles end with the text";
  Terminal second({.rows = 1, .columns = 80});
  for (const char c : file) {
    if (c == '\n') second.feed("\r");
    second.feed(std::string_view(&c, 1));
  }
  const ScrollbackText first(terminal.screen().scrollback().view());
  const ScrollbackText again(second.screen().scrollback().view());
  ASSERT_EQ(again.endLine(), first.endLine());
  for (std::uint64_t line = 0; line < first.endLine(); ++line) {
    const HistoryLine theirs = first.part(first.lineStart(line), first.lineEnd(line));
    const HistoryLine ours = again.part(again.lineStart(line), again.lineEnd(line));
    EXPECT_EQ(ours.text, theirs.text);
    ASSERT_EQ(ours.runs.size(), theirs.runs.size()) << line;
    for (std::size_t run = 0; run < theirs.runs.size(); ++run) {
      EXPECT_EQ(ours.runs[run].style, theirs.runs[run].style) << line << " " << run;
    }
  }
}

TEST(ScrollbackStyles, AreLeftOutOfPlainText) {
  Terminal terminal({.rows = 1, .columns = 4});
  terminal.feed("\033[31ma wrapped line\r\n\u00E9\r\n");
  EXPECT_EQ(saved(terminal.screen().scrollback().view(), nullptr), "a wrapped line\n\u00E9\n");
}

TEST(ScrollbackSearch, FindsMatchesAtTheirPlacesInTheStream) {
  ScrollbackModel model({.hotBlocks = 1});
  model.setLimit(20'000);
  for (int i = 0; i < 60'000; ++i) {
    model.append((i % 100 == 0 ? "needle " : "straw ") + std::to_string(i) + std::string(70, '.'), false);
  }
  TailBuilder builder(model.scrollback().view(), false);
  builder.add({.text = "needle on screen", .runs = {{.length = 16}}, .isEnded = false});
  const ScrollbackText text(builder.finish());
  ASSERT_GT(firstSegment(text), 0U);
  FindInterrupt never;
  std::vector<TextRange> found;
  for (std::size_t segment = firstSegment(text); segment < segmentCount(text); ++segment) {
    const TextSnapshot snapshot = snapshotOfSegments(text, segment, segment + 1);
    std::ranges::copy(findInSegment(FindPattern::compile("needle", {}).value(), snapshot, segment, never),
                      std::back_inserter(found));
  }
  const std::string all = model.text() + "needle on screen";
  std::vector<TextRange> expected;
  for (std::size_t at = all.find("needle", text.begin().value); at != std::string::npos;
       at = all.find("needle", at + 1)) {
    expected.push_back(rangeOf(at, at + 6));
  }
  EXPECT_EQ(found, expected);
  EXPECT_GT(found.size(), 200U);
}

TEST(ScrollbackView, ReadsWhatWasLostAsANotice) {
  ScrollbackModel model({.memoryBudget = 0, .hotBlocks = 1, .folder = "nowhere", .openFile = [](const std::string&) {
                           return std::unique_ptr<SpillFile>();
                         }});
  for (int i = 0; i < 5000; ++i) {
    model.append("\u4E2D" + std::string(100, '.'), i % 5 != 0);
  }
  model.scrollback().waitForCompression();
  const ScrollbackText text(model.scrollback().view());
  const std::string shown = text.text(text.begin(), text.end());
  ASSERT_FALSE(text.lostBlocks().empty());
  EXPECT_TRUE(shown.starts_with(kHistoryLostNotice));
  EXPECT_EQ(shown.size(), model.text().size());
  EXPECT_EQ(std::ranges::count(shown, '\n'), std::ranges::count(model.text(), '\n'));
  EXPECT_EQ(textOf(text.snapshot(text.firstBlock(), text.endBlock())), shown);
  RowIndex index(text, 30);
  while (index.refine(100)) {
  }
  EXPECT_EQ(index.locate(index.rowCount() - 1).end, text.end());
}

}  // namespace
}  // namespace zolt::vt
