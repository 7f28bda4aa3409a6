#pragma once

#include <QString>
#include <QUrl>
#include <cstdint>
#include <optional>

#include "base/Result.h"
#include "updates/Appcast.h"
#include "updates/Signature.h"

namespace zolt {

/// What is known of a package before it is downloaded.
struct PackagePlan {
  QUrl url;
  std::optional<std::int64_t> length;  // in bytes; nothing when the feed does not say
  UpdateSignature signature;
  UpdateKey key;
  QString fileName;
};

/// The plan for a package, `publicKey` being the key's text. Pure.
///
/// Fails, with the sentence to show, where it is known already that the package could not be kept: without a valid key
/// or signature, with a length that is no number, 0 or over `maximumBytes`, and from an address that may not be
/// fetched.
Result<PackagePlan> planPackage(const AppcastEnclosure& enclosure, const QString& publicKey, std::int64_t maximumBytes);

}  // namespace zolt
