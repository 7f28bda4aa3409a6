#pragma once

#include <QDateTime>
#include <QString>
#include <vector>

#include "updates/Appcast.h"

namespace zolt {

/// Who asked for a check: the user, or the schedule.
enum class CheckKind { ByHand, Background };

/// What decides which item of a feed is offered.
struct SelectionPolicy {
  CheckKind kind = CheckKind::ByHand;
  QString runningVersion;
  QString systemVersion;   // items that need a newer system are passed over
  QString skippedVersion;  // empty: none; only background checks honour it
  int rolloutGroup = 0;    // 0 to 6; only background checks wait for their group's turn
  QDateTime now;
};

/// What a feed comes to.
struct AppcastSelection {
  enum class Outcome { NothingUsable, UpToDate, Offered };

  Outcome outcome = Outcome::NothingUsable;
  AppcastItem item;  // when Offered
};

/// Whether an item must not be skipped by a user of `runningVersion`.
bool isCritical(const AppcastItem& item, const QString& runningVersion);

/// The newest item that may be offered. Pure.
///
/// Usable are items of the default channel that run on the system. In a background check an item that is not critical
/// is passed over while its roll-out has not reached the group (a roll-out without a date has), and when it is not
/// newer than the version that the user skipped.
AppcastSelection selectItem(const std::vector<AppcastItem>& items, const SelectionPolicy& policy);

}  // namespace zolt
