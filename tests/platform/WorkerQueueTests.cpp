#include "platform/WorkerQueue.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <semaphore>
#include <thread>
#include <vector>

#include "support/WaitFor.h"

namespace zolt {
namespace {

using test::waitFor;

bool onMainThread() {
  return QThread::currentThread() == QCoreApplication::instance()->thread();
}

TEST(WorkerQueue, RunsTasksOnABackgroundThread) {
  WorkerQueue queue(2);
  std::atomic<int> background = 0;
  for (int i = 0; i < 10; ++i) {
    queue.async([&] { background += onMainThread() ? 0 : 1; });
  }
  EXPECT_TRUE(waitFor([&] { return background == 10; }));
}

TEST(WorkerQueue, StartsTasksInTheOrderOfSubmission) {
  std::vector<int> order;
  TaskGroup group;
  WorkerQueue queue(1);
  for (int i = 0; i < 500; ++i) {
    group.enter();
    queue.async([&, i] {
      order.push_back(i);
      group.leave();
    });
  }
  group.wait();
  EXPECT_EQ(order.size(), 500U);
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(WorkerQueue, RunsAsManyTasksConcurrentlyAsItHasThreads) {
  WorkerQueue queue(3);
  std::atomic<int> running = 0;
  std::counting_semaphore<> gate(0);
  TaskGroup group;
  for (int i = 0; i < 5; ++i) {
    group.enter();
    queue.async([&] {
      ++running;
      gate.acquire();
      group.leave();
    });
  }
  EXPECT_TRUE(waitFor([&] { return running == 3; }));
  test::runLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(running, 3);
  gate.release(5);
  group.wait();
  EXPECT_EQ(running, 5);
}

TEST(WorkerQueue, WaitsForRunningTasksAndDropsTheOthersWhenDestroyed) {
  std::atomic<bool> started = false;
  std::atomic<bool> finished = false;
  std::atomic<bool> second = false;
  const auto held = std::make_shared<int>();
  {
    WorkerQueue queue(1);
    queue.async([&] {
      started = true;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      finished = true;
    });
    queue.async([&, held] { second = true; });
    EXPECT_TRUE(waitFor([&] { return started.load(); }));
  }
  EXPECT_TRUE(finished);
  EXPECT_FALSE(second);
  EXPECT_EQ(held.use_count(), 1);
}

#ifdef __linux__
// Children inherit the priority of the thread.
TEST(WorkerQueue, RunsTasksAtALowerPriorityThanTheMainThread) {
  std::atomic<int> niceness = -100;
  WorkerQueue queue(1);
  queue.async([&] { niceness = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid())); });
  ASSERT_TRUE(waitFor([&] { return niceness != -100; }));
  const int own = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()));
  if (own < 10) {
    EXPECT_GT(niceness, own);
  }
}
#endif

TEST(WorkerQueue, OffersOneProcessWideQueue) {
  EXPECT_EQ(&WorkerQueue::utility(), &WorkerQueue::utility());
  std::atomic<bool> ran = false;
  WorkerQueue::utility().async([&] { ran = true; });
  EXPECT_TRUE(waitFor([&] { return ran.load(); }));
}

TEST(TaskGroup, NotifiesOnTheMainThreadWhenTheLastTaskHasLeft) {
  WorkerQueue queue(4);
  TaskGroup group;
  std::atomic<int> done = 0;
  std::counting_semaphore<> gate(0);
  for (int i = 0; i < 8; ++i) {
    group.enter();
    queue.async([&] {
      gate.acquire();
      ++done;
      group.leave();
    });
  }
  int doneAtNotice = -1;
  bool noticeOnMain = false;
  group.notify([&] {
    doneAtNotice = done;
    noticeOnMain = onMainThread();
  });
  test::runLoopFor(std::chrono::milliseconds(20));
  EXPECT_EQ(doneAtNotice, -1);
  gate.release(8);
  EXPECT_TRUE(waitFor([&] { return doneAtNotice != -1; }));
  EXPECT_EQ(doneAtNotice, 8);
  EXPECT_TRUE(noticeOnMain);
}

TEST(TaskGroup, NotifiesInALaterTurnIfItIsEmpty) {
  TaskGroup group;
  bool noticed = false;
  group.notify([&] { noticed = true; });
  EXPECT_FALSE(noticed);
  EXPECT_TRUE(waitFor([&] { return noticed; }));
}

TEST(TaskGroup, NotifiesOnceForEachNotify) {
  TaskGroup group;
  int notices = 0;
  group.enter();
  group.notify([&] { ++notices; });
  group.notify([&] { ++notices; });
  group.leave();
  EXPECT_TRUE(waitFor([&] { return notices == 2; }));
  group.enter();
  group.leave();
  test::runLoopFor(std::chrono::milliseconds(20));
  EXPECT_EQ(notices, 2);
}

TEST(TaskGroup, BlocksUntilItIsEmpty) {
  TaskGroup group;
  std::atomic<bool> left = false;
  group.enter();
  std::thread other([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    left = true;
    group.leave();
  });
  group.wait();
  EXPECT_TRUE(left);
  other.join();
}

TEST(TaskGroup, AbortsTheProgramIfLeftMoreOftenThanEntered) {
  EXPECT_DEATH(
      {
        TaskGroup group;
        group.leave();
      },
      "left more often than entered");
}

}  // namespace
}  // namespace zolt
