#include "updates/UpdatePolicy.h"

#include <algorithm>

namespace zolt {

namespace {

using std::chrono::seconds;

constexpr seconds kUsualInterval = std::chrono::hours(24);
constexpr seconds kShortestInterval = std::chrono::hours(1);
constexpr seconds kLongestInterval = std::chrono::hours(24 * 3652);

}  // namespace

seconds checkInterval(std::optional<std::int64_t> storedSeconds) {
  if (!storedSeconds) return kUsualInterval;
  return std::clamp(seconds(*storedSeconds), kShortestInterval, kLongestInterval);
}

seconds timeUntilCheck(const QDateTime& now, const QDateTime& lastCheck, seconds interval) {
  if (!lastCheck.isValid() || lastCheck > now) return seconds(0);
  const seconds since(lastCheck.secsTo(now));
  return std::max(interval - since, seconds(0));
}

bool shouldAskAboutChecks(const LaunchFacts& facts) {
  return facts.hasFeed && facts.hasLaunchedBefore && !facts.automaticChecks;
}

bool checksInBackground(const LaunchFacts& facts) {
  return facts.hasFeed && facts.automaticChecks.value_or(false);
}

}  // namespace zolt
