#include "brew/OneAtATime.h"
#include "platform/MainQueue.h"

namespace zolt {
namespace {

using BrewQueueTest = test::OneAtATime;

TEST_F(BrewQueueTest, StartsNothingForADestroyedManager) {
  QSemaphore held;
  queue.async([&] { held.acquire(); });
  makeManager();
  manager.reset();
  held.release();
  ASSERT_TRUE(waitForQueue());
  EXPECT_TRUE(calls().empty());
}

TEST_F(BrewQueueTest, StartsCommandsWhoseManagerStillExists) {
  QSemaphore held;
  queue.async([&] { held.acquire(); });
  makeManager();
  held.release();
  ASSERT_TRUE(waitForQueue());
  EXPECT_EQ(calls(), (std::vector<std::string>{"[list][--cask]", "[list][--formula]", "[outdated][--json]"}));
}

// Tasks that were submitted before a search's completion ran come between it and the results.
TEST_F(BrewQueueTest, PublishesResultsAfterTasksThatAreAlreadyQueued) {
  write("search.txt", "foo\n");
  makeIdleManager();
  manager->search(QStringLiteral("foo"));
  ASSERT_TRUE(waitForQueue()) << "its completion is on the main queue now";
  bool isNext = false;
  bool publishedEarly = false;
  MainQueue::async([&] {
    isNext = true;
    publishedEarly = !manager->searchResults().empty() || manager->status() != QStringLiteral("Searching...");
  });
  ASSERT_TRUE(waitForStatus("Found 1 results"));
  EXPECT_TRUE(isNext);
  EXPECT_FALSE(publishedEarly);
}

}  // namespace
}  // namespace zolt
