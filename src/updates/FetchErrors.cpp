#include "updates/FetchErrors.h"

#include <array>
#include <cstddef>

namespace zolt {

namespace {

using enum UpdateError;

struct Row {
  FetchError error;
  UpdateError ofFeed;
  UpdateError ofPackage;
};

constexpr std::array kRows{
    Row{FetchError::NotSecure, FeedNotSecure, PackageNotSecure},
    Row{FetchError::RedirectedWeaker, FeedRedirectedWeaker, PackageRedirectedWeaker},
    Row{FetchError::RedirectedTooOften, FeedRedirectedTooOften, PackageRedirectedTooOften},
    Row{FetchError::Unreachable, FeedUnreachable, PackageUnreachable},
    Row{FetchError::NotDelivered, FeedNotDelivered, PackageNotDelivered},
    Row{FetchError::TimedOut, FeedTimedOut, PackageTimedOut},
    Row{FetchError::TooLarge, FeedTooLarge, PackageTooLarge},
    Row{FetchError::LengthDiffers, FeedUnreachable, PackageLengthDiffers},
    Row{FetchError::Empty, FeedEmpty, PackageEmpty},
    Row{FetchError::NotSaved, FeedUnreachable, PackageNotSaved},
};

constexpr bool rowsAreInOrder() {
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    if (static_cast<std::size_t>(kRows[i].error) != i) return false;
  }
  return kRows.back().error == FetchError::NotSaved;
}
static_assert(rowsAreInOrder(), "one row for each error, in their order");

}  // namespace

UpdateError feedErrorOf(FetchError error) {
  return kRows[static_cast<std::size_t>(error)].ofFeed;
}

UpdateError packageErrorOf(FetchError error) {
  return kRows[static_cast<std::size_t>(error)].ofPackage;
}

}  // namespace zolt
