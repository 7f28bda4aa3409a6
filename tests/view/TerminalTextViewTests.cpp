#include "view/TerminalTextView.h"

#include "platform/MainQueue.h"
#include "view/ViewFixture.h"

namespace zolt {
namespace {

class CoordinatorTest : public testing::Test {
 protected:
  CoordinatorTest() { coordinator.textView = &view; }

  void output(const std::string& bytes) { coordinator.appendOutput(Bytes(bytes)); }
  std::string text() const { return view.textStorage().text({}, view.textStorage().end()); }
  TextAttributes styleAt(TextPosition position) const {
    TextAttributes found;
    view.textStorage().forEachRun(position, position + 1,
                                  [&](TextPosition, std::string_view, const TextAttributes& each) { found = each; });
    return found;
  }

  TerminalNSTextView view;
  TerminalTextView::Coordinator coordinator;
};

TEST_F(CoordinatorTest, ShowsChunksInOrderAndKeepsTheRenditionBetweenThem) {
  output("ls\n");
  output("\x1B[31mred");
  output(" too");
  EXPECT_EQ(text(), "ls\nred too");
  EXPECT_EQ(styleAt(0_pos).foreground, Color::white);
  EXPECT_EQ(styleAt(3_pos).foreground, (Color{0.8, 0, 0, 1}));
  EXPECT_EQ(styleAt(8_pos).foreground, (Color{0.8, 0, 0, 1}));
}

TEST_F(CoordinatorTest, DropsBothChunksOfASplitCharacter) {
  output("kept \xC3");
  output("\xA9 lost");
  EXPECT_EQ(text(), "");
  output("next");
  EXPECT_EQ(text(), "next");
}

TEST_F(CoordinatorTest, ScrollsToTheEndEvenIfTheUserHadScrolledUp) {
  view.resize(400, 300);
  view.show();
  for (int i = 0; i < 100; ++i) {
    output("line\n");
  }
  view.scrollTo(0_px);
  EXPECT_FALSE(view.isAtEnd());
  output("more\n");
  EXPECT_TRUE(view.isAtEnd());
  EXPECT_EQ(view.scrollOffset(), view.scrollMaximum());
}

TEST_F(CoordinatorTest, DoesNothingWhenTheViewIsGone) {
  auto gone = std::make_unique<TerminalNSTextView>();
  coordinator.textView = gone.get();
  gone.reset();
  output("\x1B[31mtext");
  coordinator.textView = &view;
  output("next");
  EXPECT_EQ(text(), "next");
  EXPECT_EQ(styleAt(0_pos).foreground, Color::white) << "the parser did not see the colour either";
}

using TerminalTextViewTest = test::TerminalWindowTest;

TEST_F(TerminalTextViewTest, ShowsWhatTheProgramPrints) {
  open({"raw", "\\e[1mbold\\e[0m plain\\n"});
  EXPECT_TRUE(waitForText("bold plain\n"));
}

TEST_F(TerminalTextViewTest, DropsTheLineEndsOfAProgramThatLeavesTheTerminalAsItIs) {
  // The terminal sends CR LF for a line feed, and that pair is one character that a log does not show.
  open({"echo", "one", "two"});
  EXPECT_TRUE(waitForText("onetwo"));
}

TEST_F(TerminalTextViewTest, ReplacesTheSessionsHandlerAndLeavesTheGridAlone) {
  open({"raw", "text"});
  ASSERT_TRUE(waitForText("text"));
  EXPECT_EQ(window->terminal().screenBuffer().cells()[0][0].character, " ");
}

TEST_F(TerminalTextViewTest, ShowsAChunkInALaterTurnThanItsDeliveryAndInOrder) {
  open({"wait"});
  ASSERT_TRUE(waitForText("waiting"));
  const std::string before = shown();
  window->terminal().ptySession().onOutput(Bytes(std::string("one ")));
  window->terminal().ptySession().onOutput(Bytes(std::string("two")));
  EXPECT_EQ(shown(), before);
  EXPECT_TRUE(waitForText("two"));
  EXPECT_EQ(shown(), before + "one two");
}

TEST_F(TerminalTextViewTest, TellsTheTerminalItsSize) {
  open({"size"});
  const TerminalSize size = view().gridSize();
  EXPECT_TRUE(waitForText(std::to_string(size.rows) + "x" + std::to_string(size.columns)));
  window->resize(500, 300);
  ASSERT_TRUE(test::waitFor([&] { return view().gridSize() != size; }));
  const TerminalSize smaller = view().gridSize();
  EXPECT_TRUE(waitForText(std::to_string(smaller.rows) + "x" + std::to_string(smaller.columns)));
  EXPECT_EQ(std::ssize(window->terminal().getScreenContent()), smaller.rows);
}

TEST_F(TerminalTextViewTest, IsForgottenByTheSessionWhenItIsGone) {
  const auto terminal = test::runTestChild({"raw", "text\\n"})({});
  {
    const TerminalTextView wrapper(*terminal);
    const auto coordinator = wrapper.makeCoordinator();
    const std::unique_ptr<TerminalNSTextView> made(wrapper.makeNSView(*coordinator, nullptr));
  }
  EXPECT_TRUE(test::waitFor([&] { return !terminal->ptySession().isRunning(); }));
  ASSERT_TRUE(test::waitFor([&] { return terminal->ptySession().isDrained(); }));
  // The chunk is delivered in one turn and would be shown in the next; these two come after it.
  bool shown = false;
  MainQueue::async([&] { MainQueue::async([&] { shown = true; }); });
  EXPECT_TRUE(test::waitFor([&] { return shown; }));
}

TEST_F(TerminalTextViewTest, AClickFocusesTheView) {
  open({"wait"});
  view().clearFocus();
  ASSERT_FALSE(view().hasFocus());
  QTest::mouseClick(view().viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
  EXPECT_TRUE(view().hasFocus());
}

TEST_F(TerminalTextViewTest, AnswersTheEventLoopWhileAProgramFloods) {
  open({"flood", "0"});
  ASSERT_TRUE(test::waitFor([&] { return view().textStorage().size() > 1'000'000; }));
  // Each round is a timer and what else is due: in a starved loop not one of them would come through.
  int rounds = 0;
  const bool answered = test::waitFor([&] { return ++rounds == 20; });
  EXPECT_TRUE(answered);
  EXPECT_TRUE(view().isAtEnd());
}

TEST_F(TerminalTextViewTest, LosesNothingOfAFlood) {
  open({"flood", "8000000"});
  // Every line feed arrives as CR LF; the pair is dropped but where a chunk ends between the two.
  const auto letters = [&] {
    std::uint64_t count = 0;
    const TextStorage& storage = view().textStorage();
    for (std::size_t i = 0; i < storage.blockCount(); ++i) {
      const auto block = storage.block(i);
      for (const char c : block->text()) {
        count += c >= 'a' && c <= 'z' ? 1U : 0U;
      }
    }
    return count;
  };
  EXPECT_TRUE(test::waitFor([&] { return letters() == 8'000'000 / 80 * 79; })) << letters();
}

TEST_F(TerminalTextViewTest, ALargePasteIntoAProgramThatDoesNotReadDoesNotBlock) {
  open({"sleeper"});
  ASSERT_TRUE(waitForText("sleeping"));
  window->terminal().sendInput(std::string(16'000'000, 'x'));
  int rounds = 0;
  EXPECT_TRUE(test::waitFor([&] { return ++rounds == 3; }));
  EXPECT_TRUE(window->terminal().ptySession().isRunning());
}

}  // namespace
}  // namespace zolt
