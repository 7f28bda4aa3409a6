#pragma once

#include <QSemaphore>
#include <memory>
#include <string>
#include <vector>

#include "brew/BrewFixture.h"

namespace zolt::test {

/// A manager whose commands run one at a time, in the order in which they were requested.
class OneAtATime : public BrewTest {
 protected:
  void TearDown() override {
    manager.reset();
    BrewTest::TearDown();
  }

  void makeManager(const std::string& tool = ZOLT_FAKE_BREW) {
    manager = std::make_unique<BrewManager>(std::vector<std::string>{tool}, queue);
  }
  void makeIdleManager() {
    makeManager();
    ASSERT_TRUE(waitUntilIdle());
    forgetCalls();
  }
  /// Waits until everything submitted so far has run, without running the main queue. False after `limit`.
  bool waitForQueue(std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    const auto done = std::make_shared<QSemaphore>();
    queue.async([done] { done->release(); });
    return done->tryAcquire(1, static_cast<int>(limit.count()));
  }

  WorkerQueue queue{1};
};

}  // namespace zolt::test
