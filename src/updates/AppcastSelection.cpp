#include "updates/AppcastSelection.h"

#include "updates/Version.h"

namespace zolt {

namespace {

bool isUsable(const AppcastItem& item, const SelectionPolicy& policy) {
  if (!item.channel.isEmpty()) return false;
  return item.minimumSystemVersion.isEmpty() || compareVersions(item.minimumSystemVersion, policy.systemVersion) <= 0;
}

bool rolloutHasReached(const AppcastItem& item, const SelectionPolicy& policy) {
  if (!item.phasedRolloutSeconds || !item.published.isValid()) return true;
  const std::int64_t elapsed = item.published.secsTo(policy.now);
  // Divided, since the product with a long interval could overflow.
  return policy.rolloutGroup == 0 ? elapsed >= 0 : elapsed / policy.rolloutGroup >= *item.phasedRolloutSeconds;
}

bool isWaitedFor(const AppcastItem& item, const SelectionPolicy& policy) {
  if (policy.kind == CheckKind::ByHand || isCritical(item, policy.runningVersion)) return false;
  const bool skipped = !policy.skippedVersion.isEmpty() && compareVersions(item.version, policy.skippedVersion) <= 0;
  return skipped || !rolloutHasReached(item, policy);
}

}  // namespace

bool isCritical(const AppcastItem& item, const QString& runningVersion) {
  return item.critical && (item.criticalBelow.isEmpty() || compareVersions(runningVersion, item.criticalBelow) < 0);
}

AppcastSelection selectItem(const std::vector<AppcastItem>& items, const SelectionPolicy& policy) {
  AppcastSelection selection;
  const AppcastItem* newest = nullptr;
  for (const AppcastItem& item : items) {
    if (!isUsable(item, policy)) continue;
    selection.outcome = AppcastSelection::Outcome::UpToDate;
    if (isWaitedFor(item, policy) || compareVersions(item.version, policy.runningVersion) <= 0) continue;
    if (!newest || compareVersions(item.version, newest->version) > 0) newest = &item;
  }
  if (newest) selection = {.outcome = AppcastSelection::Outcome::Offered, .item = *newest};
  return selection;
}

}  // namespace zolt
