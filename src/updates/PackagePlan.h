#pragma once

#include <QString>
#include <QUrl>
#include <cstdint>
#include <optional>

#include "base/Result.h"
#include "updates/Appcast.h"
#include "updates/Signature.h"

namespace zolt {

/// What is known about a package before it is downloaded.
struct PackagePlan {
  QUrl url;
  std::optional<std::int64_t> length;  // in bytes, if given by the feed
  UpdateSignature signature;
  UpdateKey key;
  QString fileName;
};

/// The plan for a package; `publicKey` is in base64. Pure.
///
/// Fails, with the sentence to show, if the package cannot be accepted: without a valid key or signature, if its length
/// is not a number, 0 or more than `maximumBytes`, or if its address must not be fetched.
Result<PackagePlan> planPackage(const AppcastEnclosure& enclosure, const QString& publicKey, std::int64_t maximumBytes);

}  // namespace zolt
