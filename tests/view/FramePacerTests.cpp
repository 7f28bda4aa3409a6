#include <gtest/gtest.h>

#include "support/WaitFor.h"
#include "view/canvas/FramePacer.h"

namespace zolt {
namespace {

using namespace std::chrono_literals;

TEST(FramePacer, MakesAFrameAtOnceAfterAPause) {
  const FramePacer::Clock::time_point start{1h};
  EXPECT_EQ(untilNextFrame(start + 20ms, start, 16ms), 0us);
  EXPECT_EQ(untilNextFrame(start + 16ms, start, 16ms), 0us);
}

TEST(FramePacer, WaitsForTheNextRefreshUnderLoad) {
  const FramePacer::Clock::time_point start{1h};
  EXPECT_EQ(untilNextFrame(start + 5ms, start, 16ms), 11ms);
}

TEST(FramePacer, MakesOneFrameForManyWishes) {
  int frames = 0;
  FramePacer pacer([&] { ++frames; }, nullptr);
  for (int i = 0; i < 100; ++i) {
    pacer.request();
  }
  EXPECT_TRUE(test::waitFor([&] { return frames > 0; }));
  EXPECT_FALSE(pacer.isPending());
  test::runLoopFor(50ms);
  EXPECT_EQ(frames, 1);
}

TEST(FramePacer, MakesAtMostOneFrameARefresh) {
  int frames = 0;
  FramePacer pacer([&] { ++frames; }, nullptr);
  pacer.setInterval(40ms);
  const auto start = FramePacer::Clock::now();
  while (FramePacer::Clock::now() - start < 400ms) {
    pacer.request();
    test::runLoopFor(1ms);
  }
  const auto elapsed = FramePacer::Clock::now() - start;
  EXPECT_GE(frames, 2);
  EXPECT_LE(frames, elapsed / 40ms + 1);
}

TEST(FramePacer, MakesAFrameEverySecondRefreshInARush) {
  std::vector<FramePacer::Clock::time_point> frames;
  FramePacer pacer([&] { frames.push_back(FramePacer::Clock::now()); }, nullptr);
  pacer.setInterval(4ms);
  const auto rush = [&](int count) {
    frames.clear();
    while (std::ssize(frames) < count) {
      pacer.request();
      test::runLoopFor(1ms);
    }
  };
  // On a busy machine a turn of the loop may take longer than an interval, which is a pause.
  const auto lastGap = [&] {
    rush(FramePacer::rushFrames + 5);
    return frames.back() - frames[frames.size() - 2];
  };
  bool halved = false;
  for (int attempt = 0; attempt < 10 && !halved; ++attempt) {
    halved = lastGap() >= 7ms;
  }
  EXPECT_TRUE(halved);
  test::runLoopFor(50ms);  // a pause: the rush is over
  rush(1);
  const auto asked = FramePacer::Clock::now();
  rush(FramePacer::rushFrames - 10);
  EXPECT_GE(frames.back() - asked, 4ms * (FramePacer::rushFrames - 12));
}

}  // namespace
}  // namespace zolt
