#include "updates/UpdateScheduler.h"

#include <gtest/gtest.h>

#include "updates/UpdateFixture.h"

namespace zolt {
namespace {

class UpdateSchedulerTest : public test::UpdateTest {
 protected:
  UpdateSchedulerTest() {
    environment.firstCheckDelay = std::chrono::milliseconds(20);
    defaults.setBool("SUEnableAutomaticChecks", true);
  }

  /// How often a check becomes due shortly after the start, if every check is made at once.
  int timesDue() {
    UpdateContext context{UpdateSettings(defaults, {}), environment, {}};
    UpdateScheduler scheduler(context);
    int times = 0;
    QObject::connect(&scheduler, &UpdateScheduler::due, [&] {
      ++times;
      context.settings.setLastCheckTime(now);
    });
    scheduler.start();
    EXPECT_EQ(times, 0) << "emitted by `start` itself";
    test::runLoopFor(std::chrono::milliseconds(200));
    return times;
  }
  void setLastCheck(qint64 secondsAgo) { UpdateSettings(defaults, {}).setLastCheckTime(now.addSecs(-secondsAgo)); }
};

TEST_F(UpdateSchedulerTest, AFirstOrOverdueCheckIsDueOnceShortlyAfterTheStart) {
  EXPECT_EQ(timesDue(), 1);
  setLastCheck(86400);
  EXPECT_EQ(timesDue(), 1);
}

TEST_F(UpdateSchedulerTest, ARecentCheckIsNotRepeated) {
  setLastCheck(86400 - 10);
  EXPECT_EQ(timesDue(), 0);
}

TEST_F(UpdateSchedulerTest, AClockThatWasSetBackMakesACheckDue) {
  setLastCheck(-10);
  EXPECT_EQ(timesDue(), 1);
}

TEST_F(UpdateSchedulerTest, TheIntervalInTheSettingsIsAtLeastAnHour) {
  defaults.setInteger("SUScheduledCheckInterval", 10);
  setLastCheck(3590);
  EXPECT_EQ(timesDue(), 0);
  setLastCheck(3600);
  EXPECT_EQ(timesDue(), 1);
}

TEST_F(UpdateSchedulerTest, ACheckIsDueWhenItsTimeHasCome) {
  setLastCheck(86400 - 1);
  UpdateContext context{UpdateSettings(defaults, {}), environment, {}};
  UpdateScheduler scheduler(context);
  int times = 0;
  QObject::connect(&scheduler, &UpdateScheduler::due, [&] {
    ++times;
    context.settings.setLastCheckTime(now);
  });
  scheduler.start();
  now = now.addSecs(1);
  EXPECT_TRUE(test::waitFor([&] { return times == 1; }));
}

TEST_F(UpdateSchedulerTest, WithoutTheUsersConsentOrAFeedNothingIsDue) {
  defaults.setBool("SUEnableAutomaticChecks", false);
  EXPECT_EQ(timesDue(), 0);
  defaults.removeObject("SUEnableAutomaticChecks");
  EXPECT_EQ(timesDue(), 0);
  defaults.setBool("SUEnableAutomaticChecks", true);
  defaults.removeObject("SUFeedURL");
  EXPECT_EQ(timesDue(), 0);
}

TEST_F(UpdateSchedulerTest, ChangedSettingsMatterOnlyAfterTheStart) {
  defaults.setBool("SUEnableAutomaticChecks", false);
  UpdateContext context{UpdateSettings(defaults, {}), environment, {}};
  UpdateScheduler scheduler(context);
  int times = 0;
  QObject::connect(&scheduler, &UpdateScheduler::due, [&] { ++times; });
  defaults.setBool("SUEnableAutomaticChecks", true);
  scheduler.rearm();
  test::runLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(times, 0);
  scheduler.start();
  EXPECT_TRUE(test::waitFor([&] { return times == 1; }));
  defaults.setBool("SUEnableAutomaticChecks", false);
  scheduler.rearm();
  test::runLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(times, 1);
}

}  // namespace
}  // namespace zolt
