#include "platform/NarrowQueue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <semaphore>
#include <vector>

#include "support/WaitFor.h"

namespace zolt {
namespace {

TEST(NarrowQueue, RunsAsManyTasksConcurrentlyAsItIsWide) {
  std::atomic<int> running = 0;
  std::counting_semaphore<> gate(0);
  TaskGroup group;
  WorkerQueue queue(8);
  NarrowQueue narrow(queue, 2);
  for (int i = 0; i < 5; ++i) {
    group.enter();
    narrow.async([&] {
      ++running;
      gate.acquire();
      group.leave();
    });
  }
  EXPECT_TRUE(test::waitFor([&] { return running == 2; }));
  test::runLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(running, 2);
  gate.release();
  EXPECT_TRUE(test::waitFor([&] { return running == 3; }));
  gate.release(4);
  group.wait();
  EXPECT_EQ(running, 5);
}

TEST(NarrowQueue, DoesNotDelayOtherTasksOfTheQueue) {
  std::counting_semaphore<> gate(0);
  std::atomic<bool> ran = false;
  WorkerQueue queue(2);
  NarrowQueue narrow(queue, 1);
  for (int i = 0; i < 10; ++i) {
    narrow.async([&] { gate.acquire(); });
  }
  queue.async([&] { ran = true; });
  EXPECT_TRUE(test::waitFor([&] { return ran.load(); }));
  gate.release(10);
}

TEST(NarrowQueue, StartsTasksInTheOrderOfSubmission) {
  std::vector<int> order;
  TaskGroup group;
  WorkerQueue queue(4);
  NarrowQueue narrow(queue, 1);
  for (int i = 0; i < 500; ++i) {
    group.enter();
    narrow.async([&, i] {
      order.push_back(i);
      group.leave();
    });
  }
  group.wait();
  EXPECT_EQ(order.size(), 500U);
  EXPECT_TRUE(std::ranges::is_sorted(order));
}

TEST(NarrowQueue, RunsTasksAgainAfterHavingBeenIdle) {
  std::binary_semaphore ran(0);
  WorkerQueue queue(4);
  NarrowQueue narrow(queue, 1);
  for (int round = 0; round < 100; ++round) {
    narrow.async([&] { ran.release(); });
    EXPECT_TRUE(ran.try_acquire_for(std::chrono::seconds(20)));
  }
}

TEST(NarrowQueue, MayBeDestroyedBeforeItsTasksHaveRun) {
  std::atomic<int> ran = 0;
  WorkerQueue queue(1);
  {
    NarrowQueue narrow(queue, 1);
    for (int i = 0; i < 10; ++i) {
      narrow.async([&] { ++ran; });
    }
  }
  EXPECT_TRUE(test::waitFor([&] { return ran == 10; }));
}

}  // namespace
}  // namespace zolt
