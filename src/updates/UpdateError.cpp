#include "updates/UpdateError.h"

#include <array>

namespace zolt {

namespace {

using enum UpdateError;

struct Row {
  UpdateError error;
  const char* sentence;
};

constexpr std::array kRows{
    Row{NoFeed, "No update feed is configured."},
    Row{FeedNotSecure, "The address of the update feed is not secure."},
    Row{FeedUnreachable, "The update feed could not be reached."},
    Row{FeedNotDelivered, "The server did not deliver the update feed."},
    Row{FeedRedirectedWeaker, "The update feed was redirected to an address that is not secure."},
    Row{FeedRedirectedTooOften, "The update feed was redirected too many times."},
    Row{FeedTimedOut, "The server took too long to send the update feed."},
    Row{FeedTooLarge, "The update feed is too large."},
    Row{FeedEmpty, "The update feed is empty."},
    Row{FeedUnreadable, "The update feed could not be read."},
    Row{FeedNoAppcast, "The update feed is not an appcast."},
    Row{FeedNothingUsable, "The update feed has no version for this system."},
    Row{NoKey, "The update was not downloaded because there is no key to verify it with."},
    Row{KeyInvalid, "The update was not downloaded because the key to verify it with is invalid."},
    Row{NotSigned, "The update was not downloaded because it is not signed."},
    Row{SignatureUnreadable, "The update was not downloaded because its signature is malformed."},
    Row{SignatureWrong, "The update was deleted because its signature is wrong."},
    Row{PackageLengthUnreadable, "The update was not downloaded because the update feed has no valid length for it."},
    Row{PackageNotSecure, "The address of the update is not secure."},
    Row{PackageUnreachable, "The update could not be downloaded."},
    Row{PackageNotDelivered, "The server did not deliver the update."},
    Row{PackageRedirectedWeaker, "The update was redirected to an address that is not secure."},
    Row{PackageRedirectedTooOften, "The update was redirected too many times."},
    Row{PackageTimedOut, "The server took too long to send the update."},
    Row{PackageTooLarge, "The update is too large."},
    Row{PackageLengthDiffers, "The update was deleted because its length differs from the one in the update feed."},
    Row{PackageEmpty, "The update is empty."},
    Row{PackageNotSaved, "The update could not be saved."},
    Row{PackageNotOpened, "The update could not be opened with the installer."},
};

constexpr auto kErrors = [] {
  std::array<UpdateError, kRows.size()> errors{};
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    errors[i] = kRows[i].error;
  }
  return errors;
}();

constexpr bool rowsAreInOrder() {
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    if (static_cast<std::size_t>(kRows[i].error) != i) return false;
  }
  return kRows.back().error == PackageNotOpened;
}
static_assert(rowsAreInOrder(), "one row for each error, in their order");

}  // namespace

QString sentenceOf(UpdateError error) {
  return QString::fromLatin1(kRows[static_cast<std::size_t>(error)].sentence);
}

Failure failureOf(UpdateError error) {
  return {kRows[static_cast<std::size_t>(error)].sentence};
}

std::span<const UpdateError> allUpdateErrors() {
  return kErrors;
}

}  // namespace zolt
