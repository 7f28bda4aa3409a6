#include "terminal/Emulator.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <mutex>
#include <string>

#include "support/WaitFor.h"

namespace zolt {
namespace {

using test::waitFor;

struct Probe {
  explicit Probe(const TerminalSize& size = {.rows = 4, .columns = 20})
      : emulator(size, vt::TerminalSettings(),
                 {.changed = [this] { ++wakeUps; },
                  .replied =
                      [this](const std::string& bytes) {
                        const std::lock_guard lock(mutex);
                        replies += bytes;
                      }}) {
    // A new terminal has a screen to show.
    EXPECT_TRUE(waitFor([this] { return wakeUps == 1; }));
    emulator.take();
    wakeUps = 0;
  }

  void feed(const std::string& text) { emulator.feed(Bytes(text)); }
  // Takes updates until nothing is left to come.
  void settle() {
    EXPECT_TRUE(waitFor([this] {
      if (Emulator::Update update = emulator.take(); update.snapshot) last = std::move(update);
      return emulator.isSettled();
    }));
  }
  std::string row(std::size_t number) const { return last.snapshot->rows[number]->text; }
  std::string taken() {
    const std::lock_guard lock(mutex);
    return replies;
  }

  std::atomic<int> wakeUps = 0;
  std::mutex mutex;
  std::string replies;
  Emulator::Update last;
  Emulator emulator;
};

TEST(Emulator, ShowsWhatItIsFedInOrder) {
  Probe probe;
  probe.feed("one\r\nt");
  probe.feed("wo");
  probe.settle();
  EXPECT_EQ(probe.row(0), "one");
  EXPECT_EQ(probe.row(1), "two");
}

TEST(Emulator, ShowsLittleOutputWithoutAHandOver) {
  Probe probe;
  ASSERT_TRUE(waitFor([&] { return probe.emulator.isSettled(); }));
  probe.feed("x");
  const Emulator::Update update = probe.emulator.take();
  ASSERT_NE(update.snapshot, nullptr);
  EXPECT_EQ(update.snapshot->rows[0]->text, "x");
}

TEST(Emulator, LetsNobodyWaitForItsThread) {
  Probe probe;
  std::promise<void> isOpen;
  probe.emulator.change([&](vt::Terminal&) { isOpen.get_future().wait(); });
  probe.feed("a");
  probe.feed(std::string(Emulator::processedAtOnceBytes + 1, 'b'));
  EXPECT_FALSE(probe.emulator.isSettled());
  isOpen.set_value();
  probe.settle();
  EXPECT_EQ(probe.row(3).front(), 'b');
}

TEST(Emulator, AppliesChangesInTheOrderOfTheOutput) {
  Probe probe;
  probe.feed("\033[10;10H");
  probe.emulator.change([](vt::Terminal& terminal) { terminal.resize({.rows = 2, .columns = 5}); });
  probe.feed("x");
  probe.settle();
  EXPECT_EQ(probe.last.snapshot->rows.size(), 2U);
  EXPECT_EQ(probe.row(1), "    x");
}

TEST(Emulator, WakesItsReceiverOnceForEachSnapshotThatIsTaken) {
  Probe probe;
  probe.feed("first");
  ASSERT_TRUE(waitFor([&] { return probe.wakeUps == 1; }));
  for (int i = 0; i < 1000; ++i) {
    probe.feed("\r\nline " + std::to_string(i));
  }
  std::atomic<bool> isProcessed = false;
  probe.emulator.change([&](vt::Terminal&) { isProcessed = true; });
  ASSERT_TRUE(waitFor([&] { return isProcessed.load(); }));
  EXPECT_EQ(probe.wakeUps, 1) << "nobody has taken the first one yet";
  EXPECT_EQ(probe.emulator.take().snapshot->rows[0]->text, "first");
  ASSERT_TRUE(waitFor([&] { return probe.wakeUps == 2; }));
  probe.settle();
  EXPECT_EQ(probe.row(3), "line 999") << "and the last one shows everything";
}

TEST(Emulator, HasNothingToTakeWhenNothingChanged) {
  Probe probe;
  EXPECT_EQ(probe.emulator.take().snapshot, nullptr);
  EXPECT_TRUE(probe.emulator.isSettled());
}

TEST(Emulator, RepliesToTheProgram) {
  Probe probe;
  probe.feed("\033[6n");
  probe.settle();
  EXPECT_EQ(probe.taken(), "\033[1;1R");
}

TEST(Emulator, KeepsTheEventsOfSnapshotsThatWereNotMade) {
  Probe probe;
  probe.feed("\a");
  ASSERT_TRUE(waitFor([&] { return probe.wakeUps == 1; }));
  probe.feed("\a\a\033]2;title\033\\");
  std::atomic<bool> isProcessed = false;
  probe.emulator.change([&](vt::Terminal&) { isProcessed = true; });
  ASSERT_TRUE(waitFor([&] { return isProcessed.load(); }));
  std::uint32_t bells = probe.emulator.take().events.bells;
  bool titleChanged = false;
  ASSERT_TRUE(waitFor([&] {
    const Emulator::Update update = probe.emulator.take();
    bells += update.events.bells;
    titleChanged = titleChanged || update.events.titleChanged;
    return probe.emulator.isSettled();
  }));
  EXPECT_EQ(bells, 3U);
  EXPECT_TRUE(titleChanged);
}

TEST(Emulator, ShowsNothingFromTheMiddleOfASynchronizedUpdate) {
  // An update may last as long as it may: on a machine that was busy for longer the half is shown, as it has to be.
  bool wasInTime = false;
  for (int round = 0; round < 20 && !wasInTime; ++round) {
    Probe probe;
    const auto begun = std::chrono::steady_clock::now();
    probe.feed("\033[?2026hhalf");
    std::atomic<bool> isProcessed = false;
    probe.emulator.change([&](vt::Terminal&) { isProcessed = true; });
    ASSERT_TRUE(waitFor([&] { return isProcessed.load(); }));
    const Emulator::Update update = probe.emulator.take();
    wasInTime = std::chrono::steady_clock::now() - begun < vt::Terminal::maxUpdate;
    if (wasInTime) {
      EXPECT_EQ(update.snapshot, nullptr);
    }
    probe.feed(" and half\033[?2026l");
    probe.settle();
    EXPECT_EQ(probe.row(0), "half and half");
  }
  EXPECT_TRUE(wasInTime);
}

TEST(Emulator, ShowsASynchronizedUpdateThatNeverEnds) {
  Probe probe;
  probe.feed("\033[?2026hhalf");
  probe.settle();
  EXPECT_EQ(probe.row(0), "half");
}

TEST(Emulator, EndsInTheMiddleOfAFlood) {
  for (int round = 0; round < 5; ++round) {
    Probe probe;
    for (int i = 0; i < 50; ++i) {
      probe.feed(std::string(100'000, static_cast<char>('a' + i % 26)));
    }
  }
}

}  // namespace
}  // namespace zolt
