// The log view over histories that are cold, lost, or of an unusual shape.
#include <QDir>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>

#include "view/LogRowSource.h"
#include "view/ViewFixture.h"

namespace zolt {
namespace {

using test::runLoopFor;
using test::waitFor;

constexpr std::size_t kMegabyte = 1 << 20;

/// The user's cache folder is one of the test's own.
class LargeHistoryTest : public testing::Test {
 protected:
  void SetUp() override {
    m_before = qgetenv("XDG_CACHE_HOME");
    qputenv("XDG_CACHE_HOME", QFile::encodeName(caches()));
  }
  void TearDown() override { m_before.isNull() ? qunsetenv("XDG_CACHE_HOME") : qputenv("XDG_CACHE_HOME", m_before); }

  QString caches() const { return folder.filePath(QStringLiteral("caches")); }

  void show() {
    view = std::make_unique<TerminalNSTextView>();
    view->resize(900, 600);
    view->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get(), test::kPatience.count()));
  }
  void append(const std::string& text) { view->append(AttributedString(text, TextAttributes{})); }
  /// Text that compresses badly, in numbered lines of 100 characters, of this many megabytes; what line N has in it.
  void appendNoise(std::size_t megabytes) {
    while (view->textStorage().size() < megabytes * kMegabyte) {
      std::string lines;
      for (int i = 0; i < 1000; ++i) {
        lines += noiseLine(m_lines++);
      }
      append(lines);
    }
  }
  static std::string noiseLine(std::uint64_t number) {
    std::string line = std::to_string(number) + ":";
    for (std::uint64_t state = number + 1; line.size() < 99;) {
      state = state * 6364136223846793005U + 1442695040888963407U;
      line += static_cast<char>('!' + (state >> 33) % 94);
    }
    return line + '\n';
  }
  std::string visible() {
    view->makeFrameNow();
    return view->visibleText().toStdString();
  }

  QTemporaryDir folder;
  std::unique_ptr<TerminalNSTextView> view;

 private:
  QByteArray m_before;
  std::uint64_t m_lines = 0;
};

TEST_F(LargeHistoryTest, ShowsWhatLiesInItsFile) {
  show();
  appendNoise(60);
  ASSERT_TRUE(waitFor([&] { return view->textStorage().usage().spilledBlocks > 50; }));
  view->scrollTo(0_px);
  EXPECT_TRUE(visible().starts_with(noiseLine(0))) << visible().substr(0, 200);
  view->scrollTo(100'000 * view->cellMetrics().height);
  EXPECT_NE(visible().find(noiseLine(100'000)), std::string::npos);
  EXPECT_TRUE(view->textStorage().lostBlocks().empty());
}

TEST_F(LargeHistoryTest, ReadsOnWhenItsFolderIsRemovedWhileItRuns) {
  show();
  appendNoise(60);
  ASSERT_TRUE(waitFor([&] { return view->textStorage().usage().spilledBlocks > 50; }));
  ASSERT_TRUE(QDir(caches()).removeRecursively());
  appendNoise(80);
  view->scrollTo(0_px);
  EXPECT_TRUE(visible().starts_with(noiseLine(0)));
  EXPECT_TRUE(view->textStorage().lostBlocks().empty());
}

TEST_F(LargeHistoryTest, SaysWhatItHadToGiveUpWhereItHasNoRoomForAFile) {
  QFile inTheWay(caches());
  ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
  show();
  appendNoise(60);
  ASSERT_TRUE(waitFor([&] { return view->textStorage().usage().droppedBlocks > 50; }));
  view->scrollTo(0_px);
  EXPECT_TRUE(visible().starts_with(kHistoryLostNotice)) << visible().substr(0, 200);
  append("still here");
  view->scrollToEndOfDocument();
  EXPECT_TRUE(visible().ends_with("still here"));
}

TEST_F(LargeHistoryTest, ShowsALineWithoutEndAtAnyPlaceAndWidth) {
  show();
  std::string line;
  for (std::size_t i = 0; line.size() < 64 * kMegabyte; ++i) {
    line += std::to_string(i) + ",";
  }
  append(line);
  for (const int width : {900, 30, 400, 900}) {
    view->resize(width, 600);
    const auto columns = static_cast<std::size_t>(view->gridSize().columns);
    for (const double part : {0.0, 0.37, 0.99}) {
      const auto row = static_cast<std::size_t>(part * static_cast<double>(line.size() / columns));
      view->scrollTo(row * view->cellMetrics().height + DevicePixels(std::lround(TextCanvas::inset.value)));
      view->makeFrameNow();
      const std::string shown = visible();
      const std::string expected = line.substr(row * columns, columns);
      EXPECT_NE(shown.find(expected), std::string::npos) << width << " columns " << columns << " row " << row;
    }
  }
}

TEST_F(LargeHistoryTest, HasEveryCharacterOfAFloodThatItIsResizedToOneColumnAndBackIn) {
  ContentView window(test::runTestChild({"flood", "40000000"}));
  window.resize(900, 600);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, test::kPatience.count()));
  TerminalNSTextView& text = window.textView();
  int resizes = 0;
  constexpr std::size_t kCharacters = 40'000'000 / 80 * 79;
  const bool complete = waitFor(
      [&] {
        window.resize(++resizes % 2 == 0 ? 900 : 30, 600);
        return text.textStorage().size() >= kCharacters && !window.terminal().ptySession().isRunning();
      },
      std::chrono::seconds(100));
  EXPECT_TRUE(complete) << text.textStorage().size();
  EXPECT_GT(resizes, 10);
  // Line ends that fell between two reads are there as well.
  const std::string all = text.textStorage().text({}, text.textStorage().end());
  EXPECT_EQ(std::ranges::count_if(all, [](char c) { return c >= 'a' && c <= 'z'; }), std::ptrdiff_t{kCharacters});
  window.resize(900, 600);
  text.makeFrameNow();
  EXPECT_TRUE(text.isAtEnd());
  // As in a view that has always had this size.
  LogRowSource fresh(text.textStorage());
  fresh.setColumns(text.gridSize().columns);
  while (fresh.refine()) {
  }
  while (text.source().refine()) {
  }
  EXPECT_EQ(text.source().rowCount(), fresh.rowCount());
}

}  // namespace
}  // namespace zolt
