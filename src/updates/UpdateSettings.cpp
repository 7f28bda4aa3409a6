#include "updates/UpdateSettings.h"

#include <QRandomGenerator>

namespace zolt {

namespace {

constexpr int kRolloutGroups = 7;
constexpr const char* kAutomaticChecks = "SUEnableAutomaticChecks";
constexpr const char* kInterval = "SUScheduledCheckInterval";
constexpr const char* kLastCheck = "SULastCheckTime";
constexpr const char* kRolloutGroup = "SUUpdateGroupIdentifier";

}  // namespace

UpdateBuildValues UpdateBuildValues::ofThisBuild() {
  return {.feedUrl = QStringLiteral(ZOLT_UPDATE_FEED_URL), .publicKey = QStringLiteral(ZOLT_UPDATE_PUBLIC_KEY)};
}

QString UpdateSettings::textOr(const char* key, const QString& otherwise) const {
  const auto value = m_defaults.stringForKey(key);
  return value && !value->empty() ? QString::fromStdString(*value) : otherwise;
}

LaunchFacts UpdateSettings::launchFacts() const {
  LaunchFacts facts{.hasFeed = !feedUrl().isEmpty(),
                    .hasLaunchedBefore = m_defaults.boolForKey("SUHasLaunchedBefore"),
                    .automaticChecks = std::nullopt};
  if (m_defaults.stringForKey(kAutomaticChecks)) facts.automaticChecks = m_defaults.boolForKey(kAutomaticChecks);
  return facts;
}

std::chrono::seconds UpdateSettings::scheduledInterval() const {
  return checkInterval(m_defaults.stringForKey(kInterval) ? std::optional(m_defaults.integerForKey(kInterval))
                                                          : std::nullopt);
}

QDateTime UpdateSettings::lastCheckTime() const {
  return QDateTime::fromString(textOr(kLastCheck, {}), Qt::ISODate);
}

void UpdateSettings::setLastCheckTime(const QDateTime& time) {
  m_defaults.setString(kLastCheck, time.toUTC().toString(Qt::ISODate).toStdString());
}

void UpdateSettings::setSkippedVersion(const QString& version) {
  m_defaults.setString("SUSkippedVersion", version.toStdString());
}

int UpdateSettings::rolloutGroup() {
  const std::int64_t stored = m_defaults.integerForKey(kRolloutGroup);
  if (m_defaults.stringForKey(kRolloutGroup) && stored >= 0 && stored < kRolloutGroups) return static_cast<int>(stored);
  const int group = QRandomGenerator::system()->bounded(kRolloutGroups);
  m_defaults.setInteger(kRolloutGroup, group);
  return group;
}

bool UpdateSettings::decidesSchedule(const std::string& key) {
  return key == kAutomaticChecks || key == kInterval || key == kLastCheck || key == "SUFeedURL";
}

}  // namespace zolt
