#include "platform/MainQueue.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/WaitFor.h"

namespace zolt {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using test::runLoopFor;
using test::waitFor;

// Runs the loop until everything submitted so far has run.
void drainMainQueue() {
  bool reached = false;
  MainQueue::async([&] { reached = true; });
  ASSERT_TRUE(waitFor([&] { return reached; }));
}

TEST(MainQueue, RunsTasksInTheOrderOfSubmission) {
  std::vector<int> order;
  std::vector<int> expected;
  for (int i = 0; i < 1000; ++i) {
    MainQueue::async([&order, i] { order.push_back(i); });
    expected.push_back(i);
  }
  EXPECT_TRUE(order.empty()) << "tasks run in a later turn, not on submission";
  drainMainQueue();
  EXPECT_EQ(order, expected);
}

TEST(MainQueue, RunsTasksFromOtherThreadsOnTheMainThreadInOrder) {
  constexpr int kThreads = 4;
  constexpr int kTasks = 2000;
  std::vector<std::vector<int>> orders(kThreads);
  bool elsewhere = false;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      for (int i = 0; i < kTasks; ++i) {
        MainQueue::async([&, thread, i] {
          elsewhere = elsewhere || QThread::currentThread() != QCoreApplication::instance()->thread();
          orders[static_cast<std::size_t>(thread)].push_back(i);
        });
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  drainMainQueue();
  EXPECT_FALSE(elsewhere);
  for (const auto& order : orders) {
    EXPECT_EQ(order.size(), std::size_t{kTasks});
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
  }
}

TEST(MainQueue, KeepsTheOrderOfThreadsThatTakeTurns) {
  std::string order;
  MainQueue::async([&] { order += "a"; });
  std::thread([&] { MainQueue::async([&] { order += "b"; }); }).join();
  MainQueue::async([&] { order += "c"; });
  drainMainQueue();
  EXPECT_EQ(order, "abc");
}

TEST(MainQueue, WakesALoopThatIsWaiting) {
  for (int round = 0; round < 200; ++round) {
    bool done = false;
    std::thread other([&] { MainQueue::async([&] { done = true; }); });
    EXPECT_TRUE(waitFor([&] { return done; })) << "in round " << round;
    other.join();
  }
}

TEST(MainQueue, RunsATaskWhoseOwnerLives) {
  const QObject owner;
  bool ran = false;
  MainQueue::async(&owner, [&] { ran = true; });
  drainMainQueue();
  EXPECT_TRUE(ran);
}

TEST(MainQueue, DropsATaskWhoseOwnerIsGoneBeforeSubmission) {
  auto owner = std::make_unique<QObject>();
  const MainQueue::Owner weak(owner.get());
  owner.reset();
  bool ran = false;
  MainQueue::async(weak, [&] { ran = true; });
  drainMainQueue();
  EXPECT_FALSE(ran);
}

TEST(MainQueue, DropsATaskWhoseOwnerIsDestroyedBeforeItRuns) {
  auto owner = std::make_unique<QObject>();
  bool ran = false;
  MainQueue::async(owner.get(), [&] { ran = true; });
  owner.reset();
  drainMainQueue();
  EXPECT_FALSE(ran);
}

TEST(MainQueue, DropsATaskWhoseOwnerAnEarlierTaskDestroys) {
  auto owner = std::make_unique<QObject>();
  bool ran = false;
  MainQueue::async([&] { owner.reset(); });
  MainQueue::async(owner.get(), [&] { ran = true; });
  drainMainQueue();
  EXPECT_FALSE(ran);
}

TEST(MainQueue, ReleasesWhatADroppedTaskHolds) {
  auto owner = std::make_unique<QObject>();
  const auto held = std::make_shared<int>(0);
  MainQueue::async(owner.get(), [held] { ++*held; });
  EXPECT_EQ(held.use_count(), 2);
  owner.reset();
  drainMainQueue();
  EXPECT_EQ(held.use_count(), 1);
  EXPECT_EQ(*held, 0);
}

TEST(MainQueue, RunsATaskSubmittedByATaskInALaterTurn) {
  const QObject receiver;
  std::string order;
  MainQueue::async([&] {
    order += "first ";
    MainQueue::async([&] { order += "submitted "; });
    QMetaObject::invokeMethod(
        const_cast<QObject*>(&receiver), [&] { order += "event "; }, Qt::QueuedConnection);
  });
  EXPECT_TRUE(waitFor([&] { return order.size() >= 22; }));
  EXPECT_EQ(order, "first event submitted ");
}

TEST(MainQueue, LetsTimersAndEventsThroughALongQueue) {
  const QObject receiver;
  constexpr int kTasks = 400;
  int tasksRun = 0;
  int runBeforeTimer = -1;
  int runBeforeEvent = -1;
  for (int i = 0; i < kTasks; ++i) {
    MainQueue::async([&] {
      std::this_thread::sleep_for(1ms);
      if (++tasksRun != 20) return;
      QMetaObject::invokeMethod(
          const_cast<QObject*>(&receiver), [&] { runBeforeEvent = tasksRun; }, Qt::QueuedConnection);
    });
  }
  QTimer::singleShot(10ms, &receiver, [&] { runBeforeTimer = tasksRun; });
  drainMainQueue();
  EXPECT_EQ(tasksRun, kTasks);
  EXPECT_GE(runBeforeTimer, 0);
  EXPECT_LT(runBeforeTimer, kTasks / 2);
  EXPECT_GE(runBeforeEvent, 0);
  EXPECT_LT(runBeforeEvent, kTasks / 2);
}

TEST(MainQueue, LetsTimersThroughTasksThatSubmitThemselvesAgain) {
  const QObject receiver;
  bool fired = false;
  const auto giveUp = Clock::now() + 10s;
  std::function<void()> again = [&] {
    if (!fired && Clock::now() < giveUp) MainQueue::async(again);
  };
  again();
  QTimer::singleShot(20ms, &receiver, [&] { fired = Clock::now() < giveUp; });
  EXPECT_TRUE(waitFor([&] { return fired; }));
}

TEST(MainQueue, RunsADelayedTaskNoEarlierThanItsTime) {
  const auto start = Clock::now();
  Clock::duration elapsed{};
  MainQueue::after(80ms, [&] { elapsed = Clock::now() - start; });
  EXPECT_TRUE(waitFor([&] { return elapsed != Clock::duration{}; }));
  EXPECT_GE(elapsed, 80ms);
}

TEST(MainQueue, RunsDelayedTasksInTheOrderOfTheirTimes) {
  std::string order;
  MainQueue::after(300ms, [&] { order += "late"; });
  MainQueue::after(1ms, [&] { order += "early "; });
  EXPECT_TRUE(waitFor([&] { return order.ends_with("late"); }));
  EXPECT_EQ(order, "early late");
}

TEST(MainQueue, RunsADelayedTaskWhoseOwnerLives) {
  const QObject owner;
  bool ran = false;
  MainQueue::after(&owner, 1ms, [&] { ran = true; });
  EXPECT_TRUE(waitFor([&] { return ran; }));
}

TEST(MainQueue, DropsADelayedTaskWithItsOwner) {
  auto owner = std::make_unique<QObject>();
  bool ran = false;
  bool later = false;
  MainQueue::after(owner.get(), 20ms, [&] { ran = true; });
  MainQueue::after(60ms, [&] { later = true; });
  runLoopFor(1ms);
  owner.reset();
  EXPECT_TRUE(waitFor([&] { return later; }));
  EXPECT_FALSE(ran);
}

}  // namespace
}  // namespace zolt
