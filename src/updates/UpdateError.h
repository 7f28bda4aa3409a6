#pragma once

#include <QString>
#include <span>

#include "base/Result.h"

namespace zolt {

/// Why a check or an update failed. Each reason has a sentence for the user.
enum class UpdateError {
  NoFeed,
  FeedNotSecure,
  FeedUnreachable,
  FeedNotDelivered,
  FeedRedirectedWeaker,
  FeedRedirectedTooOften,
  FeedTimedOut,
  FeedTooLarge,
  FeedEmpty,
  FeedUnreadable,
  FeedNoAppcast,
  FeedNothingUsable,
  NoKey,
  KeyInvalid,
  NotSigned,
  SignatureUnreadable,
  SignatureWrong,
  PackageLengthUnreadable,
  PackageNotSecure,
  PackageUnreachable,
  PackageNotDelivered,
  PackageRedirectedWeaker,
  PackageRedirectedTooOften,
  PackageTimedOut,
  PackageTooLarge,
  PackageLengthDiffers,
  PackageEmpty,
  PackageNotSaved,
  PackageNotOpened,
};

/// The sentence to show under "Update Error!".
QString sentenceOf(UpdateError error);

/// The same as the reason of a failed Result.
Failure failureOf(UpdateError error);

/// Every error, in the order of the enumeration.
std::span<const UpdateError> allUpdateErrors();

}  // namespace zolt
