#pragma once

#include <QDateTime>
#include <chrono>
#include <cstdint>
#include <optional>

namespace zolt {

/// When to check for updates automatically: pure functions of the settings.

/// The time between two background checks: a day by default, at least an hour, at most ten years.
std::chrono::seconds checkInterval(std::optional<std::int64_t> storedSeconds);

/// The time until the next background check is due; 0 if it is due. If the last check is invalid or in the future,
/// because the clock was set back, a check is due.
std::chrono::seconds timeUntilCheck(const QDateTime& now, const QDateTime& lastCheck, std::chrono::seconds interval);

/// What is known at the start of the program.
struct LaunchFacts {
  bool hasFeed = false;
  bool hasLaunchedBefore = false;
  std::optional<bool> automaticChecks;  // the user's answer
};

/// Whether to ask the user about automatic checks now: on the second launch, once, and only if there is a feed.
bool shouldAskAboutChecks(const LaunchFacts& facts);

/// Whether to check in the background: only with a feed and the consent of the user.
bool checksInBackground(const LaunchFacts& facts);

}  // namespace zolt
