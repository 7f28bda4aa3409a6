#pragma once

#include <QDateTime>
#include <QString>
#include <chrono>
#include <cstdint>
#include <functional>

#include "updates/UpdateNetwork.h"
#include "updates/UpdateSettings.h"

namespace zolt {

/// The program, the system and the limits, as updates see them.
struct UpdateEnvironment {
  QString runningVersion;
  QString systemName;      // as feeds name it
  QString systemVersion;   // compared with the minimum version of an item
  QString downloadFolder;  // a path
  std::function<QDateTime()> now;

  std::chrono::milliseconds idleLimit = std::chrono::seconds(30);       // without data
  std::chrono::milliseconds textLimit = std::chrono::seconds(60);       // for a feed or release notes in total
  std::chrono::milliseconds firstCheckDelay = std::chrono::seconds(5);  // after the start, if a check is due
  std::int64_t maximumTextBytes = 1 << 20;
  std::int64_t maximumPackageBytes = 1 << 30;

  /// This program on this system. The version of the system is that of macOS or, elsewhere, of the kernel.
  static UpdateEnvironment ofThisProgram();
};

/// Shared by all parts of an update; outlives them all. Main thread.
struct UpdateContext {
  UpdateSettings settings;
  UpdateEnvironment environment;
  UpdateNetwork network;
};

}  // namespace zolt
