#include "canvas/FramePacer.h"

#include <gtest/gtest.h>

#include "support/ManualClock.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

using namespace std::chrono_literals;

class FramePacerTest : public testing::Test {
 protected:
  /// Output that asks for a frame every millisecond, for so long; the times between the frames that came of it.
  std::vector<std::chrono::microseconds> flood(std::chrono::milliseconds duration) {
    frames.clear();
    for (auto time = 0ms; time < duration; time += 1ms) {
      pacer.request();
      clock.advance(1ms);
    }
    std::vector<std::chrono::microseconds> gaps;
    for (std::size_t i = 1; i < frames.size(); ++i) {
      gaps.push_back(std::chrono::duration_cast<std::chrono::microseconds>(frames[i] - frames[i - 1]));
    }
    return gaps;
  }

  test::ManualClock clock;
  std::vector<Clock::TimePoint> frames;
  FramePacer pacer{[this] { frames.push_back(clock.now()); }, clock};
};

TEST_F(FramePacerTest, MakesAFrameAtOnceAfterAPause) {
  pacer.setInterval(16ms);
  pacer.request();
  EXPECT_EQ(clock.untilNext(), 0us);
  clock.advance(0us);
  EXPECT_EQ(frames.size(), 1U);
  clock.advance(16ms);
  pacer.request();
  EXPECT_EQ(clock.untilNext(), 0us);
}

TEST_F(FramePacerTest, MakesAFrameWithinTheCallForACallerThatCannotWait) {
  pacer.setInterval(16ms);
  pacer.requestAtOnce();
  EXPECT_EQ(frames.size(), 1U);
  EXPECT_FALSE(pacer.isPending());
  clock.advance(5ms);
  pacer.requestAtOnce();
  pacer.requestAtOnce();
  EXPECT_EQ(frames.size(), 1U) << "the refresh limits it as it does the others";
  EXPECT_EQ(clock.untilNext(), 11ms);
  clock.advance(11ms);
  EXPECT_EQ(frames.size(), 2U);
}

TEST_F(FramePacerTest, WaitsForTheNextRefreshUnderLoad) {
  pacer.setInterval(16ms);
  pacer.request();
  clock.advance(5ms);
  pacer.request();
  EXPECT_EQ(clock.untilNext(), 11ms);
}

TEST_F(FramePacerTest, MakesOneFrameForManyRequests) {
  for (int i = 0; i < 100; ++i) {
    pacer.request();
  }
  EXPECT_TRUE(pacer.isPending());
  clock.advance(1h);
  EXPECT_EQ(frames.size(), 1U);
  EXPECT_FALSE(pacer.isPending());
}

TEST_F(FramePacerTest, MakesOneFrameARefreshUnderLoad) {
  pacer.setInterval(16ms);
  const auto gaps = flood(16ms * (FramePacer::floodFrames - 1));
  EXPECT_EQ(gaps, std::vector<std::chrono::microseconds>(FramePacer::floodFrames - 1, 16ms));
}

TEST_F(FramePacerTest, MakesAFrameEverySecondRefreshInAFloodUntilItPauses) {
  pacer.setInterval(16ms);
  EXPECT_EQ(flood(2s).back(), 32ms);
  clock.advance(1s);
  const auto gaps = flood(16ms * (FramePacer::floodFrames - 1));
  ASSERT_FALSE(gaps.empty());
  EXPECT_EQ(gaps.front(), 16ms);
  EXPECT_EQ(gaps.back(), 16ms);
}

TEST(FramePacerOnTheSteadyClock, MakesItsFrameFromTheEventLoop) {
  int frames = 0;
  FramePacer pacer([&] { ++frames; });
  pacer.request();
  EXPECT_EQ(frames, 0);
  EXPECT_TRUE(test::waitFor([&] { return frames == 1; }));
  EXPECT_FALSE(pacer.isPending());
}

}  // namespace
}  // namespace zolt
