#pragma once

#include <QDateTime>
#include <chrono>
#include <cstdint>
#include <optional>

namespace zolt {

/// When updates are looked for without being asked. Pure decisions over what the settings say.

/// The time between two background checks: a day where nothing is stored, an hour at least and ten years at most.
std::chrono::seconds checkInterval(std::optional<std::int64_t> storedSeconds);

/// How long until the next background check is due; 0 when it is. A last check that is invalid or in the future (the
/// clock went backwards) counts as none, so a check is due.
std::chrono::seconds timeUntilCheck(const QDateTime& now, const QDateTime& lastCheck, std::chrono::seconds interval);

/// What is known when the program starts.
struct LaunchFacts {
  bool hasFeed = false;
  bool hasLaunchedBefore = false;
  std::optional<bool> automaticChecks;  // the user's answer
};

/// Whether to ask the user about automatic checks now: on the second launch, once, and only where there is a feed.
bool shouldAskAboutChecks(const LaunchFacts& facts);

/// Whether background checks run: only with a feed, and only when the user said so.
bool checksInBackground(const LaunchFacts& facts);

}  // namespace zolt
