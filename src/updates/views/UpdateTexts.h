#pragma once

#include <QString>
#include <cstdint>

#include "updates/Appcast.h"

namespace zolt {

/// The texts of the update windows. Pure.

/// Names the offered version and the running one; adds the build number of the offered one if both look the same.
QString offerText(const AppcastItem& item, const QString& runningVersion);

/// "3.1 MB": in powers of 1000, with one decimal place below 10.
QString byteText(std::int64_t bytes);

/// "3.1 MB of 12 MB"; "3.1 MB" if `totalBytes` is 0.
QString progressText(std::int64_t receivedBytes, std::int64_t totalBytes);

}  // namespace zolt
