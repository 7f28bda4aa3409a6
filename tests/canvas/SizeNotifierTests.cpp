#include "canvas/SizeNotifier.h"

#include <gtest/gtest.h>

#include "support/ManualClock.h"

namespace zolt {
namespace {

using namespace std::chrono_literals;

class SizeNotifierTest : public testing::Test {
 protected:
  static TerminalSize columns(int count) {
    return {.rows = 24, .columns = count, .pixelWidth = 8 * count, .pixelHeight = 384};
  }
  /// Ends the time of the first size, which is told at once.
  void tellFirst(int count) {
    notifier.update(columns(count));
    clock.advance(0ms);
    told.clear();
  }
  /// A drag through these widths, a step every 30 milliseconds.
  void drag(std::initializer_list<int> widths) {
    for (const int width : widths) {
      clock.advance(30ms);
      notifier.update(columns(width));
    }
  }

  test::ManualClock clock;
  std::vector<int> told;
  SizeNotifier notifier{[this](const TerminalSize& size) { told.push_back(size.columns); }, clock};
};

TEST_F(SizeNotifierTest, TellsTheFirstSizeWithoutWaitingAndTheLastOfOneTurnOnly) {
  notifier.update(columns(60));
  notifier.update(columns(80));
  EXPECT_TRUE(told.empty());
  clock.advance(0ms);
  EXPECT_EQ(told, std::vector{80});
}

TEST_F(SizeNotifierTest, TellsTheEndOfADragOnce) {
  tellFirst(80);
  drag({79, 78, 77, 76, 75, 74, 73, 72, 71, 70});
  EXPECT_TRUE(told.empty());
  clock.advance(SizeNotifier::restInterval - 1ms);
  EXPECT_TRUE(told.empty());
  clock.advance(1ms);
  EXPECT_EQ(told, std::vector{70});
  clock.advance(1h);
  EXPECT_EQ(told, std::vector{70});
}

TEST_F(SizeNotifierTest, TellsNothingOfADragThatEndsWhereItBegan) {
  tellFirst(80);
  drag({82, 85, 90, 85, 82, 80});
  clock.advance(1h);
  EXPECT_TRUE(told.empty());
  drag({81});
  clock.advance(1h);
  EXPECT_EQ(told, std::vector{81});
}

TEST_F(SizeNotifierTest, DoesNotWaitLongerForASizeThatIsReportedTwice) {
  tellFirst(80);
  notifier.update(columns(90));
  clock.advance(SizeNotifier::restInterval - 1ms);
  notifier.update(columns(90));
  clock.advance(1ms);
  EXPECT_EQ(told, std::vector{90});
}

TEST_F(SizeNotifierTest, TellsNothingWhileHeldHoweverLongASizeRests) {
  tellFirst(80);
  notifier.update(columns(75));
  notifier.hold(true);
  clock.advance(1h);
  notifier.update(columns(70));
  clock.advance(1h);
  EXPECT_TRUE(told.empty());
  notifier.hold(false);
  EXPECT_TRUE(told.empty());
  clock.advance(SizeNotifier::restInterval);
  EXPECT_EQ(told, std::vector{70});
}

TEST_F(SizeNotifierTest, TellsNothingWhenItIsReleasedWhereItWasHeld) {
  tellFirst(80);
  notifier.hold(true);
  notifier.update(columns(70));
  notifier.hold(true);  // turned around on the way
  notifier.update(columns(80));
  notifier.hold(false);
  clock.advance(1h);
  EXPECT_TRUE(told.empty());
}

TEST_F(SizeNotifierTest, TellsTheFirstSizeAtOnceAlsoWhenItWasHeld) {
  notifier.hold(true);
  notifier.update(columns(70));
  clock.advance(1h);
  EXPECT_TRUE(told.empty());
  notifier.hold(false);
  clock.advance(0ms);
  EXPECT_EQ(told, std::vector{70});
}

TEST_F(SizeNotifierTest, TellsNothingBeforeThereIsASize) {
  notifier.hold(true);
  notifier.hold(false);
  clock.advance(1h);
  EXPECT_TRUE(told.empty());
}

}  // namespace
}  // namespace zolt
