#pragma once

#include <QDateTime>
#include <QString>
#include <vector>

#include "updates/Appcast.h"

namespace zolt {

/// Who asked for a check: the user, or the schedule.
enum class CheckKind { ByHand, Background };

/// The facts that decide which item of a feed is offered.
struct SelectionPolicy {
  CheckKind kind = CheckKind::ByHand;
  QString runningVersion;
  QString systemVersion;   // items that need a newer system are skipped
  QString skippedVersion;  // empty for none; only background checks respect it
  int rolloutGroup = 0;    // 0 to 6; only background checks wait for their group's turn
  QDateTime now;
};

/// The outcome of a check.
struct AppcastSelection {
  enum class Outcome { NothingUsable, UpToDate, Offered };

  Outcome outcome = Outcome::NothingUsable;
  AppcastItem item;  // when Offered
};

/// Whether an item must not be skipped by a user of `runningVersion`.
bool isCritical(const AppcastItem& item, const QString& runningVersion);

/// The newest item that may be offered. Pure.
///
/// Items are usable if they are in the default channel and run on the system. A background check ignores an item that
/// is not critical until its roll-out has reached the group (at once if the item has no date), and if it is not newer
/// than the version that the user skipped.
AppcastSelection selectItem(const std::vector<AppcastItem>& items, const SelectionPolicy& policy);

}  // namespace zolt
