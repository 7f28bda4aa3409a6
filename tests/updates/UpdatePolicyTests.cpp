#include "updates/UpdatePolicy.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <limits>

#include "updates/UpdateSettings.h"

namespace zolt {
namespace {

using std::chrono::hours;
using std::chrono::seconds;

const QDateTime kNow(QDate(2026, 6, 10), QTime(12, 0), Qt::UTC);

TEST(UpdatePolicy, TheIntervalIsADayByDefaultAndAtLeastAnHour) {
  EXPECT_EQ(checkInterval(std::nullopt), hours(24));
  EXPECT_EQ(checkInterval(7200), seconds(7200));
  EXPECT_EQ(checkInterval(3600), hours(1));
  for (const std::int64_t stored :
       {std::int64_t{3599}, std::int64_t{0}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::min()}) {
    EXPECT_EQ(checkInterval(stored), hours(1)) << stored;
  }
  EXPECT_EQ(checkInterval(std::numeric_limits<std::int64_t>::max()), hours(24 * 3652));
}

TEST(UpdatePolicy, ACheckIsDueAnIntervalAfterTheLast) {
  EXPECT_EQ(timeUntilCheck(kNow, kNow, hours(24)), hours(24));
  EXPECT_EQ(timeUntilCheck(kNow, kNow.addSecs(-3600), hours(24)), hours(23));
  EXPECT_EQ(timeUntilCheck(kNow, kNow.addSecs(-24 * 3600), hours(24)), seconds(0));
  EXPECT_EQ(timeUntilCheck(kNow, kNow.addYears(-500), hours(24)), seconds(0));
}

TEST(UpdatePolicy, WithoutALastCheckOrWithOneInTheFutureACheckIsDue) {
  EXPECT_EQ(timeUntilCheck(kNow, QDateTime(), hours(24)), seconds(0));
  EXPECT_EQ(timeUntilCheck(kNow, kNow.addSecs(1), hours(24)), seconds(0));
}

TEST(UpdatePolicy, TheUserIsAskedFromTheSecondLaunchUntilThereIsAnAnswer) {
  for (const bool hasFeed : {false, true}) {
    for (const bool hasLaunched : {false, true}) {
      for (const std::optional<bool> answer : {std::optional<bool>(), std::optional(false), std::optional(true)}) {
        const LaunchFacts facts{.hasFeed = hasFeed, .hasLaunchedBefore = hasLaunched, .automaticChecks = answer};
        EXPECT_EQ(shouldAskAboutChecks(facts), hasFeed && hasLaunched && !answer);
        EXPECT_EQ(checksInBackground(facts), hasFeed && answer == std::optional(true));
      }
    }
  }
}

class UpdateSettingsTest : public testing::Test {
 protected:
  QTemporaryDir folder;
  UserDefaults defaults{folder.filePath(QStringLiteral("zolt.ini")).toStdString()};
  UpdateSettings settings{
      defaults, {.feedUrl = QStringLiteral("https://build.example.org/feed"), .publicKey = QStringLiteral("build")}};
};

TEST_F(UpdateSettingsTest, TheSettingsTakePrecedenceOverTheBuild) {
  EXPECT_EQ(settings.feedUrl(), QStringLiteral("https://build.example.org/feed"));
  EXPECT_EQ(settings.publicKey(), QStringLiteral("build"));
  defaults.setString("SUFeedURL", "https://user.example.org/feed");
  defaults.setString("SUPublicEDKey", "user");
  EXPECT_EQ(settings.feedUrl(), QStringLiteral("https://user.example.org/feed"));
  EXPECT_EQ(settings.publicKey(), QStringLiteral("user"));
  EXPECT_FALSE(UpdateSettings(defaults, {}).feedUrl().isEmpty());
  defaults.removeObject("SUFeedURL");
  EXPECT_TRUE(UpdateSettings(defaults, {}).feedUrl().isEmpty());
}

TEST_F(UpdateSettingsTest, AnAbsentAnswerIsNotANo) {
  EXPECT_EQ(settings.launchFacts().automaticChecks, std::nullopt);
  EXPECT_FALSE(settings.launchFacts().hasLaunchedBefore);
  settings.setAutomaticChecks(false);
  settings.setHasLaunchedBefore();
  EXPECT_EQ(settings.launchFacts().automaticChecks, std::optional(false));
  EXPECT_TRUE(settings.launchFacts().hasLaunchedBefore);
  defaults.setString("SUEnableAutomaticChecks", "YES");
  EXPECT_EQ(settings.launchFacts().automaticChecks, std::optional(true));
}

TEST_F(UpdateSettingsTest, TheIntervalIsReadInWholeSeconds) {
  EXPECT_EQ(settings.scheduledInterval(), hours(24));
  defaults.setString("SUScheduledCheckInterval", "7200.9");
  EXPECT_EQ(settings.scheduledInterval(), seconds(7200));
  defaults.setString("SUScheduledCheckInterval", "often");
  EXPECT_EQ(settings.scheduledInterval(), hours(1));
}

TEST_F(UpdateSettingsTest, TheLastCheckIsStoredAsIso8601InUtc) {
  EXPECT_FALSE(settings.lastCheckTime().isValid());
  settings.setLastCheckTime(kNow.toOffsetFromUtc(7200));
  EXPECT_EQ(defaults.stringForKey("SULastCheckTime"), "2026-06-10T12:00:00Z");
  EXPECT_EQ(settings.lastCheckTime(), kNow);
  defaults.setString("SULastCheckTime", "yesterday");
  EXPECT_FALSE(settings.lastCheckTime().isValid());
}

TEST_F(UpdateSettingsTest, TheRolloutGroupIsChosenOnceAndKept) {
  const int group = settings.rolloutGroup();
  EXPECT_GE(group, 0);
  EXPECT_LE(group, 6);
  EXPECT_EQ(defaults.stringForKey("SUUpdateGroupIdentifier"), std::to_string(group));
  EXPECT_EQ(settings.rolloutGroup(), group);
  defaults.setInteger("SUUpdateGroupIdentifier", 5);
  EXPECT_EQ(settings.rolloutGroup(), 5);
  for (const std::int64_t wrong : {-1, 7}) {
    defaults.setInteger("SUUpdateGroupIdentifier", wrong);
    EXPECT_NE(settings.rolloutGroup(), wrong);
    EXPECT_NE(defaults.integerForKey("SUUpdateGroupIdentifier"), wrong);
  }
}

}  // namespace
}  // namespace zolt
