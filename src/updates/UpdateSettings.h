#pragma once

#include <QDateTime>
#include <QString>
#include <chrono>
#include <string>

#include "platform/UserDefaults.h"
#include "updates/UpdatePolicy.h"

namespace zolt {

/// The defaults of this build: the CMake cache variables ZOLT_UPDATE_FEED_URL and ZOLT_UPDATE_PUBLIC_KEY.
struct UpdateBuildValues {
  QString feedUrl;
  QString publicKey;

  static UpdateBuildValues ofThisBuild();
};

/// The keys of the user's settings that updates read and write. Main thread.
class UpdateSettings {
 public:
  /// `defaults` must outlive the settings.
  UpdateSettings(UserDefaults& defaults, UpdateBuildValues build) : m_defaults(defaults), m_build(std::move(build)) {}

  /// "SUFeedURL" or the default of the build; empty if no feed is configured.
  QString feedUrl() const { return textOr("SUFeedURL", m_build.feedUrl); }
  /// "SUPublicEDKey" or the default of the build: an Ed25519 key in base64; empty if there is none.
  QString publicKey() const { return textOr("SUPublicEDKey", m_build.publicKey); }

  /// "SUEnableAutomaticChecks" and "SUHasLaunchedBefore", and whether there is a feed.
  LaunchFacts launchFacts() const;
  void setAutomaticChecks(bool enabled) { m_defaults.setBool("SUEnableAutomaticChecks", enabled); }
  void setHasLaunchedBefore() { m_defaults.setBool("SUHasLaunchedBefore", true); }

  /// "SUScheduledCheckInterval", in seconds, clamped to its limits.
  std::chrono::seconds scheduledInterval() const;
  /// "SULastCheckTime", ISO 8601 in UTC: the start of the last check, whatever its outcome; invalid if there was none.
  QDateTime lastCheckTime() const;
  void setLastCheckTime(const QDateTime& time);

  /// "SUSkippedVersion": the version that the user chose to skip; empty for none.
  QString skippedVersion() const { return textOr("SUSkippedVersion", {}); }
  void setSkippedVersion(const QString& version);

  /// "SUUpdateGroupIdentifier": this user's group in roll-outs, 0 to 6; chosen at random and stored on first use.
  int rolloutGroup();

  /// Whether `key` affects when the next background check is due.
  static bool decidesSchedule(const std::string& key);

 private:
  QString textOr(const char* key, const QString& otherwise) const;

  UserDefaults& m_defaults;
  UpdateBuildValues m_build;
};

}  // namespace zolt
