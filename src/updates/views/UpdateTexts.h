#pragma once

#include <QString>
#include <cstdint>

#include "updates/Appcast.h"

namespace zolt {

/// What the windows of updates say. Pure.

/// The offered version and the running one; the offered one's number where both are shown alike.
QString offerText(const AppcastItem& item, const QString& runningVersion);

/// "3.1 MB": in powers of 1000, one digit after the point below 10 of a unit.
QString byteText(std::int64_t bytes);

/// "3.1 MB of 12 MB"; without the second part where `totalBytes` is 0.
QString progressText(std::int64_t receivedBytes, std::int64_t totalBytes);

}  // namespace zolt
